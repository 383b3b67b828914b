# Cross-build for 64-bit Windows with Debian's MinGW-w64 compilers. The posix
# thread model is the one with std::mutex, which GoogleTest needs. Programs
# link statically, so they and the DLL run under Wine without MinGW's DLLs,
# and every add_test runs through Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(VANTREL_MINGW_TRIPLET x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${VANTREL_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VANTREL_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${VANTREL_MINGW_TRIPLET}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${VANTREL_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static -static-libgcc -static-libstdc++")

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine.sh run)
