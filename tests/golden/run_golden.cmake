# Runs one golden test with `cmake -P`: a task file and the exact transcript
# qmhost must print for it.
#
#   -DQMHOST=<qmhost> [-DEMULATOR=<wine>] -DTASK=<x.qmt> -DEXPECTED=<x.expected>
#   -DDATA=<folder copied into the work folder> -DWORK=<fresh work folder>
#
# The task runs with the work folder as its current folder, so tasks name
# their files relatively. A first line "## qmhost: ARGS" replaces the default
# arguments "run TASK". The transcript ends with qmhost's stderr, each line
# starting "stderr: ", and the line "exit: <code>".
# Header lines that change how qmhost runs (native build only):
#   ## file-size-limit: KIB   no file qmhost writes may grow past KIB KiB (a
#                             full disk); writes past it fail instead of
#                             ending the process
#   ## read-only: PATH...     these files and folders of the work folder lose
#                             their write permission; as root, qmhost then runs
#                             as user nobody, as root would write anyway
# With the environment variable QMCSV_UPDATE_GOLDEN=1 the expected file is
# rewritten from the actual transcript (review the diff before committing).
cmake_minimum_required(VERSION 3.25)

# A folder left read-only by an earlier run must become writable to go.
if(EXISTS "${WORK}")
  execute_process(COMMAND chmod -R u+w "${WORK}")
endif()
file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
file(GLOB data "${DATA}/*")
if(data)
  file(COPY ${data} DESTINATION "${WORK}")
endif()

# -DCOPY_TASK=1: the task runs from its copy in the work folder, so what it
# writes next to itself ({taskdir}) stays out of the source tree.
if(COPY_TASK)
  get_filename_component(task_name "${TASK}" NAME)
  set(TASK "${WORK}/${task_name}")
endif()

set(args run "${TASK}")
file(STRINGS "${TASK}" first LIMIT_COUNT 1)
if(first MATCHES "^## qmhost: *(.*)$")
  separate_arguments(args UNIX_COMMAND "${CMAKE_MATCH_1}")
  list(TRANSFORM args REPLACE "^TASK$" "${TASK}")
endif()

set(wrap)
file(STRINGS "${TASK}" limit REGEX "^## file-size-limit: *[0-9]+$")
if(limit)
  string(REGEX REPLACE "^## file-size-limit: *" "" limit "${limit}")
  # Lines, not ";": a ";" would split the script into list items.
  set(wrap bash -c "trap '' XFSZ\nulimit -f ${limit}\nexec \"$@\"" limited)
endif()
file(STRINGS "${TASK}" read_only REGEX "^## read-only: ")
if(read_only)
  string(REGEX REPLACE "^## read-only: *" "" read_only "${read_only}")
  separate_arguments(read_only UNIX_COMMAND "${read_only}")
  foreach(path ${read_only})
    file(CHMOD "${WORK}/${path}" PERMISSIONS OWNER_READ GROUP_READ WORLD_READ
         DIRECTORY_PERMISSIONS OWNER_READ OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  endforeach()
  execute_process(COMMAND id -u OUTPUT_VARIABLE uid OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(uid STREQUAL "0")
    list(PREPEND wrap setpriv --reuid=65534 --regid=65534 --clear-groups)
  endif()
endif()

execute_process(COMMAND ${wrap} ${EMULATOR} "${QMHOST}" ${args}
                WORKING_DIRECTORY "${WORK}"
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 300)
# What qmhost says on stderr follows the transcript, each line marked; the
# task file's path reads as its name, the same on every machine.
if(NOT err STREQUAL "")
  string(REGEX REPLACE "\n$" "" err "${err}")
  string(REPLACE "\n" "\nstderr: " err "${err}")
  string(APPEND out "stderr: ${err}\n")
endif()
get_filename_component(task_name "${TASK}" NAME)
string(REPLACE "${TASK}" "${task_name}" out "${out}")
string(APPEND out "exit: ${rc}\n")

if("$ENV{QMCSV_UPDATE_GOLDEN}" STREQUAL "1")
  file(WRITE "${EXPECTED}" "${out}")
  message(STATUS "rewrote ${EXPECTED}")
  return()
endif()
if(NOT EXISTS "${EXPECTED}")
  message(FATAL_ERROR "no expected transcript ${EXPECTED}; actual:\n${out}${err}")
endif()
file(READ "${EXPECTED}" expected)
if(NOT out STREQUAL expected)
  file(WRITE "${WORK}/actual.transcript" "${out}")
  message(FATAL_ERROR "transcript differs from ${EXPECTED}\n--- expected\n${expected}--- actual\n${out}--- stderr\n${err}")
endif()
