# Cross-compiles for 64-bit Windows with MinGW-w64 and runs the programs with Wine.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# Headers and libraries of the building system are never used; its programs (flatc) are.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# ROAMSCAN_WINDOWS_PREFIX has the dependencies, as `./run windows` makes them.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ROAMSCAN_WINDOWS_PREFIX)
if(ROAMSCAN_WINDOWS_PREFIX)
    list(PREPEND CMAKE_FIND_ROOT_PATH ${ROAMSCAN_WINDOWS_PREFIX})
endif()

set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../../.ci/wine")
