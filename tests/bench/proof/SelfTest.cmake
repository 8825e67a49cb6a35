add_room_test(kxselftest_test
  SelfTestExactnessTest.cpp
  SelfTestSimulatedTest.cpp
  "${PROJECT_SOURCE_DIR}/bench/proof/SelfTestEntry.cpp"
  LIBRARIES kxselftest_parts hardware data BrenmorHWDevice
  PROPERTIES COST 50)

# On a driver that logs its calls.
add_room_test(kxselftest_calls_test
  SelfTestCallsTest.cpp
  "${PROJECT_SOURCE_DIR}/bench/proof/SelfTestEntry.cpp"
  LIBRARIES kxselftest_parts hardware data test_fake_driver)

# The real program with the real module and the simulated tester.
add_room_test(kxselftest_process_test SelfTestProcessTest.cpp
  LIBRARIES test_process)
target_compile_definitions(kxselftest_process_test PRIVATE KXBENCH_PROGRAM="$<TARGET_FILE:kxbench>")
add_dependencies(kxselftest_process_test kxbench kxselftest BrenmorHWDevice)

# The same with a driver that is no simulated tester, whose relays are stuck.
set(stuck "${CMAKE_CURRENT_BINARY_DIR}/stuck")
add_library(stuck_driver SHARED stuck/StuckDriver.cpp)
set_target_properties(stuck_driver PROPERTIES
  OUTPUT_NAME BrenmorHWDevice LIBRARY_OUTPUT_DIRECTORY "${stuck}" RUNTIME_OUTPUT_DIRECTORY "${stuck}")
target_compile_definitions(stuck_driver PRIVATE BRENMOR_BUILDING_DRIVER)
target_link_libraries(stuck_driver PRIVATE contracts)
if(WIN32)
  set_target_properties(stuck_driver PROPERTIES PREFIX "")
endif()
add_room_test(kxselftest_stuck_test SelfTestStuckTest.cpp
  LIBRARIES test_process)
target_compile_definitions(kxselftest_stuck_test PRIVATE
  KXBENCH_PROGRAM="$<TARGET_FILE:kxbench>" STUCK_DRIVER_FOLDER="${stuck}")
add_dependencies(kxselftest_stuck_test kxbench kxselftest stuck_driver)
