# Runs with `cmake -P`; the win64 tests use it as their CTest fixture.
#
#   -DWINE=<wine> -DWINESERVER=<wineserver> -DPREFIX=<dir> -DXVFB_FILE=<file>
#   -DACTION=start|stop -P WinePrefix.cmake
#
# start: when no display is set, starts Xvfb and writes its number to XVFB_FILE
#        (cmake/wine-run.sh hands it to the tests); makes the private Wine prefix
#        of the build tree the first time (about ten seconds) and checks that a
#        Windows program starts in it.
# stop:  ends the prefix's wineserver and the Xvfb started here, so that nothing
#        outlives the run.
cmake_minimum_required(VERSION 3.25)

foreach(var WINE WINESERVER PREFIX XVFB_FILE ACTION)
  if(NOT DEFINED ${var})
    message(FATAL_ERROR "WinePrefix.cmake: ${var} is not set")
  endif()
endforeach()

set(ENV{WINEPREFIX} "${PREFIX}")
set(ENV{WINEDEBUG} "-all")
# No Mono or Gecko: their installers would open a dialog and wait for a click.
set(ENV{WINEDLLOVERRIDES} "mscoree,mshtml=")

if(ACTION STREQUAL "stop")
  execute_process(COMMAND "${WINESERVER}" -k RESULT_VARIABLE rc OUTPUT_QUIET ERROR_QUIET TIMEOUT 30)
  # Non-zero only means no wineserver was running.
  if(EXISTS "${XVFB_FILE}.pid")
    file(READ "${XVFB_FILE}.pid" pid)
    string(STRIP "${pid}" pid)
    execute_process(COMMAND kill "${pid}" OUTPUT_QUIET ERROR_QUIET)
    file(REMOVE "${XVFB_FILE}" "${XVFB_FILE}.pid")
  endif()
  return()
endif()
if(NOT ACTION STREQUAL "start")
  message(FATAL_ERROR "WinePrefix.cmake: ACTION must be start or stop, not '${ACTION}'")
endif()

# A display for the dialogs' tests: the caller's, or a virtual one started here
# (one per build tree, kept until the stop fixture; a dead one is replaced).
if("$ENV{DISPLAY}" STREQUAL "")
  set(alive 1)
  if(EXISTS "${XVFB_FILE}.pid")
    file(READ "${XVFB_FILE}.pid" pid)
    string(STRIP "${pid}" pid)
    execute_process(COMMAND kill -0 "${pid}" RESULT_VARIABLE alive OUTPUT_QUIET ERROR_QUIET)
  endif()
  if(NOT alive EQUAL 0)
    find_program(XVFB Xvfb)
    if(NOT XVFB)
      message(FATAL_ERROR "No display is set and Xvfb is not installed (apt-get install xvfb)")
    endif()
    file(REMOVE "${XVFB_FILE}")
    # -displayfd: Xvfb picks a free display and writes its number once it accepts clients.
    execute_process(COMMAND sh -c "\"$0\" -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>\"$1\" </dev/null >/dev/null 2>&1 & echo $! >\"$1.pid\""
                            "${XVFB}" "${XVFB_FILE}" RESULT_VARIABLE rc)
    foreach(try RANGE 100)
      if(EXISTS "${XVFB_FILE}")
        file(READ "${XVFB_FILE}" display)
        if(display MATCHES "[0-9]+\n")
          break()
        endif()
      endif()
      execute_process(COMMAND sleep 0.1)
    endforeach()
    if(NOT display MATCHES "[0-9]+\n")
      message(FATAL_ERROR "Xvfb did not start (rc ${rc})")
    endif()
  endif()
  file(READ "${XVFB_FILE}" display)
  string(STRIP "${display}" display)
  set(ENV{DISPLAY} ":${display}")
  message(STATUS "No display set: the tests use Xvfb on :${display}")
endif()

if(NOT EXISTS "${PREFIX}/system.reg")
  message(STATUS "Creating Wine prefix ${PREFIX}")
  file(MAKE_DIRECTORY "${PREFIX}")
  execute_process(COMMAND "${WINE}" wineboot.exe --init
                  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out TIMEOUT 240)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "wineboot --init failed (${rc}):\n${out}")
  endif()
  # wineboot may return before the registry is written; wait for the prefix to settle.
  execute_process(COMMAND "${WINESERVER}" -w TIMEOUT 120 RESULT_VARIABLE rc)
  if(NOT EXISTS "${PREFIX}/system.reg")
    message(FATAL_ERROR "Wine prefix ${PREFIX} was not created:\n${out}")
  endif()
endif()

# A program that crashes prints winedbg's backtrace and ends, rather than
# opening the crash dialog (a test program's SetErrorMode covers only itself).
file(READ "${PREFIX}/user.reg" user_reg)
if(NOT user_reg MATCHES "\"ShowCrashDialog\"=dword:00000000")
  execute_process(COMMAND "${WINE}" reg.exe add "HKCU\\Software\\Wine\\WineDbg"
                          /v ShowCrashDialog /t REG_DWORD /d 0 /f
                  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out TIMEOUT 120)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "Could not turn off Wine's crash dialog (${rc}):\n${out}")
  endif()
endif()

# Without a window manager (Xvfb) Wine draws the windows' frames and captions
# itself, so dialogs and their screenshots look as they do on Windows.
if(NOT user_reg MATCHES "\"Managed\"=\"N\"")
  execute_process(COMMAND "${WINE}" reg.exe add "HKCU\\Software\\Wine\\X11 Driver"
                          /v Managed /t REG_SZ /d N /f
                  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out TIMEOUT 120)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "Could not set Wine's window management (${rc}):\n${out}")
  endif()
endif()

# Wine's errors of the last run's programs (cmake/wine-run.sh) go.
file(REMOVE_RECURSE "${PREFIX}/qmcsv-wine-errors")

# One wineserver for the whole run, kept until the stop fixture, and Wine's
# own services (started by the first program the server runs) started here
# with their output in a file. A server or service started by a test would
# hold that test's output pipe open, and CTest would wait on it long after
# the test had ended.
execute_process(COMMAND "${WINESERVER}" -k OUTPUT_QUIET ERROR_QUIET TIMEOUT 30)
execute_process(COMMAND "${WINESERVER}" -w OUTPUT_QUIET ERROR_QUIET TIMEOUT 30)
execute_process(COMMAND sh -c "\"$0\" -p </dev/null >/dev/null 2>&1" "${WINESERVER}" RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "wineserver did not start (${rc})")
endif()

# Proves that a Windows program runs (and starts the services).
set(log "${PREFIX}/qmcsv-wine-ok.log")
execute_process(COMMAND sh -c "\"$0\" cmd.exe /c echo wine-ok </dev/null >\"$1\" 2>&1" "${WINE}" "${log}"
                RESULT_VARIABLE rc TIMEOUT 120)
file(READ "${log}" out)
if(NOT rc EQUAL 0 OR NOT out MATCHES "wine-ok")
  message(FATAL_ERROR "Wine cannot run programs in ${PREFIX} (${rc}):\n${out}")
endif()
message(STATUS "Wine prefix ready: ${PREFIX}")
