# Renames in a copy of the demo project with the `zoevents` program, then checks the copy and
# renames back: the check must find nothing, the files must be those of the demo byte for
# byte, a dry run must write nothing and a clashing name must be refused. Variables (-D):
#   PROGRAM     the program
#   SOURCE_DIR  the source tree (examples/demo)
#   WORK        a folder to copy the demo into
#   KIND        device, variable or event
#   FROM, TO    the old and new names (for a variable, FROM is DEVICE.CODE)
#   RENAMED     the new name as the reverse rename takes it (DEVICE.TO for a variable; default TO)
#   BACK        the old name as the reverse rename gives it (FROM's code for a variable)
#   CLASH       a name that exists already
#   PREVIEW     a regular expression the preview must match
include(${CMAKE_CURRENT_LIST_DIR}/CliScript.cmake)

file(REMOVE_RECURSE "${WORK}")
file(COPY "${SOURCE_DIR}/examples/demo/" DESTINATION "${WORK}")

run(0 rename "${WORK}" --${KIND} "${FROM}" "${TO}" --dry-run)
if(NOT out MATCHES "${PREVIEW}" OR NOT err MATCHES "dry run")
  message(FATAL_ERROR "the preview does not match ${PREVIEW}:\n${out}\n${err}")
endif()
expect_demo_files("${WORK}" "after a dry run")

run(1 rename "${WORK}" --${KIND} "${FROM}" "${CLASH}")
if(NOT err MATCHES "exists already|already")
  message(FATAL_ERROR "a clash is not refused with a message: ${err}")
endif()
expect_demo_files("${WORK}" "after a refused rename")

run(0 rename "${WORK}" --${KIND} "${FROM}" "${TO}")
run(0 check --warnings-as-errors --from 2026-01-01 "${WORK}")
if(NOT err MATCHES "^0 errors, 0 warnings")
  message(FATAL_ERROR "the check finds faults after the rename:\n${out}")
endif()
if(NOT RENAMED)
  set(RENAMED "${TO}")
endif()
run(0 rename "${WORK}" --${KIND} "${RENAMED}" "${BACK}")
expect_demo_files("${WORK}" "after the rename and its reverse")
