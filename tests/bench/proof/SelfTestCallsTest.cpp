// What the self-test asks of a driver, call by call.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/proof/SelfTestModule.h"
#include "tests/support/Bench.h"

namespace kxbench {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class SelfTestCalls : public shorttest::testkit::Bench {
 protected:
  SelfTestSummary Run(std::int32_t first, std::int32_t last) {
    driver.Cards(1);
    SelfTestRequest request;
    request.firstChannel = first;
    request.lastChannel = last;
    SelfTestSummary summary;
    kxSelfTest(request, summary);
    EXPECT_TRUE(driver.AllRelaysOpen());
    return summary;
  }

  std::string Without(std::string_view unwanted) {
    return log.Select(
        [unwanted](std::string_view line) { return !line.starts_with(unwanted) && line != "error?"; });
  }
};

TEST_F(SelfTestCalls, BeginWithTheCardsAndEndWithEveryRelayOpen) {
  EXPECT_EQ(Run(5, 5).end, SelfTestEnd::Tested);
  const std::string calls = Without("wait");
  EXPECT_THAT(calls, StartsWith("clear\nprobe 1 2\nprobe 96 2\n"));
  EXPECT_THAT(calls, HasSubstr("probe 240 2\n"));
  EXPECT_THAT(calls, EndsWith("bus 128 0 64\nbus 129 0 64\n"));
}

// Both relays closed, then each alone: relay 4 is that of channel 5.
TEST_F(SelfTestCalls, MeasureBothRelaysOfAChannelAndThenEach) {
  Run(5, 5);
  EXPECT_THAT(Without("wait"), HasSubstr("bus 128 0 132\n"
                                         "bus 129 0 132\n"
                                         "read 10 1 2\n"
                                         "bus 129 0 4\n"
                                         "read 10 4 2\n"
                                         "read 10 4 2\n"
                                         "bus 129 0 132\n"
                                         "bus 128 0 4\n"
                                         "read 10 4 2\n"
                                         "read 10 4 2\n"
                                         "bus 129 0 4\n"));
}

TEST_F(SelfTestCalls, ReadVoltagesBeforeAnyResistance) {
  Run(5, 6);
  const std::string readings = log.Select([](std::string_view line) { return line.starts_with("read"); });
  EXPECT_LT(readings.rfind("read 8 2 20"), readings.find("read 10"));
}

TEST_F(SelfTestCalls, ReadNoResistanceOnALiveFixture) {
  driver.Live(6, 12.0);
  const SelfTestSummary summary = Run(5, 6);
  ASSERT_FALSE(summary.defects.empty());
  EXPECT_EQ(summary.defects.front().kind, TesterDefectKind::Voltage);
  EXPECT_EQ(log.Count("read 10"), 0);
}

TEST_F(SelfTestCalls, WaitAfterEveryRelayThatOpens) {
  Run(5, 6);
  EXPECT_THAT(log.Text(), HasSubstr("bus 129 0 4\nerror?\nwait 1000 us\n"));
}

}  // namespace
}  // namespace kxbench
