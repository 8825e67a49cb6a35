# How the tests of a room are built and made known to CTest.
include_guard(GLOBAL)
include(GoogleTest)

# add_room_test(NAME SOURCE... [POSIX SOURCE...] [WINDOWS SOURCE...] LIBRARIES LIBRARY...
#               [SCREEN] [PARTS N] [PROPERTIES PROPERTY VALUE...])
#   POSIX, WINDOWS  sources for one kind of system alone
#   LIBRARIES       what the program links, besides GoogleTest and a main function
#   SCREEN          the program shows real windows: each process gets a screen and a window manager of its own. On
#                   Windows there is one screen, mouse and keyboard for all, so these programs run one after another.
#   PARTS           how many processes share the tests, where a process runs more than one (see below); 1 if absent
#   PROPERTIES      of each test, as for set_tests_properties
#
# CTest runs each test in a process of its own. Under sanitizers and under Wine, where starting a process takes longer
# than most tests do, it runs whole programs; GTEST_FILTER in the environment chooses among their tests.
function(add_room_test name)
  cmake_parse_arguments(PARSE_ARGV 1 room "SCREEN" "PARTS" "POSIX;WINDOWS;LIBRARIES;PROPERTIES")
  if(WIN32)
    set(system_sources ${room_WINDOWS})
  else()
    set(system_sources ${room_POSIX})
  endif()
  if(room_SCREEN)
    set(main widget_test_main)
    set(headers window_test_headers)
  else()
    set(main GTest::gmock_main)
    set(headers test_headers)
  endif()
  if("toolkit" IN_LIST room_LIBRARIES)
    set(headers window_test_headers)
  endif()

  add_executable(${name} ${room_UNPARSED_ARGUMENTS} ${system_sources})
  target_link_libraries(${name} PRIVATE ${room_LIBRARIES} ${main})
  target_precompile_headers(${name} REUSE_FROM ${headers})
  if(room_SCREEN AND NOT WIN32)
    set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR "${PROJECT_SOURCE_DIR}/tests/support/xvfb")
  endif()

  if(NOT WIN32 AND NOT SHORTTEST_SANITIZE)
    gtest_discover_tests(${name} NO_PRETTY_VALUES DISCOVERY_MODE PRE_TEST PROPERTIES ${room_PROPERTIES})
    return()
  endif()
  if(NOT room_PARTS)
    set(room_PARTS 1)
  endif()
  if(room_SCREEN)
    list(PREPEND room_PROPERTIES COST 100)
    if(WIN32)
      list(PREPEND room_PROPERTIES RESOURCE_LOCK screen)
    endif()
  endif()
  math(EXPR last "${room_PARTS} - 1")
  foreach(part RANGE ${last})
    set(test ${name}.${part})
    if(room_PARTS EQUAL 1)
      set(test ${name})
    endif()
    add_test(NAME ${test} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${test} PROPERTIES TIMEOUT 600 ${room_PROPERTIES}
      ENVIRONMENT_MODIFICATION "GTEST_TOTAL_SHARDS=set:${room_PARTS};GTEST_SHARD_INDEX=set:${part}")
  endforeach()
endfunction()

# add_test_driver(NAME FOLDER SOURCE...): a driver library of the name that programs load, in a folder of its own, so that
# a test chooses it by the folder.
function(add_test_driver name folder)
  add_library(${name} SHARED ${ARGN})
  set_target_properties(${name} PROPERTIES
    OUTPUT_NAME BrenmorHWDevice LIBRARY_OUTPUT_DIRECTORY "${folder}" RUNTIME_OUTPUT_DIRECTORY "${folder}")
  if(WIN32)
    set_target_properties(${name} PROPERTIES PREFIX "")
  endif()
  target_compile_definitions(${name} PRIVATE BRENMOR_BUILDING_DRIVER)
  target_link_libraries(${name} PRIVATE contracts)
endfunction()

# Every header that others compile against compiles alone: one source a header that includes it first and twice.
function(add_header_checks name pattern)
  file(GLOB headers CONFIGURE_DEPENDS RELATIVE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/${pattern}")
  set(sources)
  foreach(header IN LISTS headers)
    string(MAKE_C_IDENTIFIER "${header}" file)
    set(source "${CMAKE_CURRENT_BINARY_DIR}/${file}.cpp")
    file(CONFIGURE OUTPUT "${source}" CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
    list(APPEND sources "${source}")
  endforeach()
  add_library(${name} OBJECT ${sources})
  target_link_libraries(${name} PRIVATE contracts)
endfunction()
