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
# Every input error of qmhost itself is one line naming the path and why.
check(missing_task 2 "^$" "^nothing.qmt: cannot read the task file: no such file\n$" run nothing.qmt)
check(folder_as_task 2 "^$" "^[^\n]*Jürgen Müller: cannot read the task file: is a folder, not a file\n$" run "${folder}")
check(missing_block_file 2 "^$" "^qmhost: none.blk: cannot read the block file: no such file\n$"
      configure A_CSV_OPEN none.blk)
check(folder_as_plugin 2 "^$" "^qmhost: cannot load [^\n]*Jürgen Müller: is a folder, not a file\n$"
      --plugin "${folder}" list)
if(NOT EMULATOR)
  # --progress: once a second on stderr the running step, its time and its
  # loop pass, here while show-file waits 2.5 s for its input to end.
  file(WRITE "${WORK}/slow.qmt" "[A_CSV_LOOP]\nsource=2\nlinecount=2\nline00000000=a\nline00000001=b\n\n[show-file]\nname=/dev/stdin\n\n[end-loop]\n")
  execute_process(COMMAND sleep 2.5 COMMAND "${QMHOST}" --progress run slow.qmt WORKING_DIRECTORY "${WORK}"
                  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
  if(NOT rc STREQUAL "0" OR NOT err MATCHES "^(qmhost: [0-9.]+ s: step 1 show-file, running for [0-9.]+ s, loop pass 1\n)+$")
    message(SEND_ERROR "progress: exit ${rc}\n--- stderr\n${err}")
  endif()
  check(no_progress_in_a_pipe 0 "task finished" "^$" INPUT "${WORK}/slow.qmt" run slow.qmt)

  # Bytes that are not UTF-8 reach only the native build's arguments, and a
  # file unreadable for its user only a native process (as root, nobody).
  execute_process(COMMAND id -u OUTPUT_VARIABLE uid OUTPUT_STRIP_TRAILING_WHITESPACE)
  set(as_user)
  if(uid STREQUAL "0")
    set(as_user setpriv --reuid=65534 --regid=65534 --clear-groups)
  endif()
  file(WRITE "${WORK}/locked.qmt" "[print]\ntext=x\n")
  file(CHMOD "${WORK}/locked.qmt" PERMISSIONS OWNER_WRITE)
  execute_process(COMMAND ${as_user} bash -c "\"$0\" run \"a$(printf '\\377')\"; echo \"exit $?\" >&2; \"$0\" run locked.qmt"
                          "${QMHOST}" WORKING_DIRECTORY "${WORK}" OUTPUT_VARIABLE out ERROR_VARIABLE err)
  set(want "^qmhost: argument 2 \"a\\\\xff\" is not UTF-8 text \\(byte 0xFF at offset 1\\)\nexit 2\n"
           "locked.qmt: cannot read the task file: permission denied\n$")
  string(CONCAT want ${want})
  if(NOT out STREQUAL "" OR NOT err MATCHES "${want}")
    message(SEND_ERROR "argument_not_utf8, unreadable_task:\n--- stdout\n${out}--- stderr\n${err}")
  endif()
endif()
check(task_from_stdin 0 "\"[0-9]+ orders for stdin\"\njob stop\ntask finished\n$" "^$"
      INPUT "${folder}/task.qmt" --var who=stdin run -)
check(transcript_unwritable 6 "" "the transcript could not be written" OUTPUT /dev/full list)
check(non_ascii_path_and_value 0 "\"[0-9]+ orders for Jürgen\"\njob stop\ntask finished\n$" "^$"
      --var who=Jürgen run "${folder}/task.qmt")
check(keys_of_an_action 0 "^A_CSV_SORT: .*\n  sortcolumn +text" "^$" keys A_CSV_SORT)
check(keys_misspelt 2 "^$" "no action A_CSV_SROT; did you mean A_CSV_SORT\\?" keys A_CSV_SROT)
# --quiet (-q) leaves the task's print lines as they are, for a pipe, and
# the outcome on stderr.
check(quiet_keeps_print 0 "^[0-9]+ orders for \"q\"\n$" "^task finished\n$" --quiet --var who="q" run "${folder}/task.qmt")

# Per-command help, "--" before a file name that starts with "-", -q.
check(run_help 0 "^usage: qmhost \\[options\\] run TASKFILE\n.*exit codes:" "^$" run --help)
check(inspect_help 0 "^usage: qmhost inspect FILE\n" "^$" -h inspect)
check(help_of_unknown 2 "^$" "unknown command frob" frob --help)
file(WRITE "${WORK}/-dash.qmt" "[print]\ntext=dash\n")
check(options_end 0 "^dash\n$" "^task finished\n$" -q run -- -dash.qmt)
check(dash_file_without_end 2 "^$" "unknown option -dash.qmt" run -dash.qmt)

# A reader that goes away before the transcript ends: exit 6, not a signal.
string(REPEAT "[print]\ntext=a line of the transcript that nobody reads any more\n\n" 20000 many)
file(WRITE "${WORK}/many.qmt" "${many}")
execute_process(COMMAND ${EMULATOR} "${QMHOST}" run many.qmt COMMAND head -c 1 WORKING_DIRECTORY "${WORK}"
                RESULTS_VARIABLE codes OUTPUT_QUIET ERROR_VARIABLE err TIMEOUT 120)
list(GET codes 0 code)
if(NOT code STREQUAL "6" OR NOT err MATCHES "the transcript could not be written")
  message(SEND_ERROR "closed_pipe: exit ${code} (want 6)\n--- stderr\n${err}")
endif()
check(time_per_step 0 "\\[1\\] A_CSV_INFO\n.*  time [0-9.]+ ms\n.*time total [0-9.]+ ms\ntask finished" "^$"
      --time --var who=t run "${folder}/task.qmt")
# With --quiet the task's print lines and the two sums remain.
check(time_quiet 0 "^3 orders for t\ntime in steps [0-9.]+ ms\ntime total [0-9.]+ ms\n$" "^task finished\n$"
      --quiet --time --var who=t run "${folder}/task.qmt")
