# PCRE2 for the win64 build: the 16-bit library, static, with JIT and Unicode,
# compiled from Debian's pcre2 source package by the cross compiler.
#
# The source lives in deps/pcre2 (git-ignored). When it is missing, configure
# runs scripts/fetch-pcre2.sh, which takes it with `apt-get source pcre2`.
#
# Provides qmcsv::pcre2: pcre2.h (and nothing else of PCRE2's build tree) on the
# include path, PCRE2_STATIC defined, and the static library linked. Consumers
# define PCRE2_CODE_UNIT_WIDTH=16 themselves before including pcre2.h.
set(QMCSV_DEPS_DIR "${PROJECT_SOURCE_DIR}/deps" CACHE PATH
    "Where third-party sources are unpacked (git-ignored)")
set(QMCSV_PCRE2_SOURCE_DIR "${QMCSV_DEPS_DIR}/pcre2")

if(NOT EXISTS "${QMCSV_PCRE2_SOURCE_DIR}/CMakeLists.txt")
  message(STATUS "PCRE2 source missing; fetching Debian's pcre2 source package")
  execute_process(
    COMMAND bash "${PROJECT_SOURCE_DIR}/scripts/fetch-pcre2.sh" "${QMCSV_DEPS_DIR}"
    RESULT_VARIABLE qmcsv_fetch_result)
  if(NOT qmcsv_fetch_result EQUAL 0 OR NOT EXISTS "${QMCSV_PCRE2_SOURCE_DIR}/CMakeLists.txt")
    message(FATAL_ERROR
      "Could not obtain the pcre2 source package (scripts/fetch-pcre2.sh failed). "
      "Run 'sudo bash scripts/setup.sh' once on this machine and configure again.")
  endif()
endif()
if(EXISTS "${QMCSV_PCRE2_SOURCE_DIR}/.debian-version")
  file(STRINGS "${QMCSV_PCRE2_SOURCE_DIR}/.debian-version" QMCSV_PCRE2_DEBIAN_VERSION LIMIT_COUNT 1)
  message(STATUS "PCRE2: Debian source package ${QMCSV_PCRE2_DEBIAN_VERSION}")
endif()

# A directory of its own, so none of our compile flags reach PCRE2.
add_subdirectory("${CMAKE_CURRENT_LIST_DIR}/pcre2" "${CMAKE_BINARY_DIR}/third_party/pcre2"
                 EXCLUDE_FROM_ALL)

add_library(qmcsv_pcre2 INTERFACE)
target_include_directories(qmcsv_pcre2 SYSTEM INTERFACE "${QMCSV_PCRE2_INCLUDE_DIR}")
target_compile_definitions(qmcsv_pcre2 INTERFACE PCRE2_STATIC)
# LINK_ONLY: the library, without PCRE2's build directory (config.h) on our include path.
target_link_libraries(qmcsv_pcre2 INTERFACE "$<LINK_ONLY:pcre2-16-static>")
add_library(qmcsv::pcre2 ALIAS qmcsv_pcre2)
