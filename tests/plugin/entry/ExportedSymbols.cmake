# Looks at the plug-in's symbol table: it exports its one entry and nothing else, and of the driver it uses no
# more than the nine functions that every driver has. Run with -DNM=... -DLIBRARY=...

include("${CMAKE_CURRENT_LIST_DIR}/../../support/LibrarySymbols.cmake")

symbols(exported --defined-only)
if(NOT exported STREQUAL "__getExtensionInfo")
  message(FATAL_ERROR "exported: ${exported}\nexpected: __getExtensionInfo")
endif()

symbols(used --undefined-only)
list(FILTER used INCLUDE REGEX "^brenmor_")
if(used STREQUAL "")
  message(FATAL_ERROR "the plug-in uses no driver")
endif()
list(REMOVE_ITEM used ${driver})
if(NOT used STREQUAL "")
  message(FATAL_ERROR "used beyond the driver's nine functions: ${used}")
endif()
