# The `zoevents export` and `import` commands on a copy of the demo project, as a script
# that edits the sheet runs them. Variables (-D): PROGRAM, SOURCE_DIR, WORK (a folder to use).
include(${CMAKE_CURRENT_LIST_DIR}/CliScript.cmake)

function(expect text pattern)
  if(NOT text MATCHES "${pattern}")
    message(FATAL_ERROR "expected ${pattern} in:\n${text}")
  endif()
endfunction()

set(project "${WORK}/project")
file(REMOVE_RECURSE "${WORK}")
file(COPY "${SOURCE_DIR}/examples/demo/" DESTINATION "${project}")

# Export, then import unchanged: not a byte of the project changes.
run(0 export "${project}" -o "${WORK}/events.csv")
expect("${err}" "^24 events exported")
run(0 import --delete-missing "${project}" "${WORK}/events.csv")
expect("${out}" "^0 added, 0 modified, 24 unchanged, 0 deleted.\n$")
expect_demo_files("${project}" "after a refused or unchanged import")
run(0 export "${project}")
file(READ "${WORK}/events.csv" written)
if(NOT out STREQUAL written)
  message(FATAL_ERROR "the sheet on the standard output differs from the file")
endif()

# A script's edits: a rename and a new row.
string(REPLACE ",Tank overflow," ",Reservoir overflow," edited "${written}")
string(APPEND edited ",Night check,,T,F,F,[PLC1.TANK_LEVEL] > 60,,10,0,Out of hours,Reservoir,,,,,F,F,F,\r\n")
file(WRITE "${WORK}/edited.csv" "${edited}")
run(0 import --dry-run "${project}" "${WORK}/edited.csv")
expect("${out}" "^1 added, 1 modified, 23 unchanged.\nLine 3: event \"Reservoir overflow\": name: \"Tank overflow\" → \"Reservoir overflow\"\nLine 26: new event \"Night check\"\n")
expect("${err}" "dry run")
expect_demo_files("${project}" "after a refused or unchanged import")
run(0 import "${project}" "${WORK}/edited.csv")
file(READ "${project}/Events.zocfg" events)
expect("${events}" "<name>Reservoir overflow</name>")
expect("${events}" "<name>Night check</name>")
# The same sheet again would add the new row twice.
run(1 import "${project}" "${WORK}/edited.csv")
expect("${out}" "Line 26, column 2 \\(name\\): Another event is named \"Night check\".")

# A refused row: exit 1 with the line and the reason, nothing changed.
file(COPY "${SOURCE_DIR}/examples/demo/" DESTINATION "${project}")
string(REPLACE "{9B743C11-7535-5B34-A39B-0F16A4EACD93}" "{00000000-0000-0000-0000-000000000000}" refused "${written}")
file(WRITE "${WORK}/refused.csv" "${refused}")
run(1 import "${project}" "${WORK}/refused.csv")
expect("${out}" "Line 3, column 1 \\(id\\): No event has this id.")
expect("${err}" "refused, nothing was changed")
expect_demo_files("${project}" "after a refused or unchanged import")

run(2 import "${project}")
expect("${err}" "a project folder and a sheet file are needed")
run(2 import "${project}" "${WORK}/missing.csv")
expect("${err}" "missing.csv")
