# Cross build of the product DLL with Debian's mingw-w64 (posix thread model,
# whose winpthread we link statically).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(QMCSV_MINGW_PREFIX x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${QMCSV_MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QMCSV_MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${QMCSV_MINGW_PREFIX}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${QMCSV_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Everything static: the DLL and the test programs import Windows system DLLs only.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")

# Test programs run under Wine (through a wrapper that lends them the tests'
# virtual display when there is no other); a private prefix keeps them away
# from the user's.
find_program(QMCSV_WINE NAMES wine wine64 REQUIRED)
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run.sh)
