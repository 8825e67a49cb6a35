# Looks at the plug-in's symbol table: it exports its one entry and nothing else, and of the driver it uses no
# more than the nine functions that every driver has. Run with -DNM=... -DLIBRARY=...

# symbols(RESULT OPTION): names that nm lists with this option, sorted
function(symbols result option)
  execute_process(COMMAND "${NM}" --dynamic "${option}" --format=posix "${LIBRARY}"
    OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]+" lines "${table}")
  set(names "")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "[ @].*" "" name "${line}")
    list(APPEND names "${name}")
  endforeach()
  list(SORT names)
  set("${result}" "${names}" PARENT_SCOPE)
endfunction()

symbols(exported --defined-only)
if(NOT exported STREQUAL "__getExtensionInfo")
  message(FATAL_ERROR "exported: ${exported}\nexpected: __getExtensionInfo")
endif()

set(driver
  brenmor_adx_hw_generation
  brenmor_adx_read
  brenmor_bus_delete_error
  brenmor_bus_get_error
  brenmor_bus_get_error_msg
  brenmor_bus_write
  brenmor_free_mem
  brenmor_msu_write_relay
  brenmor_relay_set)
symbols(used --undefined-only)
list(FILTER used INCLUDE REGEX "^brenmor_")
if(used STREQUAL "")
  message(FATAL_ERROR "the plug-in uses no driver")
endif()
list(REMOVE_ITEM used ${driver})
if(NOT used STREQUAL "")
  message(FATAL_ERROR "used beyond the driver's nine functions: ${used}")
endif()
