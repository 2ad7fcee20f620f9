# Test helpers shared by both builds.
#
# qmcsv_add_unit_test(<name> <sources>... LINKS <libraries>...): a GoogleTest
# program linked with the layers it tests; in the win64 build it runs under Wine.
# qmcsv_wine_test(<test>...): lets win64 tests run under Wine (environment,
# prepared prefix); qmcsv_add_unit_test calls it for its own test.
include(GoogleTest)

# Seconds a unit-test program may take before CTest ends it.
set(QMCSV_UNIT_TEST_TIMEOUT 120 CACHE STRING "Timeout of one unit-test program, in seconds")

if(QMCSV_WIN64)
  # Debian's googletest ships its sources; build them with the cross compiler.
  set(gtest_force_shared_crt OFF CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  set(QMCSV_GTEST GTest::gtest)

  # A private Wine prefix per build tree, made once and kept. Mono and Gecko
  # stay off: their installers would wait for a click.
  set(QMCSV_WINEPREFIX "${CMAKE_BINARY_DIR}/wineprefix")
  # Dialogs need a display: without one, the fixture starts Xvfb and notes its
  # number in QMCSV_XVFB_FILE for cmake/wine-run.sh.
  set(QMCSV_XVFB_FILE "${CMAKE_BINARY_DIR}/xvfb-display")
  set(QMCSV_TEST_ENV "WINEPREFIX=${QMCSV_WINEPREFIX}" "WINEDEBUG=-all" "WINEDLLOVERRIDES=mscoree,mshtml="
                     "QMCSV_WINE=${QMCSV_WINE}" "QMCSV_XVFB_FILE=${QMCSV_XVFB_FILE}")
  find_program(QMCSV_WINESERVER NAMES wineserver REQUIRED)

  # The fixture: every Wine test needs the prefix made first, and the
  # wineserver is stopped after the last one.
  set(wine_prefix_args -DWINE=${QMCSV_WINE} -DWINESERVER=${QMCSV_WINESERVER} -DPREFIX=${QMCSV_WINEPREFIX}
                       -DXVFB_FILE=${QMCSV_XVFB_FILE})
  add_test(NAME wine_prefix
           COMMAND ${CMAKE_COMMAND} ${wine_prefix_args} -DACTION=start -P ${CMAKE_CURRENT_LIST_DIR}/WinePrefix.cmake)
  add_test(NAME wine_prefix_stop
           COMMAND ${CMAKE_COMMAND} ${wine_prefix_args} -DACTION=stop -P ${CMAKE_CURRENT_LIST_DIR}/WinePrefix.cmake)
  set_tests_properties(wine_prefix PROPERTIES FIXTURES_SETUP qmcsv_wine TIMEOUT 400)
  set_tests_properties(wine_prefix_stop PROPERTIES FIXTURES_CLEANUP qmcsv_wine TIMEOUT 60)
else()
  find_package(GTest REQUIRED)
  set(QMCSV_GTEST GTest::gtest)
  set(QMCSV_TEST_ENV "")
endif()

function(qmcsv_wine_test)
  if(QMCSV_WIN64)
    set_tests_properties(${ARGN} PROPERTIES ENVIRONMENT "${QMCSV_TEST_ENV}" FIXTURES_REQUIRED qmcsv_wine)
  endif()
endfunction()

add_library(qmcsv_test_main STATIC ${CMAKE_CURRENT_LIST_DIR}/../tests/test_main.cpp)
target_link_libraries(qmcsv_test_main PUBLIC ${QMCSV_GTEST})

function(qmcsv_add_unit_test name)
  cmake_parse_arguments(T "" "" "LINKS" ${ARGN})
  add_executable(${name} ${T_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${T_LINKS} qmcsv_test_main qmcsv_warnings)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${QMCSV_UNIT_TEST_TIMEOUT})
  qmcsv_wine_test(${name})
endfunction()
