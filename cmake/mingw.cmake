# Cross-builds for 64-bit Windows with Debian's MinGW-w64. What is built needs no run-time library of the compiler.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(mingw x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${mingw}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mingw}-g++-posix)
set(CMAKE_RC_COMPILER ${mingw}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${mingw})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static -s")
endforeach()
