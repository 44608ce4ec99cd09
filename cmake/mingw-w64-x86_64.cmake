# Cross-compiles for 64-bit Windows with Debian's mingw-w64. The posix flavour of the compiler
# brings std::thread; everything is linked statically so that the programs need no mingw DLLs
# beside them (under Wine as on Windows).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(mingw_prefix x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${mingw_prefix}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mingw_prefix}-g++-posix)
set(CMAKE_RC_COMPILER ${mingw_prefix}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${mingw_prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")

# Test programs run through Wine when CTest starts them.
find_program(TALLOWICK_WINE wine)
if(TALLOWICK_WINE)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${TALLOWICK_WINE})
endif()
