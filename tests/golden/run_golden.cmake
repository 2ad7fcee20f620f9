# Runs one golden test with `cmake -P`: a task file and the exact transcript
# qmhost must print for it.
#
#   -DQMHOST=<qmhost> [-DEMULATOR=<wine>] -DTASK=<x.qmt> -DEXPECTED=<x.expected>
#   -DDATA=<folder copied into the work folder> -DWORK=<fresh work folder>
#
# The task runs with the work folder as its current folder, so tasks name
# their files relatively. A first line "## qmhost: ARGS" replaces the default
# arguments "run TASK". The transcript ends with the line "exit: <code>".
# With the environment variable QMCSV_UPDATE_GOLDEN=1 the expected file is
# rewritten from the actual transcript (review the diff before committing).
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
file(GLOB data "${DATA}/*")
if(data)
  file(COPY ${data} DESTINATION "${WORK}")
endif()

set(args run "${TASK}")
file(STRINGS "${TASK}" first LIMIT_COUNT 1)
if(first MATCHES "^## qmhost: *(.*)$")
  separate_arguments(args UNIX_COMMAND "${CMAKE_MATCH_1}")
  list(TRANSFORM args REPLACE "^TASK$" "${TASK}")
endif()

execute_process(COMMAND ${EMULATOR} "${QMHOST}" ${args}
                WORKING_DIRECTORY "${WORK}"
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 300)
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
