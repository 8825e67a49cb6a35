# Looks at what the driver library exports: the nine functions of the driver, the control interface
# brenmor_sim_*, nothing else. Run with -DNM=... -DLIBRARY=...
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

execute_process(COMMAND "${NM}" --dynamic --defined-only --format=posix "${LIBRARY}"
  OUTPUT_VARIABLE table COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${table}")
set(exported "")
foreach(line IN LISTS lines)
  string(REGEX REPLACE " .*" "" symbol "${line}")
  if(NOT symbol MATCHES "^brenmor_sim_[a-z_]+$")
    list(APPEND exported "${symbol}")
  endif()
endforeach()
list(SORT exported)
if(NOT exported STREQUAL driver)
  message(FATAL_ERROR "exported: ${exported}\nexpected: ${driver}")
endif()
