# qmhost inspect on files as people get them: for each, the keys it names
# and its warnings, then its [A_CSV_OPEN] step run through qmhost with Get
# Data Information, which must read the records and columns the file holds.
#
#   cmake -DQMHOST=<qmhost> [-DEMULATOR=<wine>] -DFILES=<tests/inspect> -DWORK=<work folder> -P inspect.cmake
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE "${WORK}")
file(MAKE_DIRECTORY "${WORK}")
file(GLOB samples "${FILES}/*")
file(COPY ${samples} DESTINATION "${WORK}")

# sample(FILE ENCODING DELIMITER QUOTECHAR HEADERLINE RECORDS COLUMNS WARNINGS_REGEX)
# RECORDS "-": the step is not run (the file needs converting first).
function(sample name encoding delimiter quote header records columns warnings)
  execute_process(COMMAND ${EMULATOR} "${QMHOST}" inspect ${name} WORKING_DIRECTORY "${WORK}"
                  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 60)
  set(want "encoding=${encoding}\ndelimiter=${delimiter}\n(otherchar=.\n)?quotechar=${quote}\nheaderline=${header}\n$")
  if(NOT rc STREQUAL "0" OR NOT err STREQUAL "" OR NOT out MATCHES "${want}")
    message(SEND_ERROR "${name}: exit ${rc}, want ${want}\n--- stdout\n${out}--- stderr\n${err}")
    return()
  endif()
  string(REGEX MATCHALL "\nwarning: [^\n]*" found "${out}")
  list(JOIN found "" found)
  if(NOT found MATCHES "^${warnings}$")
    message(SEND_ERROR "${name}: warnings\n${found}\nwant\n${warnings}")
  endif()
  if(records STREQUAL "-")
    return()
  endif()
  string(FIND "${out}" "[A_CSV_OPEN]" at)
  string(SUBSTRING "${out}" ${at} -1 step)
  file(WRITE "${WORK}/${name}.qmt" "${step}\n[A_CSV_INFO]\nrecordcountvar=r\ncolcountvar=c\n\n[print]\ntext={r} x {c}\n")
  execute_process(COMMAND ${EMULATOR} "${QMHOST}" -q run ${name}.qmt WORKING_DIRECTORY "${WORK}"
                  RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 60)
  if(NOT rc STREQUAL "0" OR NOT out STREQUAL "${records} x ${columns}\n")
    message(SEND_ERROR "${name}: the step read \"${out}\" (want ${records} x ${columns}), exit ${rc}\n${step}\n${err}")
  endif()
endfunction()

set(bom "\nwarning: a byte-order mark: read with encoding 0 or 5 [^\n]*encoding=2 skips it")
set(decimal "\nwarning: column ([0-9]) holds numbers like [^\n]*sort as numbers \\(sortmode=1\\) counts them as 0")
sample(utf8_bom_semicolon.csv 2 2 0 1 3 3 "${bom}")
sample(utf8_comma.csv 2 0 0 1 4 3 "")
sample(utf16le_bom_tab.txt 3 3 0 1 3 3 "")
sample(utf16le_nomark.csv 3 0 0 1 2 2 "")
sample(utf16be_bom.csv 3 2 0 1 - - "\nwarning: UTF-16 BE: no encoding of the plug-in reads it [^\n]*")
sample(cp1252_bank.csv 5 2 0 1 3 3 "${decimal}")
sample(pipe_no_header.txt 2 4 0 0 4 4 "")
sample(tab.tsv 2 3 0 1 3 3 "")
sample(multiline.csv 2 0 0 1 6 3
       "\nwarning: 2 quoted cells hold line breaks \\(the first in line 2\\): the plug-in reads each line as a record of its own")
sample(decimal_comma.csv 2 2 0 1 3 3 "${decimal}")
sample(ragged.csv 2 0 0 1 4 4 "\nwarning: 2 lines have more or fewer cells than the first \\(line 3: 3, the first: 4\\)[^\n]*")
sample(single_quote.csv 2 2 1 1 3 3 "")
sample(colon_cr.txt 2 1 0 1 3 3 "")

# A file that cannot be read is named with the reason; a large file is read
# only at its start (the delimiter from its first 1000 records), a ragged
# line found in all of that.
execute_process(COMMAND ${EMULATOR} "${QMHOST}" inspect missing.csv WORKING_DIRECTORY "${WORK}"
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT rc STREQUAL "2" OR NOT err STREQUAL "qmhost: missing.csv: cannot inspect the file: no such file\n")
  message(SEND_ERROR "missing file: exit ${rc}\n${err}")
endif()
string(REPEAT "1;2;3\n" 100000 rows)
file(WRITE "${WORK}/large.csv" "a;b;c\n${rows}x;y\n${rows}")
execute_process(COMMAND ${EMULATOR} "${QMHOST}" inspect large.csv WORKING_DIRECTORY "${WORK}"
                RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT rc STREQUAL "0" OR NOT out MATCHES "^file: large.csv \\(its first 1 MiB read\\)\n.*3 cells in 1000 of 1000 records.*\nwarning: 1 line has more or fewer cells than the first \\(line 100002: 2,")
  message(SEND_ERROR "large file: exit ${rc}\n${out}${err}")
endif()
