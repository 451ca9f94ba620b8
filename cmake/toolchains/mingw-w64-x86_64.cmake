# Cross build for 64-bit Windows with Debian's mingw-w64 (posix threads), and
# Wine to run what it builds: tests run through CMAKE_CROSSCOMPILING_EMULATOR.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(QOR_MINGW_PREFIX x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${QOR_MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${QOR_MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${QOR_MINGW_PREFIX}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${QOR_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Static runtime: the .exe files run without any DLL beside them.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")

# Wine runs the cross-built tests (see the top-level CMakeLists.txt).
find_program(QOR_WINE NAMES wine64 PATHS /usr/lib/wine NO_DEFAULT_PATH)
if(NOT QOR_WINE)
    find_program(QOR_WINE NAMES wine64 wine)
endif()
