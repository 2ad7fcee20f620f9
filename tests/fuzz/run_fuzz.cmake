# Runs one fuzz target with `cmake -P`:
#
#   -DFUZZER=<target> -DWORK=<fresh folder> -DSEEDS=<seed folders> -DARTIFACTS=<folder>
#   -DSECONDS=<0: run every seed once; otherwise fuzz that long> [-DMAX_LEN=<bytes>]
#
# New inputs the fuzzer finds go to WORK; a crashing input is written under
# ARTIFACTS and named in the output.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
file(MAKE_DIRECTORY "${ARTIFACTS}")

set(options -artifact_prefix=${ARTIFACTS}/ -timeout=20 -rss_limit_mb=3072 -print_final_stats=1)
if(SECONDS EQUAL 0)
  list(APPEND options -runs=0)
else()
  list(APPEND options -max_total_time=${SECONDS})
  if(MAX_LEN)
    list(APPEND options -max_len=${MAX_LEN})
  endif()
endif()

execute_process(COMMAND "${FUZZER}" ${options} "${WORK}" ${SEEDS} RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "${FUZZER} failed (${rc}); the crashing input is under ${ARTIFACTS}")
endif()
