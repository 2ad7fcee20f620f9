# Instrumented native builds (see the "sanitize" and "fuzz" presets).
#
# QMCSV_SANITIZE: every target of the tree but the benchmarks (library, qmhost, tests)
# under AddressSanitizer and UndefinedBehaviorSanitizer; the first report ends
# the program, so a test that triggers one fails.
# QMCSV_FUZZ: clang only; the sources get the same sanitizers plus libFuzzer's
# coverage, and the tree holds only the fuzz targets (tests/fuzz).
option(QMCSV_SANITIZE "Build everything with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
option(QMCSV_FUZZ "Build the libFuzzer targets only (clang)" OFF)

if(QMCSV_SANITIZE OR QMCSV_FUZZ)
  if(QMCSV_WIN64)
    message(FATAL_ERROR "QMCSV_SANITIZE and QMCSV_FUZZ are for the native build")
  endif()
  set(qmcsv_sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  if(QMCSV_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
      message(FATAL_ERROR "QMCSV_FUZZ needs clang (libFuzzer): configure with the fuzz preset")
    endif()
    list(APPEND qmcsv_sanitizers -fsanitize=fuzzer-no-link)
  endif()
  add_compile_options(${qmcsv_sanitizers})
  add_link_options(-fsanitize=address,undefined)
endif()
