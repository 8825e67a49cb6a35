cmake_minimum_required(VERSION 3.25)

# Reads the export and import tables of a DLL or program and compares them with what they must be.
#   OBJDUMP  the objdump that reads them
#   FILE     the DLL or program
#   EXPORTS  its exports, exactly, separated by commas; "any" when they do not matter
#   IMPORTS  the DLLs it needs besides those of the system, exactly, separated by commas
#   STACK    the bytes it reserves for its main thread's stack; empty when that does not matter

execute_process(COMMAND "${OBJDUMP}" -p "${FILE}" OUTPUT_VARIABLE tables COMMAND_ERROR_IS_FATAL ANY)

set(systemDlls
  advapi32.dll comctl32.dll comdlg32.dll gdi32.dll kernel32.dll msvcrt.dll ole32.dll oleacc.dll oleaut32.dll
  rpcrt4.dll shell32.dll shlwapi.dll user32.dll uxtheme.dll version.dll)
string(REPLACE "," ";" allowed "${IMPORTS}")
string(TOLOWER "${allowed}" allowed)

string(REGEX MATCHALL "DLL Name: [^\n]+" needed "${tables}")
if(NOT needed)
  message(FATAL_ERROR "no import table found in ${FILE}")
endif()
foreach(line IN LISTS needed)
  string(REGEX REPLACE "DLL Name: *([^ \r]+).*" "\\1" dll "${line}")
  string(TOLOWER "${dll}" dll)
  if(NOT dll IN_LIST systemDlls AND NOT dll IN_LIST allowed)
    message(SEND_ERROR "${FILE} needs ${dll}")
  endif()
  list(REMOVE_ITEM allowed "${dll}")
endforeach()
if(allowed)
  message(SEND_ERROR "${FILE} was expected to need ${allowed}")
endif()

if(NOT EXPORTS STREQUAL "any")
  string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table\r?\n.*" names "${tables}")
  string(REGEX REPLACE "\n\r?\n.*" "" names "${names}")
  string(REGEX MATCHALL "\\[ *[0-9]+\\] [^\r\n]+" names "${names}")
  list(TRANSFORM names REPLACE "\\[ *[0-9]+\\] *([^ ]+).*" "\\1")
  list(SORT names)
  string(REPLACE "," ";" expected "${EXPORTS}")
  list(SORT expected)
  if(NOT names STREQUAL expected)
    message(SEND_ERROR "${FILE} exports ${names} instead of ${expected}")
  endif()
endif()

if(STACK)
  math(EXPR expected "${STACK}" OUTPUT_FORMAT HEXADECIMAL)
  string(REGEX MATCH "SizeOfStackReserve[\t ]+0*([0-9a-f]+)" line "${tables}")
  if(NOT "0x${CMAKE_MATCH_1}" STREQUAL expected)
    message(SEND_ERROR "${FILE} reserves 0x${CMAKE_MATCH_1} bytes of stack instead of ${expected}")
  endif()
endif()
