# Gives every file of a package the time of the last commit, so that two packages of it are the same
# bytes. Where this is no checkout, the files of its source archive bear that time. A time that the
# environment names already wins.

if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND git log -1 --format=%ct -- .
        WORKING_DIRECTORY ${CPACK_VANTREO_SOURCES}
        OUTPUT_VARIABLE time OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(NOT time)
        file(TIMESTAMP ${CPACK_VANTREO_SOURCES}/CMakeLists.txt time %s UTC)
    endif()
    set(ENV{SOURCE_DATE_EPOCH} ${time})
endif()
