# MinGW-w64 cross builds for Windows, included by the toolchain file of each
# processor after it has set TAV_MINGW_TRIPLE.
set(CMAKE_SYSTEM_NAME Windows)

# The posix thread flavour: std::thread, std::mutex and futures need it with gcc 12.
set(CMAKE_C_COMPILER ${TAV_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TAV_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${TAV_MINGW_TRIPLE}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${TAV_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The C++ runtime, libgcc and the thread library linked in: the binaries need
# only the system's DLLs, here and under wine.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
