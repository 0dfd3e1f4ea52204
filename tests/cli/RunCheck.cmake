# Runs the `zoevents` program as a build server would, and compares what it did with what
# is expected. Variables (-D):
#   PROGRAM          the program
#   ARGS             its arguments, separated by "|"
#   STATUS           the exit status expected
#   STDOUT_FILE      a file the standard output must equal (optional)
#   STDOUT_EMPTY     ON: nothing on the standard output
#   STDOUT_REJECT    a regular expression the standard output must not match (optional)
#   STDERR_MATCH     a regular expression the standard error must match (optional)
#   JSON_LIKE        a text output file: the JSON output must parse and hold as many
#                    findings, errors and warnings as it has lines of each (optional)
#   MAKE_DIR_DOC     make this folder with a folder in place of Devices.zocfg first
#   COPY_WARNING     copy examples/demo here first, with one annotation placeholder that
#                    refers to a missing argument (a warning and nothing else)
string(REPLACE "|" ";" arguments "${ARGS}")
if(MAKE_DIR_DOC)
  file(REMOVE_RECURSE "${MAKE_DIR_DOC}")
  file(MAKE_DIRECTORY "${MAKE_DIR_DOC}/Devices.zocfg")
endif()
if(COPY_WARNING)
  file(REMOVE_RECURSE "${COPY_WARNING}")
  file(COPY "${SOURCE_DIR}/examples/demo/" DESTINATION "${COPY_WARNING}")
  file(READ "${COPY_WARNING}/Events.zocfg" events)
  string(REPLACE "<annotation>Reservoir high: %a1" "<annotation>Reservoir high: %a9" events "${events}")
  file(WRITE "${COPY_WARNING}/Events.zocfg" "${events}")
endif()

execute_process(COMMAND "${PROGRAM}" ${arguments}
                RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT status STREQUAL "${STATUS}")
  message(FATAL_ERROR "exit status ${status}, expected ${STATUS}\nstdout:\n${out}\nstderr:\n${err}")
endif()
if(STDOUT_FILE)
  file(READ "${STDOUT_FILE}" expected)
  if(NOT out STREQUAL expected)
    file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/check-output.txt" "${out}")
    message(FATAL_ERROR "the output differs from ${STDOUT_FILE} (written to "
                        "${CMAKE_CURRENT_BINARY_DIR}/check-output.txt):\n${out}")
  endif()
endif()
if(STDOUT_EMPTY AND NOT out STREQUAL "")
  message(FATAL_ERROR "unexpected output:\n${out}")
endif()
if(STDOUT_REJECT AND out MATCHES "${STDOUT_REJECT}")
  message(FATAL_ERROR "the output matches ${STDOUT_REJECT}:\n${out}")
endif()
if(STDERR_MATCH AND NOT err MATCHES "${STDERR_MATCH}")
  message(FATAL_ERROR "standard error does not match ${STDERR_MATCH}:\n${err}")
endif()
if(JSON_LIKE)
  file(STRINGS "${JSON_LIKE}" lines)
  file(STRINGS "${JSON_LIKE}" error_lines REGEX ": error: ")
  file(STRINGS "${JSON_LIKE}" warning_lines REGEX ": warning: ")
  list(LENGTH lines count)
  list(LENGTH error_lines errors)
  list(LENGTH warning_lines warnings)
  string(JSON findings LENGTH "${out}" findings)
  string(JSON json_errors GET "${out}" errors)
  string(JSON json_warnings GET "${out}" warnings)
  string(JSON first_rule GET "${out}" findings 0 rule)
  if(NOT findings EQUAL count OR NOT json_errors EQUAL errors OR NOT json_warnings EQUAL warnings)
    message(FATAL_ERROR "JSON: ${findings} findings, ${json_errors} errors, ${json_warnings} warnings; "
                        "text: ${count}, ${errors}, ${warnings}")
  endif()
  if(first_rule STREQUAL "")
    message(FATAL_ERROR "JSON: the first finding has no rule")
  endif()
endif()
