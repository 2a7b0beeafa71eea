# Toolchain for 64-bit Windows: mingw-w64 on Linux, with posix threads. Programs run under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

# Programs are those of the build machine; libraries, headers and packages are only those of the target.
set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/run-under-wine)
