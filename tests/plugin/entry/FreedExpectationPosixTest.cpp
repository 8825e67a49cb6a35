// What a run takes it gives back. Told by counting what is allocated, which works where all libraries of a
// process allocate through the program; on Windows each DLL has an operator new of its own.
#include <gmock/gmock.h>

#include <stdexcept>

#include "simulator/SimulatedTester.h"
#include "tests/plugin/entry/LoadedPlugin.h"
#include "tests/support/Allocations.h"

namespace shorttest::testkit {
namespace {

class FreedExpectation : public PluginTest {};

TEST_F(FreedExpectation, WhenTheCheckThrows) {
  const std::unique_ptr<TKXFuncRunEdit> command = MakeCommand();
  const std::string file = ExpectationFile("good.ini", true);
  const auto failedRun = [&] {
    brenmor_sim_load_text("wire 1 2 0.5\n");
    brenmor_sim_fail_call(30, "relay card 1 is gone");
    EXPECT_THROW(Run(*command, file), std::runtime_error);
    log.Clear();
  };
  failedRun();  // leaves what is made once
  const std::ptrdiff_t before = LiveAllocations();
  failedRun();
  EXPECT_EQ(LiveAllocations(), before);
}

}  // namespace
}  // namespace shorttest::testkit
