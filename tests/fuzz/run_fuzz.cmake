# Runs one fuzz target with `cmake -P`:
#
#   -DFUZZER=<target> -DFOLDER=<the test's own folder> -DSEEDS=<seed folders>
#   -DSECONDS=<0: run every seed once; otherwise fuzz that long> [-DMAX_LEN=<bytes>]
#
# FOLDER is made afresh: new inputs the fuzzer finds go to FOLDER/corpus, the
# target's temporary files to FOLDER/tmp (TMPDIR), and a crashing input is
# written under FOLDER/artifacts and named in the output.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${FOLDER}")
set(corpus "${FOLDER}/corpus")
set(artifacts "${FOLDER}/artifacts")
file(MAKE_DIRECTORY "${corpus}" "${artifacts}" "${FOLDER}/tmp")
set(ENV{TMPDIR} "${FOLDER}/tmp")

set(options -artifact_prefix=${artifacts}/ -timeout=20 -rss_limit_mb=3072 -print_final_stats=1)
if(SECONDS EQUAL 0)
  list(APPEND options -runs=0)
else()
  list(APPEND options -max_total_time=${SECONDS})
  if(MAX_LEN)
    list(APPEND options -max_len=${MAX_LEN})
  endif()
endif()

execute_process(COMMAND "${FUZZER}" ${options} "${corpus}" ${SEEDS} RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "${FUZZER} failed (${rc}); the crashing input is under ${artifacts}")
endif()
