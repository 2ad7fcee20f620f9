# cmake/wine-run.sh with a stand-in for Wine: under WINEDEBUG=-all it turns on
# Wine's error class, passes the program's stdout, stderr and exit code on
# unchanged but for Wine's error lines, and keeps those in a file of their own
# headed by the command line; a run without any leaves no file.
#   cmake -DRUNNER=<wine-run.sh> -DWORK=<folder> -P wine_run_test.cmake
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}/prefix")
set(errors "${WORK}/prefix/qmcsv-wine-errors")

# The stand-in notes the WINEDEBUG it got, then writes what FAKE_ERR holds.
file(WRITE "${WORK}/fake-wine.sh" [=[#!/bin/sh
printf '%s' "$WINEDEBUG" > "$FAKE_SEEN"
printf 'out\n'
printf '%b' "$FAKE_ERR" >&2
exit 7
]=])

function(run_wrapper err)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env --unset=DISPLAY --unset=QMCSV_XVFB_FILE "WINEPREFIX=${WORK}/prefix"
            WINEDEBUG=-all "QMCSV_WINE=${WORK}/fake-wine.sh" "FAKE_SEEN=${WORK}/seen" "FAKE_ERR=${err}"
            bash "${RUNNER}" prog.exe "two words"
    RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err_out)
  set(rc "${rc}" PARENT_SCOPE)
  set(out "${out}" PARENT_SCOPE)
  set(err_out "${err_out}" PARENT_SCOPE)
endfunction()

file(CHMOD "${WORK}/fake-wine.sh" PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
run_wrapper("0024:err:module:import_dll Library x.dll not found\\nplain line\\n0024:fixme:ver:y\\nlast")
file(READ "${WORK}/seen" seen)
if(NOT rc EQUAL 7 OR NOT out STREQUAL "out\n" OR NOT err_out STREQUAL "plain line\n0024:fixme:ver:y\nlast"
   OR NOT seen STREQUAL "-all,err+all")
  message(FATAL_ERROR "error lines: exit ${rc}, WINEDEBUG '${seen}'\n--- stdout\n${out}--- stderr\n${err_out}")
endif()
file(GLOB logs "${errors}/*")
list(LENGTH logs count)
if(NOT count EQUAL 1)
  message(FATAL_ERROR "want one error file, have: ${logs}")
endif()
file(STRINGS "${logs}" lines)
list(GET lines 0 head)
list(LENGTH lines line_count)
if(NOT line_count EQUAL 2 OR NOT head MATCHES " prog\\.exe two words$"
   OR NOT lines MATCHES ";0024:err:module:import_dll Library x\\.dll not found$")
  message(FATAL_ERROR "the error file holds:\n${lines}")
endif()

# Without error lines: all of stderr as it was, and no file.
file(REMOVE_RECURSE "${errors}")
run_wrapper("just this\\n")
file(GLOB logs "${errors}/*")
if(NOT rc EQUAL 7 OR NOT err_out STREQUAL "just this\n" OR logs)
  message(FATAL_ERROR "no error lines: exit ${rc}, files: ${logs}\n--- stderr\n${err_out}")
endif()
