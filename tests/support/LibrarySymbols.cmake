# What a library exports and uses, and what every driver exports. NM and LIBRARY are set by who includes this.

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
