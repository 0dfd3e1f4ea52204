# `cmake --install` into a staging folder, then the installed programs run from there: they
# find their library, texts and icons without the build tree, and report the project's
# version. Variables (-D): BUILD_DIR, STAGE (emptied first), VERSION.
file(REMOVE_RECURSE "${STAGE}")
execute_process(COMMAND "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${STAGE}/usr"
                RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE err)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "cmake --install failed: ${err}")
endif()

set(share "${STAGE}/usr/share")
set(expected
    usr/bin/zoevents usr/bin/zoevents-editor
    usr/share/applications/zoevents-editor.desktop
    usr/share/man/man1/zoevents.1 usr/share/man/man1/zoevents-editor.1
    usr/share/zoevents/texts/en.tsv
    usr/share/doc/zoevents/README.md usr/share/doc/zoevents/docs/formulas.md
    usr/share/doc/zoevents/docs/images/problems.png
    usr/share/doc/zoevents/examples/demo/Events.zocfg)
foreach(size 16 22 24 32 48 64 128 256)
  list(APPEND expected usr/share/icons/hicolor/${size}x${size}/apps/zoevents-editor.png)
endforeach()
foreach(file IN LISTS expected)
  if(NOT EXISTS "${STAGE}/${file}")
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()
# The library: private, in its own folder under the library folder, found by the programs.
file(GLOB_RECURSE library RELATIVE "${STAGE}" "${STAGE}/usr/lib*/libzoevents.so.*")
if(NOT library MATCHES "/zoevents/libzoevents\\.so\\.")
  message(FATAL_ERROR "the library is not in a private folder: ${library}")
endif()

# The programs run from the staging folder only (no build tree on the library path).
set(ENV{LD_LIBRARY_PATH} "")
foreach(program zoevents zoevents-editor)
  execute_process(COMMAND "${STAGE}/usr/bin/${program}" --version
                  RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(NOT status EQUAL 0 OR NOT out STREQUAL "${program} ${VERSION}")
    message(FATAL_ERROR "${program} --version: status ${status}, '${out}' ${err}")
  endif()
endforeach()
# The installed check reads its texts from the installed library.
execute_process(COMMAND "${STAGE}/usr/bin/zoevents" check --from 2026-01-01 "${STAGE}/usr/share/doc/zoevents/examples/demo"
                RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT status EQUAL 0 OR NOT err MATCHES "^0 errors")
  message(FATAL_ERROR "zoevents check on the installed demo: status ${status}\n${out}${err}")
endif()
file(READ "${share}/applications/zoevents-editor.desktop" entry)
if(NOT entry MATCHES "\nCategories=Development;Engineering;\n" OR NOT entry MATCHES "\nIcon=zoevents-editor\n")
  message(FATAL_ERROR "the desktop entry lacks its categories or icon:\n${entry}")
endif()
