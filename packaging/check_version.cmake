# Refuses a PROJECT_VERSION that does not work everywhere. The program keeps its version as a number
# and shows it with two decimals; Debian compares the digits after the point as a whole number, so
# that its 1.3 is older than its 1.24. Both agree when there are always two digits. Can be run alone:
#
#   cmake -DPROJECT_VERSION=1.25 -P packaging/check_version.cmake

if(NOT PROJECT_VERSION MATCHES "^(0|[1-9][0-9]*)\\.[0-9][0-9]$")
    message(FATAL_ERROR "The version \"${PROJECT_VERSION}\" does not work: it has to be a number with"
        " exactly two digits after the point, such as 1.25, 1.30 or 2.00.")
endif()
