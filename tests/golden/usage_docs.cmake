# docs/qmhost.md shows qmhost's own help texts: each `qmhost [COMMAND] --help`
# output must stand there word for word, in a fenced block.
#
#   cmake -DQMHOST=<qmhost> [-DEMULATOR=<wine>] -DDOC=<docs/qmhost.md> -P usage_docs.cmake
cmake_minimum_required(VERSION 3.25)

file(READ "${DOC}" doc)
foreach(command "" run inspect keys list about configure)
  execute_process(COMMAND ${EMULATOR} "${QMHOST}" ${command} --help RESULT_VARIABLE rc OUTPUT_VARIABLE out)
  string(FIND "${doc}" "```\n${out}```\n" at)
  if(NOT rc STREQUAL "0" OR at LESS 0)
    message(SEND_ERROR "docs/qmhost.md lacks `qmhost ${command} --help` (exit ${rc}) as it prints:\n${out}")
  endif()
endforeach()
