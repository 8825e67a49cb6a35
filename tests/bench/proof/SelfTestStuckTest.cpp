#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/bench/RowName.h"
#include "tests/bench/program/DriverFolder.h"
#include "tests/bench/program/Process.h"
#include "tests/bench/program/TemporaryFolder.h"

/// `kxbench selftest` with its real module on a driver library that is not the simulated tester.

namespace {

struct StuckRow {
  const char* name;
  const char* tester;    // in the words of stuck/StuckDriver.cpp
  const char* channels;  // of the self-test; none for all
  const char* report;    // past its first line
};

constexpr char EitherNeverCloses[] =
    ": the one on line 0 or the one on line 1 never closes, or neither does\n";

class StuckTester : public testing::Test {
 protected:
  ProcessResult SelfTest(const std::string& tester, const std::string& channels) const {
    Process process;
    process.program = KXBENCH_PROGRAM;
    process.arguments = {"selftest", "--progress", "none"};
    if (!channels.empty()) process.arguments.insert(process.arguments.end(), {"--channels", channels});
    process.folder = folder_.Path().string();
    process.environment["STUCK_TESTER"] = tester;
    process.environment["STUCK_LOG"] = (folder_.Path() / "log").string();
    UseDriverIn(STUCK_DRIVER_FOLDER, process);
    return process.Run();
  }

  TemporaryFolder folder_;
};

class SelfTestStuck : public StuckTester, public testing::WithParamInterface<StuckRow> {};

TEST_P(SelfTestStuck, IsNamed) {
  const StuckRow& row = GetParam();
  const ProcessResult result = SelfTest(row.tester, row.channels);
  EXPECT_EQ(result.errors, "");
  EXPECT_EQ(result.output.substr(result.output.find("\n\n") + 2), row.report);
  EXPECT_EQ(result.status, result.output.ends_with("no defects\n") ? 0 : 1);
  EXPECT_EQ(folder_.Read("log"), "closed 0\n");
}

const std::string OneNeverCloses =
    std::string("  card 2, channel 60, relay 12") + EitherNeverCloses + "\nFAIL: 1 defect\n";

INSTANTIATE_TEST_SUITE_P(
    , SelfTestStuck,
    testing::Values(
        StuckRow{"Nothing", "", "43-54", "no defects\n"},
        StuckRow{"NothingOnFiveCards", "cards 1 2 3 4 5", "190-195", "no defects\n"},
        StuckRow{"NeverClosesOnLine0", "open 60 0", "57-61", OneNeverCloses.c_str()},
        StuckRow{"NeverClosesOnLine1", "open 60 1", "57-61", OneNeverCloses.c_str()},
        StuckRow{"NeverOpensOnLine0", "closed 1 0", "1-4",
                 "  card 1, channel 1, relay 1 on line 0: never opens\n\nFAIL: 1 defect\n"},
        StuckRow{"NeverOpensOnLine1", "closed 96 1", "94-96",
                 "  card 2, channel 96, relay 48 on line 1: never opens\n\nFAIL: 1 defect\n"},
        StuckRow{"SeveralRelays", "closed 45 0;closed 52 1;open 53 1", "44-54",
                 "  card 1, channel 45, relay 45 on line 0: never opens\n"
                 "  card 2, channel 52, relay 4 on line 1: never opens\n"
                 "  card 2, channel 53, relay 5: the one on line 0 or the one on line 1 never closes, or "
                 "neither does\n\nFAIL: 3 defects\n"},
        StuckRow{"BothRelaysOfAChannel", "closed 5 0;closed 5 1", "4-8",
                 "  card 1: line 0 and line 1 are connected with every relay open: a relay on either never "
                 "opens. The channels of this card were not tested\n\nFAIL: 1 defect\n"},
        StuckRow{"AMissingCard", "cards 1 3;closed 98 0", "47-98",
                 "  card 2: does not answer\n"
                 "  card 3, channel 98, relay 2 on line 0: never opens\n\nFAIL: 2 defects\n"},
        StuckRow{"TheFirstCardMissing", "cards 2", "47-52", "  card 1: does not answer\n\nFAIL: 1 defect\n"},
        StuckRow{"TheLastCardMissing", "cards 1", "46-50", "  card 2: does not answer\n\nFAIL: 1 defect\n"},
        StuckRow{"AFixtureThatIsNotEmpty", "wire 47 50", "46-51",
                 "  card 1, channel 47: not empty, connected to another channel\n"
                 "  card 2, channel 50: not empty, connected to another channel\n\nFAIL: 2 defects\n"},
        StuckRow{"AWireBetweenDefectsOfTwoCards", "wire 47 50;open 47 0;open 50 0", "46-51",
                 "  card 1, channel 47, relay 47 on line 0: never closes\n"
                 "  card 1, channel 47: not empty, connected to another channel\n"
                 "  card 2, channel 50, relay 2 on line 0: never closes\n"
                 "  card 2, channel 50: not empty, connected to another channel\n\nFAIL: 4 defects\n"},
        StuckRow{"ALiveFixture", "volts 47 24;closed 45 1", "45-50",
                 "  card 1, channel 47: carries a voltage (24 V)\n\n"
                 "The fixture is live: no relay was tested.\nFAIL: 1 defect\n"},
        StuckRow{"ALiveFixtureBelowGround", "volts 50 -5", "47-51",
                 "  card 2, channel 50: carries a voltage (-5 V)\n\n"
                 "The fixture is live: no relay was tested.\nFAIL: 1 defect\n"}),
    RowName<StuckRow>);

TEST_F(StuckTester, WithoutACardCannotRun) {
  const ProcessResult result = SelfTest("cards", "");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "kxbench: selftest: no answer\n");
}

}  // namespace
