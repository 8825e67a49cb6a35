# Looks at what the driver library exports: the nine functions of the driver, the control interface
# brenmor_sim_*, nothing else. Run with -DNM=... -DLIBRARY=...
include("${CMAKE_CURRENT_LIST_DIR}/../support/LibrarySymbols.cmake")

symbols(exported --defined-only)
list(FILTER exported EXCLUDE REGEX "^brenmor_sim_[a-z_]+$")
if(NOT exported STREQUAL driver)
  message(FATAL_ERROR "exported: ${exported}\nexpected: ${driver}")
endif()
