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
