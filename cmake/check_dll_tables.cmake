# Reads a plug-in DLL's headers as the platform's loader does (objdump -p) and
# checks them: the expected file format, exactly one export, load_tav_leagues,
# undecorated (a cdecl export has no @N suffix), and imports from system DLLs
# only, the C++ runtime being linked in.
#   cmake -DOBJDUMP=... -DLIBRARY=... -DFORMAT=pei-i386 -P check_dll_tables.cmake
cmake_minimum_required(VERSION 3.25)
set(allowed_imports ADVAPI32.dll KERNEL32.dll msvcrt.dll)

execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE dump ERROR_VARIABLE errors RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${OBJDUMP} -p ${LIBRARY} failed: ${errors}")
endif()
set(failures "")

string(REGEX MATCH "file format ([^\n]*)" ignored "${dump}")
if(NOT CMAKE_MATCH_1 STREQUAL FORMAT)
    string(APPEND failures "file format: expected ${FORMAT}, found '${CMAKE_MATCH_1}'\n")
endif()

# The name table: "\t[   0] name" lines after its heading, up to the next blank line.
string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table\n([^\n]+\n)*" table "${dump}")
string(REGEX MATCHALL "\t\\[ *[0-9]+\\] [^\n]*" rows "${table}")
set(exports "")
foreach(row IN LISTS rows)
    string(REGEX REPLACE "^\t\\[ *[0-9]+\\] " "" name "${row}")
    list(APPEND exports "${name}")
endforeach()
if(NOT exports STREQUAL "load_tav_leagues")
    string(APPEND failures "exports: expected load_tav_leagues alone, found '${exports}'\n")
endif()

string(REGEX MATCHALL "DLL Name: [^\n]*" lines "${dump}")
set(imports "")
foreach(line IN LISTS lines)
    string(REPLACE "DLL Name: " "" name "${line}")
    list(APPEND imports "${name}")
endforeach()
if(NOT imports)
    string(APPEND failures "imports: none found\n")
endif()
foreach(name IN LISTS imports)
    if(NOT name IN_LIST allowed_imports)
        string(APPEND failures "imports: ${name} is not a system DLL (allowed: ${allowed_imports})\n")
    endif()
endforeach()

if(failures)
    message(FATAL_ERROR "${LIBRARY}:\n${failures}")
endif()
message(STATUS "${LIBRARY}: ${FORMAT}, exports ${exports}, imports ${imports}")
