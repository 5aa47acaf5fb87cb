# 32-bit Windows with MinGW-w64, POSIX threads. VERIDAN_WIN32_SDK, a cache or environment variable, is the folder with
# Qt, SQLite and GoogleTest that ./dev windows sdk makes.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_VERSION 6.1)
set(CMAKE_SYSTEM_PROCESSOR x86)

set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)

set(VERIDAN_WIN32_SDK "$ENV{VERIDAN_WIN32_SDK}" CACHE PATH "Qt, SQLite and GoogleTest for 32-bit Windows")
if(NOT VERIDAN_WIN32_SDK)
  message(FATAL_ERROR "VERIDAN_WIN32_SDK names no folder; ./dev windows build sets it")
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VERIDAN_WIN32_SDK)

set(CMAKE_FIND_ROOT_PATH ${VERIDAN_WIN32_SDK} /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/windows/wine ${VERIDAN_WIN32_SDK})
