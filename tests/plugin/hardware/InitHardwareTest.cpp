#include "plugin/hardware/Bus.h"
#include "tests/support/Bench.h"

namespace shorttest::testkit {
namespace {

// Taken when the program is loaded, before any test has run.
const std::int32_t channelCountAtLoad = HWChannelCount;

class InitHardwareTest : public Bench {
 protected:
  void SetUp() override { HWChannelCount = 7; }  // no count of any tester
};

const std::string begin = "clear\nbus 128 0 64\nbus 129 0 64\nprobe 1 2\n";

TEST_F(InitHardwareTest, TheChannelCountIsZeroBefore) { EXPECT_EQ(channelCountAtLoad, 0); }

TEST_F(InitHardwareTest, NoCardAnswersWithoutAnError) {
  driver.Cards(0);
  EXPECT_FALSE(InitHardware());
  EXPECT_EQ(HWChannelCount, 7);
  EXPECT_EQ(log.Text(), begin + "error?\n");
}

TEST_F(InitHardwareTest, NoCardAnswersWithAnError) {
  driver.Cards(0);
  driver.MissingCardError("bus without cards");
  EXPECT_EQ(HardwareErrorOf([] { InitHardware(); }), "bus without cards");
  EXPECT_EQ(HWChannelCount, 7);
  EXPECT_EQ(log.Text(), begin + ErrorTaken());
}

TEST_F(InitHardwareTest, AnErrorFromBeforeIsCleared) {
  driver.Cards(0);
  driver.PendingError("old");
  EXPECT_FALSE(InitHardware());
  EXPECT_FALSE(driver.HasPendingError());
}

TEST_F(InitHardwareTest, AFailedLineResetIsRaisedWhenTheFirstProbeFailsToo) {
  driver.Cards(0);
  driver.FailAt(1, "line 0 dead");
  EXPECT_EQ(HardwareErrorOf([] { InitHardware(); }), "line 0 dead");
}

struct Fitted {
  const char* name;
  int cards;
  const char* probes;
};

class FittedCards : public InitHardwareTest, public ::testing::WithParamInterface<Fitted> {};

TEST_P(FittedCards, AreCounted) {
  driver.Cards(GetParam().cards);
  driver.MissingCardError("no such card");
  EXPECT_TRUE(InitHardware());
  EXPECT_EQ(HWChannelCount, 48 * GetParam().cards);
  EXPECT_EQ(log.Text(), begin + GetParam().probes);
  EXPECT_FALSE(driver.HasPendingError());
}

INSTANTIATE_TEST_SUITE_P(
    OneToFive, FittedCards,
    ::testing::Values(Fitted{"One", 1, "probe 96 2\nclear\n"},
                      Fitted{"Two", 2, "probe 96 2\nprobe 144 2\nclear\n"},
                      Fitted{"Three", 3, "probe 96 2\nprobe 144 2\nprobe 192 2\nclear\n"},
                      // Cleared for the failed probe, and once more after the last one.
                      Fitted{"Four", 4, "probe 96 2\nprobe 144 2\nprobe 192 2\nprobe 240 2\nclear\nclear\n"},
                      Fitted{"Five", 5, "probe 96 2\nprobe 144 2\nprobe 192 2\nprobe 240 2\nclear\n"}),
    [](const auto& row) { return row.param.name; });

TEST_F(InitHardwareTest, ACardTakenOutLowersTheCount) {
  driver.Cards(5);
  ASSERT_TRUE(InitHardware());
  driver.Cards(2);
  ASSERT_TRUE(InitHardware());
  EXPECT_EQ(HWChannelCount, 96);
}

TEST_F(InitHardwareTest, AnErrorBesideASuccessfulLastProbeIsDiscarded) {
  driver.Cards(5);
  driver.FailAt(2, "line 1 stumbled");  // a reset write; nothing looks at it while probes answer
  EXPECT_TRUE(InitHardware());
  EXPECT_FALSE(driver.HasPendingError());
  EXPECT_EQ(log.Count("error?"), 0);
}

}  // namespace
}  // namespace shorttest::testkit
