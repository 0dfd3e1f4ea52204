# What the scripts that drive the `zoevents` program on a copy of the demo share.
# Variables (-D) they take: PROGRAM (the program), SOURCE_DIR (the source tree).

# Runs the program with ARGN; fails unless it exits with expected_status. Its standard
# output and error are left in `out` and `err`.
function(run expected_status)
  execute_process(COMMAND "${PROGRAM}" ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT status STREQUAL "${expected_status}")
    message(FATAL_ERROR "zoevents ${ARGN}: exit status ${status}, expected ${expected_status}\n${out}\n${err}")
  endif()
  set(out "${out}" PARENT_SCOPE)
  set(err "${err}" PARENT_SCOPE)
endfunction()

# Fails unless the project files in folder are those of the demo byte for byte; what says
# when (for the message).
function(expect_demo_files folder what)
  foreach(name Events.zocfg Devices.zocfg TimeTables.zocfg)
    file(SHA256 "${SOURCE_DIR}/examples/demo/${name}" expected)
    file(SHA256 "${folder}/${name}" actual)
    if(NOT expected STREQUAL actual)
      message(FATAL_ERROR "${name} differs from the demo's ${what}")
    endif()
  endforeach()
endfunction()
