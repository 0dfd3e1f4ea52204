# `cpack -G DEB`: one Debian package with the programs, their private library and their
# files (cmake/Install.cmake). Its dependencies are computed by dpkg-shlibdeps from the
# libraries the programs link, as ${shlibs:Depends} would be.
set(CPACK_PACKAGE_NAME zoevents)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "zoevents developers")
set(CPACK_PACKAGE_CONTACT "zoevents developers <zoevents@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "SCADA project editor: events, event groups and time tables")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "${CPACK_PACKAGE_DESCRIPTION_SUMMARY}
 zoevents-editor edits the events of a SCADA project folder (conditions, delays, time
 tables, groups, annotations and actions), its event groups and its time tables, with
 undo and redo. The command zoevents checks a project, lists where a device, variable or
 event is used, renames one everywhere and exchanges the events as a spreadsheet.")
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
include(CPack)
