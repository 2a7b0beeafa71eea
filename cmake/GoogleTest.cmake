# GoogleTest and GoogleMock as the system has them; if there are none for the target, as for mingw, from their sources.
set(IMPORTING_GOOGLETEST_SOURCES /usr/src/googletest CACHE PATH "GoogleTest's sources, for targets without a package")

include(FetchContent)
FetchContent_Declare(googletest SOURCE_DIR ${IMPORTING_GOOGLETEST_SOURCES} FIND_PACKAGE_ARGS NAMES GTest)
set(INSTALL_GTEST OFF CACHE INTERNAL "")
FetchContent_MakeAvailable(googletest)
