# Rejects a PROJECT_VERSION without exactly two digits after the point. The program treats its version
# as a decimal number; Debian compares the digits after the point as a whole number, so for Debian 1.3
# is older than 1.24. With two digits both agree. To run it alone:
#
#   cmake -DPROJECT_VERSION=1.25 -P packaging/check_version.cmake

if(NOT PROJECT_VERSION MATCHES "^(0|[1-9][0-9]*)\\.[0-9][0-9]$")
    message(FATAL_ERROR "The version \"${PROJECT_VERSION}\" does not work: it has to be a number with"
        " exactly two digits after the point, such as 1.25, 1.30 or 2.00.")
endif()
