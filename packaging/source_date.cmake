# Gives every file of the package the time of the last commit, so that packages are reproducible. In an
# unpacked source archive, which has no git history, the files have that time. SOURCE_DATE_EPOCH in the
# environment overrides it.

if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
    execute_process(COMMAND git log -1 --format=%ct -- .
        WORKING_DIRECTORY ${CPACK_VANTREO_SOURCES}
        OUTPUT_VARIABLE time OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    if(NOT time)
        file(TIMESTAMP ${CPACK_VANTREO_SOURCES}/CMakeLists.txt time %s UTC)
    endif()
    set(ENV{SOURCE_DATE_EPOCH} ${time})
endif()
