# The tester's self-test: a module of its own, because it needs the driver library.
add_library(kxselftest_parts STATIC
  SelfTestDefects.cpp
  SelfTestReadings.cpp
  SelfTestRelays.cpp
  SelfTestRun.cpp
  SelfTestVoltages.cpp
  SelfTestWays.cpp)
target_link_libraries(kxselftest_parts PUBLIC hardware data contracts)

add_library(kxselftest MODULE SelfTestEntry.cpp)
# The same search as the plug-in's: LD_LIBRARY_PATH, beside the program, the simulated tester below it.
set_target_properties(kxselftest PROPERTIES BUILD_RPATH "$ORIGIN;$ORIGIN/simulator")
target_link_libraries(kxselftest PRIVATE kxselftest_parts hardware data contracts BrenmorHWDevice)
leave_no_symbol_open(kxselftest)
if(WIN32)
  set_target_properties(kxselftest PROPERTIES PREFIX "")
endif()
