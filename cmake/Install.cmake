# `cmake --install`: the programs, their private library, the desktop entry with its icons,
# the text tables, the manual pages, the docs and the demo project, where the Debian
# file-system layout expects them. Configure with -DCMAKE_INSTALL_PREFIX=/usr for a system
# install (the library then goes to /usr/lib/<triplet>/zoevents).
include(GNUInstallDirs)

# The library serves only these two programs: it is private (no headers, no development
# link), in a folder of its own that the programs find through their RUNPATH.
set(ZO_PRIVATE_LIBDIR ${CMAKE_INSTALL_LIBDIR}/zoevents)
file(RELATIVE_PATH ZO_BIN_TO_LIB /${CMAKE_INSTALL_BINDIR} /${ZO_PRIVATE_LIBDIR})
set_target_properties(zoevents-editor zoevents_cli PROPERTIES INSTALL_RPATH "\$ORIGIN/${ZO_BIN_TO_LIB}")
set_target_properties(zoevents PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})

install(TARGETS zoevents-editor zoevents_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS zoevents LIBRARY DESTINATION ${ZO_PRIVATE_LIBDIR} NAMELINK_SKIP)

install(FILES resources/desktop/zoevents-editor.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
foreach(size 16 22 24 32 48 64 128 256)
  install(FILES resources/icons/zoevents-editor-${size}.png
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps
          RENAME zoevents-editor.png)
endforeach()

# The programs read the tables compiled into the library; the installed copies are the
# reference for translators and for other tools of the suite.
file(GLOB ZO_TEXT_TABLES ${PROJECT_SOURCE_DIR}/resources/texts/*.tsv)
install(FILES ${ZO_TEXT_TABLES} DESTINATION ${CMAKE_INSTALL_DATADIR}/zoevents/texts)

install(FILES docs/man/zoevents.1 docs/man/zoevents-editor.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
file(GLOB ZO_DOCS ${PROJECT_SOURCE_DIR}/docs/*.md)
# The README's links stay valid: docs/ beside it, with its images.
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${ZO_DOCS} DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
install(DIRECTORY docs/images DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs)
install(DIRECTORY examples/demo DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
