# GoogleTest as the system has it; where nothing is built for the target, as for mingw, from its sources.
set(IMPORTING_GOOGLETEST_SOURCES /usr/src/googletest CACHE PATH "GoogleTest's sources, for targets without a package")

include(FetchContent)
FetchContent_Declare(googletest SOURCE_DIR ${IMPORTING_GOOGLETEST_SOURCES} FIND_PACKAGE_ARGS NAMES GTest)
set(BUILD_GMOCK OFF CACHE INTERNAL "")
set(INSTALL_GTEST OFF CACHE INTERNAL "")
FetchContent_MakeAvailable(googletest)
