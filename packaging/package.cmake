# The installed program and its Debian package: what goes where, and the package's description.
#
# In lib/vantreo the program, its launcher and its tools have the same relative paths as in the build.

set(VANTREO_CONTACT "The Vantreo contributors <contact@vantreo.example>")
set(here ${CMAKE_CURRENT_LIST_DIR})
set(made ${CMAKE_BINARY_DIR}/package)

# compressed(SOURCE TARGET): gzips SOURCE reproducibly
function(compressed source target)
    add_custom_command(OUTPUT ${target}
        COMMAND gzip -9nc ${source} > ${target} DEPENDS ${source} VERBATIM)
endfunction()

# ---- documentation and menu ----------------------------------------------------------------------

file(READ ${PROJECT_SOURCE_DIR}/LICENSE licence)
string(REGEX MATCH "Copyright \\(c\\) ([^\n]*)" copyright "${licence}")
set(copyright ${CMAKE_MATCH_1})
string(REGEX REPLACE "^.*${copyright}\n\n|\n$" "" licence "${licence}")
string(REGEX REPLACE "\n\n" "\n.\n" licence "${licence}")
string(REPLACE "\n" "\n " licence " ${licence}")
string(REGEX REPLACE "([^/])$" "\\1/" site "${VANTREO_SITE}")
configure_file(${here}/debian/copyright.in ${made}/copyright @ONLY)
configure_file(${here}/man/vantreo.1.in ${made}/vantreo.1 @ONLY)
set(metainfo example.vantreo.Vantreo.metainfo.xml)
configure_file(${here}/desktop/${metainfo}.in ${made}/${metainfo} @ONLY)

set(changelog ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
add_custom_command(OUTPUT ${made}/changelog
    COMMAND ${here}/debian/changelog ${changelog} ${VANTREO_CONTACT} > ${made}/changelog
    DEPENDS ${changelog} ${here}/debian/changelog VERBATIM)
compressed(${made}/vantreo.1 ${made}/vantreo.1.gz)
compressed(${made}/changelog ${made}/changelog.Debian.gz)
compressed(${changelog} ${made}/changelog.gz)
set(documents ${made}/copyright ${made}/changelog.Debian.gz ${made}/changelog.gz)
add_custom_target(package_documents ALL DEPENDS ${documents} ${made}/vantreo.1.gz)

install(FILES ${documents} DESTINATION share/doc/vantreo)
install(FILES ${here}/debian/lintian-overrides DESTINATION share/lintian/overrides RENAME vantreo)
install(FILES ${made}/vantreo.1.gz DESTINATION share/man/man1)
install(FILES ${here}/desktop/vantreo.desktop DESTINATION share/applications)
install(FILES ${made}/${metainfo} DESTINATION share/metainfo)
foreach(size IN LISTS VANTREO_ICON_SIZES)
    install(FILES ${CMAKE_BINARY_DIR}/icons/vantreo-${size}.png
        DESTINATION share/icons/hicolor/${size}x${size}/apps RENAME vantreo.png)
endforeach()
install(FILES ${here}/icon/vantreo.svg DESTINATION share/icons/hicolor/scalable/apps)

# ---- programs ------------------------------------------------------------------------------------

install(TARGETS vantreo DESTINATION lib/vantreo)
install(TARGETS tool_ffmpeg tool_mp4box DESTINATION lib/vantreo/Vantreo.app/Contents/Resources)
if(TARGET tool_notify)
    install(TARGETS tool_notify DESTINATION lib/vantreo/Vantreo.app/Contents/Resources)
endif()
install(PROGRAMS ${here}/launcher.sh DESTINATION lib/vantreo/bin RENAME vantreo)
file(CREATE_LINK ../lib/vantreo/bin/vantreo ${made}/vantreo SYMBOLIC)
install(FILES ${made}/vantreo DESTINATION bin)

# ---- Debian package ------------------------------------------------------------------------------

set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
    ${here}/packages ${PROJECT_SOURCE_DIR}/LICENSE)

# The programs that it runs: dpkg-shlibdeps finds libraries only.
file(STRINGS ${here}/packages lines REGEX "^run ")
string(REGEX MATCHALL "[^ ;]+" packages "${lines}")
list(REMOVE_ITEM packages run)
list(JOIN packages ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${VANTREO_CONTACT})
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${site})
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "\
Vantreo opens a window with a list of movies, an output folder and a choice
of devices, and converts the movies one after the other with ffmpeg to MP4
files with H.264 and AAC, scaled to the device.
.
It adds subtitles from an SRT file beside the movie, in any usual encoding.
The window is available in nine languages.")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vantreo)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "convert movies for an iPhone, iPod touch or iPad")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_VANTREO_SOURCES ${PROJECT_SOURCE_DIR})
set(CPACK_PROJECT_CONFIG_FILE ${here}/source_date.cmake)
include(CPack)
