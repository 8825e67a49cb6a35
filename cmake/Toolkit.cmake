# The target `toolkit`: what everything needs that compiles against wxWidgets. Its headers do not pass our
# warnings. Only the rooms that include this file can compile them.
include_guard(GLOBAL)

find_package(wxWidgets 3.2 REQUIRED COMPONENTS core base)

add_library(toolkit INTERFACE)
target_include_directories(toolkit SYSTEM INTERFACE ${wxWidgets_INCLUDE_DIRS})
target_compile_definitions(toolkit INTERFACE ${wxWidgets_DEFINITIONS})
target_compile_options(toolkit INTERFACE ${wxWidgets_CXX_FLAGS})
target_link_libraries(toolkit INTERFACE ${wxWidgets_LIBRARIES})

# Adds the tests of a program that shows real windows. Each process gets a screen and a window manager of its own; on
# Windows there is one screen, one mouse and one keyboard for all. Where a process runs more than one test, the tests of a
# slow program are shared out to several (second argument).
function(discover_window_tests test)
  if(NOT WIN32)
    set_target_properties(${test} PROPERTIES
      CROSSCOMPILING_EMULATOR "${PROJECT_SOURCE_DIR}/tests/support/xvfb")
  endif()
  if(NOT WIN32 AND NOT SHORTTEST_SANITIZE)
    gtest_discover_tests(${test} NO_PRETTY_VALUES DISCOVERY_MODE PRE_TEST)
    return()
  endif()
  set(parts 1)
  if(ARGC GREATER 1)
    set(parts ${ARGV1})
  endif()
  math(EXPR last "${parts} - 1")
  foreach(part RANGE ${last})
    add_test(NAME ${test}.${part} COMMAND ${test} --gtest_brief=1)
    set_tests_properties(${test}.${part} PROPERTIES COST 100
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${parts};GTEST_SHARD_INDEX=${part}")
    if(WIN32)
      set_tests_properties(${test}.${part} PROPERTIES RESOURCE_LOCK screen)
    endif()
  endforeach()
endfunction()
