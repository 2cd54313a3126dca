# 64-bit Windows, whose programs wine64 runs on these machines.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(TAV_MINGW_TRIPLE x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)

find_program(TAV_WINE64 wine64 PATHS /usr/lib/wine)
find_program(TAV_WINESERVER NAMES wineserver64 wineserver PATHS /usr/lib/wine)
if(TAV_WINE64)
    # Tests run under wine64 in a prefix of the build's own, headless and quiet.
    set(CMAKE_CROSSCOMPILING_EMULATOR
        ${CMAKE_COMMAND} -E env WINEPREFIX=${CMAKE_BINARY_DIR}/wine WINEDEBUG=-all DISPLAY= ${TAV_WINE64})
endif()
