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
add_test_driver(stuck_driver "${stuck}" stuck/StuckDriver.cpp)
add_room_test(kxselftest_stuck_test SelfTestStuckTest.cpp
  LIBRARIES test_process)
target_compile_definitions(kxselftest_stuck_test PRIVATE
  KXBENCH_PROGRAM="$<TARGET_FILE:kxbench>" STUCK_DRIVER_FOLDER="${stuck}")
add_dependencies(kxselftest_stuck_test kxbench kxselftest stuck_driver)
