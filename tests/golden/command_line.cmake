# qmhost's command line as users of csvkit, Miller and qsv expect it: help and
# version on stdout with exit 0, unknown options and bad values named on
# stderr with exit 2, a task from standard input, a failed transcript write
# an error (6); and, through the Windows build too, a task in a folder with
# non-ASCII letters and a non-ASCII variable value.
#
#   cmake -DQMHOST=<qmhost> [-DEMULATOR=<wine>] -DDATA=<golden data> -DWORK=<work folder> -P command_line.cmake
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK}")
set(folder "${WORK}/Jürgen Müller")
file(MAKE_DIRECTORY "${folder}")
file(COPY "${DATA}/orders.csv" DESTINATION "${folder}")
file(COPY "${DATA}/orders.csv" DESTINATION "${WORK}")  # the task from stdin reads the current folder
file(WRITE "${folder}/task.qmt" "[A_CSV_OPEN]\nsource=1\nfilename={taskdir}orders.csv\nencoding=2\nheaderline=1\n\n[A_CSV_INFO]\nrecordcountvar=rows\n\n[print]\ntext={rows} orders for {who}\n")
set(failures 0)

# check(NAME EXIT STDOUT_REGEX STDERR_REGEX [INPUT FILE] [OUTPUT FILE] ARGS...)
function(check name exit out_regex err_regex)
  cmake_parse_arguments(C "" "INPUT;OUTPUT" "" ${ARGN})
  set(redirect)
  if(C_INPUT)
    list(APPEND redirect INPUT_FILE "${C_INPUT}")
  endif()
  if(C_OUTPUT)
    list(APPEND redirect OUTPUT_FILE "${C_OUTPUT}")
  endif()
  execute_process(COMMAND ${EMULATOR} "${QMHOST}" ${C_UNPARSED_ARGUMENTS}
                  WORKING_DIRECTORY "${WORK}" RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err
                  ${redirect} TIMEOUT 120)
  if(NOT rc STREQUAL "${exit}" OR NOT out MATCHES "${out_regex}" OR NOT err MATCHES "${err_regex}")
    message(SEND_ERROR "${name}: exit ${rc} (want ${exit})\n--- stdout\n${out}--- stderr\n${err}")
  endif()
endfunction()

check(help 0 "^usage: qmhost .*--version" "^$" --help)
check(short_help 0 "^usage: qmhost" "^$" -h)
check(version 0 "^qmhost [0-9.]+\n$" "^$" --version)
check(unknown_option 2 "^$" "unknown option --bogus" --bogus list)
check(task_id_word 2 "^$" "--task-id needs a whole number .*, not abc" --task-id abc list)
check(task_id_too_large 2 "^$" "not 99999999999" --task-id 99999999999 list)
check(max_steps_word 2 "^$" "--max-steps needs a whole number .*, not abc" --max-steps abc list)
check(missing_value 2 "^$" "option --var needs a value" list --var)
check(run_without_file 2 "^$" "run needs one TASKFILE" run)
check(unknown_command 2 "^$" "unknown command frob" frob)
check(missing_task 2 "^$" "nothing.qmt: cannot read the task file" run nothing.qmt)
check(task_from_stdin 0 "\"[0-9]+ orders for stdin\"\njob stop\ntask finished\n$" "^$"
      INPUT "${folder}/task.qmt" --var who=stdin run -)
check(transcript_unwritable 6 "" "the transcript could not be written" OUTPUT /dev/full list)
check(non_ascii_path_and_value 0 "\"[0-9]+ orders for Jürgen\"\njob stop\ntask finished\n$" "^$"
      --var who=Jürgen run "${folder}/task.qmt")
check(keys_of_an_action 0 "^A_CSV_SORT: .*\n  sortcolumn +text" "^$" keys A_CSV_SORT)
check(keys_misspelt 2 "^$" "no action A_CSV_SROT; did you mean A_CSV_SORT\\?" keys A_CSV_SROT)
check(quiet_keeps_print 0 "^  \"[0-9]+ orders for q\"\ntask finished\n$" "^$" --quiet --var who=q run "${folder}/task.qmt")
check(time_per_step 0 "\\[1\\] A_CSV_INFO\n.*  time [0-9.]+ ms\n.*time total [0-9.]+ ms\ntask finished" "^$"
      --time --var who=t run "${folder}/task.qmt")
# With --quiet the task's print lines and the two sums remain.
check(time_quiet 0 "^  \"3 orders for t\"\ntime in steps [0-9.]+ ms\ntime total [0-9.]+ ms\ntask finished" "^$"
      --quiet --time --var who=t run "${folder}/task.qmt")
