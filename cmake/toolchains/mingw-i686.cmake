# The platform's own target: 32-bit Windows.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(TAV_MINGW_TRIPLE i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
