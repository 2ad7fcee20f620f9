# Our own targets build warning-free; third-party code is compiled elsewhere.
add_library(qmcsv_warnings INTERFACE)
target_compile_options(qmcsv_warnings INTERFACE -Wall -Wextra -Wpedantic -Werror)
