# The release package as a user gets it, run with `cmake -P`:
#
#   -DCPACK=<cpack> -DCONFIG=<CPackConfig.cmake> -DPACKAGE=<qmcsv-V-win64>
#   -DVERSION=<V> -DEMULATOR=<wine wrapper> -DRUN_GOLDEN=<run_golden.cmake>
#   -DWORK=<a fresh folder of this test's own>
#
# CPack builds the ZIP into the work folder (never into the build tree's own
# package folder), which is unpacked there. The test fails when a file the
# release promises is missing or an unexpected one is at the top, when
# SHA256SUMS does not list every other file with its right hash, when the
# unpacked qmhost.exe or the about box of the unpacked qmcsv.dll names another
# version than the package, or when the guide's first task, run with the
# unpacked qmhost.exe and qmcsv.dll, prints other than its expected transcript.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
execute_process(COMMAND "${CPACK}" --config "${CONFIG}" -B "${WORK}/cpack"
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
set(zip "${WORK}/cpack/${PACKAGE}.zip")
if(NOT rc EQUAL 0 OR NOT EXISTS "${zip}")
  message(FATAL_ERROR "cpack made no ${PACKAGE}.zip (exit ${rc}):\n${out}")
endif()
file(ARCHIVE_EXTRACT INPUT "${zip}" DESTINATION "${WORK}/unpacked")
set(root "${WORK}/unpacked/${PACKAGE}")
if(NOT IS_DIRECTORY "${root}")
  message(FATAL_ERROR "the package does not unpack into one folder ${PACKAGE}")
endif()

# What the release promises, and nothing else at the top.
set(promised qmcsv.dll qmhost.exe LICENSE THIRD-PARTY-NOTICES CHANGELOG.md SHA256SUMS
    guide/README.md guide/install.md guide/first-task.md guide/behaviours.md guide/images
    examples/first-task.qmt examples/orders.csv examples/expected/first-task.expected)
set(faults "")
foreach(f IN LISTS promised)
  if(NOT EXISTS "${root}/${f}")
    string(APPEND faults "missing: ${f}\n")
  endif()
endforeach()
file(GLOB top RELATIVE "${root}" "${root}/*")
foreach(f IN LISTS top)
  if(NOT f IN_LIST promised AND NOT f MATCHES "^(guide|examples)$")
    string(APPEND faults "not promised: ${f}\n")
  endif()
endforeach()

# SHA256SUMS: each other file once, with its hash, as `sha256sum -c` reads it.
file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE "${root}" "${root}/*")
list(REMOVE_ITEM files SHA256SUMS)
set(listed "")
if(EXISTS "${root}/SHA256SUMS")
  file(STRINGS "${root}/SHA256SUMS" lines)
  foreach(line IN LISTS lines)
    if(NOT line MATCHES "^([0-9a-f]+)  (.+)$")
      string(APPEND faults "SHA256SUMS: not a checksum line: ${line}\n")
      continue()
    endif()
    set(hash "${CMAKE_MATCH_1}")
    set(name "${CMAKE_MATCH_2}")
    list(APPEND listed "${name}")
    if(NOT EXISTS "${root}/${name}")
      string(APPEND faults "SHA256SUMS: names a file not in the package: ${name}\n")
      continue()
    endif()
    file(SHA256 "${root}/${name}" actual)
    if(NOT actual STREQUAL hash)
      string(APPEND faults "SHA256SUMS: wrong hash for ${name}\n")
    endif()
  endforeach()
endif()
list(SORT files)
list(SORT listed)
if(NOT files STREQUAL listed)
  string(APPEND faults "SHA256SUMS lists\n  ${listed}\nbut the package holds\n  ${files}\n")
endif()

# One version: the package's name, qmhost.exe --version and the DLL's about box.
execute_process(COMMAND ${EMULATOR} "${root}/qmhost.exe" --version
                WORKING_DIRECTORY "${WORK}" OUTPUT_VARIABLE host_version RESULT_VARIABLE rc TIMEOUT 120)
if(NOT rc EQUAL 0 OR NOT host_version STREQUAL "qmhost ${VERSION}\n")
  string(APPEND faults "qmhost.exe --version (exit ${rc}): ${host_version}\n")
endif()
execute_process(COMMAND ${EMULATOR} "${root}/qmhost.exe" about
                WORKING_DIRECTORY "${WORK}" OUTPUT_VARIABLE about RESULT_VARIABLE rc TIMEOUT 120)
string(FIND "${about}" "addon \"Plugin version ${VERSION}\"" at)
if(NOT rc EQUAL 0 OR at LESS 0)
  string(APPEND faults "qmhost.exe about (exit ${rc}) does not show version ${VERSION}: ${about}\n")
endif()

# The guide's first task with the unpacked programs, against the packed transcript.
execute_process(COMMAND ${CMAKE_COMMAND} -DQMHOST=${root}/qmhost.exe "-DEMULATOR=${EMULATOR}"
                  -DTASK=${root}/examples/first-task.qmt -DCOPY_TASK=1
                  -DEXPECTED=${root}/examples/expected/first-task.expected
                  -DDATA=${root}/examples -DWORK=${WORK}/run -P "${RUN_GOLDEN}"
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
if(NOT rc EQUAL 0)
  string(APPEND faults "examples/first-task.qmt with the unpacked qmhost.exe:\n${out}\n")
endif()

if(NOT faults STREQUAL "")
  message(FATAL_ERROR "${PACKAGE}.zip:\n${faults}")
endif()
list(LENGTH files count)
message(STATUS "${PACKAGE}.zip: ${count} files with their checksums, version ${VERSION}, first task as expected")
