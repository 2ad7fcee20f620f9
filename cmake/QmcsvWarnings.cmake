# Our own targets build warning-free; third-party code is compiled elsewhere.
# -Wrestrict is off: GCC 12 reports false overlaps inside std::string
# concatenation at -O3 (GCC bug 105329).
add_library(qmcsv_warnings INTERFACE)
target_compile_options(qmcsv_warnings INTERFACE -Wall -Wextra -Wpedantic -Werror
                       $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
