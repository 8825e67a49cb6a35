# The target `toolkit`: what everything needs that compiles against wxWidgets. Its headers do not pass our
# warnings. Only the rooms that include this file can compile them.
include_guard(GLOBAL)

find_package(wxWidgets 3.2 REQUIRED COMPONENTS core base)

add_library(toolkit INTERFACE)
target_include_directories(toolkit SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
target_compile_definitions(toolkit INTERFACE ${wxWidgets_DEFINITIONS})
target_compile_options(toolkit INTERFACE ${wxWidgets_CXX_FLAGS})
target_link_libraries(toolkit INTERFACE ${wxWidgets_LIBRARIES})

# Tests with real windows get a screen and a window manager of their own. On Windows there is always one.
function(run_on_own_screen test)
  if(NOT WIN32)
    set_target_properties(${test} PROPERTIES
      CROSSCOMPILING_EMULATOR "${PROJECT_SOURCE_DIR}/tests/support/xvfb")
  endif()
endfunction()
