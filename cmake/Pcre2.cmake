# PCRE2, 16-bit code units, for the regular-expression record conditions.
# Provides the target qmcsv::pcre2.
if(NOT QMCSV_WIN64)
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(PCRE2_16 REQUIRED IMPORTED_TARGET libpcre2-16)
  add_library(qmcsv::pcre2 ALIAS PkgConfig::PCRE2_16)
else()
  include(Pcre2Win64)
endif()
