# Cross-compiles the Qt-free core and its tests for 64-bit Windows with Debian's mingw-w64, and
# runs the tests under Wine. Linked statically, so a test needs no DLL beside it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
find_program(QUILLON_WINE NAMES wine64 wine PATHS /usr/lib/wine NO_CMAKE_FIND_ROOT_PATH)
if(QUILLON_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${QUILLON_WINE})
endif()
# The test lists are read when ctest runs, through Wine, not while building.
set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)
# GCC 12 reports a false overlap inside libstdc++'s std::string when it inlines deeply.
set(CMAKE_CXX_FLAGS_INIT "-Wno-restrict")
