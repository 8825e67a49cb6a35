#include <tuple>

#include "plugin/hardware/Bus.h"
#include "tests/support/Bench.h"

namespace shorttest::testkit {
namespace {

// --- switching channels ---

struct Place {
  const char* name;
  int channel;
  int line;
  int address;
  int relay;
};

class ChannelPlace : public Bench, public ::testing::WithParamInterface<Place> {};

TEST_P(ChannelPlace, IsClosedByOneWriteAndNoWait) {
  ConnectChannel(GetParam().channel, GetParam().line);
  EXPECT_EQ(log.Text(), Bus(GetParam().address, GetParam().relay + 128) + "error?\n");
}

TEST_P(ChannelPlace, IsOpenedByOneWriteAndAMillisecond) {
  ReleaseChannel(GetParam().channel, GetParam().line);
  EXPECT_EQ(log.Text(), Bus(GetParam().address, GetParam().relay) + "error?\nwait 1000 us\n");
}

INSTANTIATE_TEST_SUITE_P(
    Cards, ChannelPlace,
    ::testing::Values(Place{"FirstChannelLine0", 1, 0, 128, 0}, Place{"FirstChannelLine1", 1, 1, 129, 0},
                      Place{"LastOfCard1Line0", 48, 0, 128, 47}, Place{"LastOfCard1Line1", 48, 1, 129, 47},
                      Place{"FirstOfCard2Line0", 49, 0, 130, 0}, Place{"FirstOfCard2Line1", 49, 1, 131, 0},
                      Place{"LastOfCard2Line0", 96, 0, 130, 47}, Place{"FirstOfCard3Line1", 97, 1, 133, 0},
                      Place{"LastOfCard3Line0", 144, 0, 132, 47}, Place{"FirstOfCard4Line0", 145, 0, 134, 0},
                      Place{"LastOfCard4Line1", 192, 1, 135, 47}, Place{"FirstOfCard5Line0", 193, 0, 136, 0},
                      Place{"LastOfAllLine0", 240, 0, 136, 47}, Place{"LastOfAllLine1", 240, 1, 137, 47}),
    [](const auto& row) { return row.param.name; });

class BusTest : public Bench {};

TEST_F(BusTest, EveryChannelHasItsOwnRelay) {
  std::string expected;
  for (int channel = 1; channel <= 240; ++channel) {
    for (int line = 0; line <= 1; ++line) {
      ConnectChannel(channel, line);
      ReleaseChannel(channel, line);
      const int address = 128 + 2 * ((channel - 1) / 48) + line;
      const int relay = (channel - 1) % 48;
      expected += Bus(address, relay + 128) + "error?\n" + Bus(address, relay) + "error?\nwait 1000 us\n";
    }
  }
  EXPECT_EQ(log.Text(), expected);
}

TEST_F(BusTest, AFailedCloseRaisesTheDriversText) {
  driver.FailAt(1, "relay card silent");
  EXPECT_EQ(HardwareErrorOf([] { ConnectChannel(3, 0); }), "relay card silent");
  EXPECT_EQ(log.Text(), Bus(128, 130) + ErrorTaken());
}

TEST_F(BusTest, AFailedOpenRaisesWithoutWaiting) {
  driver.FailAt(1, "relay card silent");
  EXPECT_EQ(HardwareErrorOf([] { ReleaseChannel(3, 1); }), "relay card silent");
  EXPECT_EQ(log.Text(), Bus(129, 2) + ErrorTaken());
}

// --- pending errors ---

TEST_F(BusTest, NoPendingErrorIsOnlyAskedFor) {
  CheckHWError();
  EXPECT_EQ(log.Text(), "error?\n");
}

TEST_F(BusTest, APendingErrorIsRaisedWithItsTextAndTheTextFreed) {
  driver.PendingError("short on line 1");
  EXPECT_EQ(HardwareErrorOf([] { CheckHWError(); }), "short on line 1");
  EXPECT_EQ(log.Text(), "error?\ntext\nfree\n");
}

TEST_F(BusTest, CheckingDoesNotClearTheError) {
  driver.PendingError("stays");
  EXPECT_EQ(HardwareErrorOf([] { CheckHWError(); }), "stays");
  EXPECT_EQ(HardwareErrorOf([] { CheckHWError(); }), "stays");
  EXPECT_TRUE(driver.HasPendingError());
}

TEST_F(BusTest, AnOldErrorMakesTheNextRoutineRaiseThoughItsOwnWriteSucceeds) {
  driver.PendingError("old");
  EXPECT_EQ(HardwareErrorOf([] { ConnectChannel(7, 1); }), "old");
  EXPECT_TRUE(driver.Closed(7, 1));
  EXPECT_EQ(HardwareErrorOf([] { ReleaseChannel(7, 1); }), "old");
  ResetHardware();
  EXPECT_EQ(HardwareErrorOf([] { ConnectChannel(7, 1); }), "");
}

// --- the terminating resistor ---

TShortTestData DataWithTermination(int card, int relay) {
  TShortTestData data(1, 4);
  data.LastRelaisKarte = card;
  data.LastRelais = relay;
  return data;
}

TEST_F(BusTest, TheTerminatingRelayIsNumberedFromZeroAtTheDriver) {
  SwitchTerminationOn(DataWithTermination(2, 5));
  EXPECT_EQ(log.Text(), "relay 1 4 1\nerror?\n");
  EXPECT_TRUE(driver.TerminationOn(1, 4));
}

TEST_F(BusTest, TheTerminatingRelayIsSwitchedOffWithoutLookingAtErrors) {
  driver.PendingError("not now");
  SwitchTerminationOff(DataWithTermination(2, 5));
  EXPECT_EQ(log.Text(), "relay 1 4 0\n");
}

TEST_F(BusTest, AFailedTerminationRaises) {
  driver.FailAt(1, "no such relay");
  EXPECT_EQ(HardwareErrorOf([] { SwitchTerminationOn(DataWithTermination(1, 1)); }), "no such relay");
}

class NoTermination : public Bench, public ::testing::WithParamInterface<std::tuple<int, int>> {};

TEST_P(NoTermination, IsNeverSwitched) {
  const auto [card, relay] = GetParam();
  SwitchTerminationOn(DataWithTermination(card, relay));
  SwitchTerminationOff(DataWithTermination(card, relay));
  EXPECT_EQ(log.Text(), "");
}

INSTANTIATE_TEST_SUITE_P(Numbers, NoTermination,
                         ::testing::Values(std::tuple(0, 0), std::tuple(0, 3), std::tuple(3, 0),
                                           std::tuple(-1, 3), std::tuple(3, -1), std::tuple(-1, -1)),
                         [](const auto& row) {
                           const auto text = [](int number) {
                             return number < 0 ? "Minus" + std::to_string(-number) : std::to_string(number);
                           };
                           return "Card" + text(std::get<0>(row.param)) + "Relay" +
                                  text(std::get<1>(row.param));
                         });

}  // namespace
}  // namespace shorttest::testkit
