# Test helpers shared by both builds.
#
# qmcsv_add_unit_test(<name> <sources>...): a GoogleTest program linked with the
# portable core; in the win64 build it runs under Wine.
include(GoogleTest)

if(QMCSV_WIN64)
  # Debian's googletest ships its sources; build them with the cross compiler.
  set(gtest_force_shared_crt OFF CACHE BOOL "" FORCE)
  set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
  set(QMCSV_GTEST GTest::gtest)
  # A private Wine prefix per build tree, made once and kept.
  set(QMCSV_TEST_ENV "WINEPREFIX=${CMAKE_BINARY_DIR}/wineprefix" "WINEDEBUG=-all")
else()
  find_package(GTest REQUIRED)
  set(QMCSV_GTEST GTest::gtest)
  set(QMCSV_TEST_ENV "")
endif()

add_library(qmcsv_test_main STATIC ${CMAKE_CURRENT_LIST_DIR}/../tests/test_main.cpp)
target_link_libraries(qmcsv_test_main PUBLIC ${QMCSV_GTEST})

function(qmcsv_add_unit_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE qmcsv_core qmcsv_test_main qmcsv_warnings)
  add_test(NAME ${name} COMMAND ${name})
  if(QMCSV_TEST_ENV)
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "${QMCSV_TEST_ENV}")
  endif()
endfunction()
