#include <cstdint>
#include <limits>
#include <stdexcept>

#include "plugin/hardware/Bus.h"
#include "tests/support/Bench.h"

namespace shorttest::testkit {
namespace {

class CardSetUp : public Bench {};

TEST_F(CardSetUp, ResetHardwareClearsTheErrorAndResetsTheFirstCard) {
  driver.PendingError("from before");
  ResetHardware();
  EXPECT_EQ(log.Text(), "clear\nbus 128 0 64\nbus 129 0 64\nerror?\n");
  EXPECT_FALSE(driver.HasPendingError());
}

TEST_F(CardSetUp, ResetHardwareThrowsWhatItsOwnWritesLeave) {
  driver.FailAt(2, "bus fault");
  EXPECT_EQ(HardwareErrorOf([] { ResetHardware(); }), "bus fault");
  EXPECT_EQ(log.Text(), "clear\nbus 128 0 64\nbus 129 0 64\n" + ErrorTaken());
}

TEST_F(CardSetUp, PreparingOneCardAfterAReset) {
  PrepareCards(TShortTestData(1, 48), true);
  EXPECT_EQ(log.Text(),
            "bus 128 0 64\nbus 128 0 176\nbus 128 0 178\n"
            "bus 129 0 64\nbus 129 0 177\nbus 129 0 179\nerror?\n");
}

TEST_F(CardSetUp, PreparingTwoCardsAfterAReset) {
  PrepareCards(TShortTestData(49, 49), true);  // the second card alone is used, but both are prepared
  EXPECT_EQ(log.Text(),
            "bus 128 0 64\nbus 128 0 176\nbus 128 0 178\n"
            "bus 129 0 64\nbus 129 0 177\nbus 129 0 179\nerror?\n"
            "bus 130 0 64\nbus 130 0 176\nbus 130 0 178\n"
            "bus 131 0 64\nbus 131 0 177\nbus 131 0 179\nerror?\n");
}

TEST_F(CardSetUp, PreparingWithoutAResetKeepsChannelsClosed) {
  ConnectChannel(5, 1);
  ConnectChannel(60, 0);
  log.Clear();
  PrepareCards(TShortTestData(1, 96), false);
  EXPECT_EQ(log.Text(),
            "bus 128 0 176\nbus 128 0 178\nbus 129 0 177\nbus 129 0 179\nerror?\n"
            "bus 130 0 176\nbus 130 0 178\nbus 131 0 177\nbus 131 0 179\nerror?\n");
  EXPECT_TRUE(driver.Closed(5, 1));
  EXPECT_TRUE(driver.Closed(60, 0));
  EXPECT_TRUE(driver.AuxiliaryClosed(1, 1, 51));
}

TEST_F(CardSetUp, FiveCardsAreAllPrepared) {
  PrepareCards(TShortTestData(200, 240), true);
  EXPECT_EQ(log.Text(), PrepareAfterReset(5));
}

TEST_F(CardSetUp, PreparingStopsAtTheCardThatFails) {
  driver.FailAt(9, "card 2");  // the third write to the second card
  EXPECT_EQ(HardwareErrorOf([] { PrepareCards(TShortTestData(1, 144), true); }), "card 2");
  EXPECT_EQ(log.Count("bus"), 12);
  EXPECT_EQ(log.Count("error?"), 2);
}

TEST_F(CardSetUp, ReleasingOpensEveryRelayOfTheCardsInUse) {
  PrepareCards(TShortTestData(1, 144), true);
  for (const int channel : {1, 48, 49, 96, 97, 144}) ConnectChannel(channel, channel % 2);
  ASSERT_FALSE(driver.AllRelaysOpen());
  log.Clear();
  ReleaseAllLines(TShortTestData(1, 144));
  EXPECT_EQ(log.Text(),
            "bus 128 0 64\nbus 129 0 64\nbus 130 0 64\nbus 131 0 64\nbus 132 0 64\nbus 133 0 64\n");
  EXPECT_TRUE(driver.AllRelaysOpen());
}

TEST_F(CardSetUp, ReleasingNeverAsksForErrors) {
  driver.FailFrom(1, "everything fails");
  ReleaseAllLines(TShortTestData(1, 96));
  EXPECT_EQ(log.Text(), "bus 128 0 64\nbus 129 0 64\nbus 130 0 64\nbus 131 0 64\n");
  EXPECT_TRUE(driver.HasPendingError());
}

// --- channel numbers that only a damaged file can hold ---

TEST_F(CardSetUp, ARangeBeyondTheBusIsRefusedBeforeAnyCall) {
  const TShortTestData data(2'000'000'000, 2'000'000'001);
  EXPECT_THROW(PrepareCards(data, true), std::out_of_range);
  EXPECT_THROW(PrepareCards(data, false), std::out_of_range);
  EXPECT_EQ(log.Text(), "");
}

TEST_F(CardSetUp, ReleasingARangeBeyondTheBusEndsWithTheLastAddress) {
  ReleaseAllLines(TShortTestData(2'000'000'000, 2'000'000'001));
  EXPECT_EQ(log.Text(), ReleaseAll(64));
  EXPECT_TRUE(log.Text().ends_with("bus 255 0 64\n"));
}

TEST_F(CardSetUp, EveryCardThatTheBusCanAddressIsUsed) {
  const TShortTestData data(64 * 48, 64 * 48);
  PrepareCards(data, true);
  ReleaseAllLines(data);
  EXPECT_EQ(log.Text(), PrepareAfterReset(64) + ReleaseAll(64));
  EXPECT_THROW(PrepareCards(TShortTestData(64 * 48 + 1, 64 * 48 + 1), true), std::out_of_range);
}

// No card has them: nothing is set up or reset, and what they put on the bus names no relay.
TEST_F(CardSetUp, NegativeChannelsReachTheBusAsTheyAre) {
  ConnectChannel(-60, 1);
  ReleaseChannel(-60, 1);
  PrepareCards(TShortTestData(-60, -50), true);
  ReleaseAllLines(TShortTestData(-60, -50));
  EXPECT_EQ(log.Text(), Bus(129, -61) + "error?\n" + Bus(129, -61) + "error?\nwait 1000 us\n");
}

TEST_F(CardSetUp, TheLowestChannelNumberDoesNotOverflow) {
  ConnectChannel(std::numeric_limits<std::int32_t>::min(), 0);
  EXPECT_EQ(log.Count("bus 128 0 "), 1);
}

struct CardsOfRange {
  const char* name;
  int bis;
  int cards;
};

class CardsInUse : public Bench, public ::testing::WithParamInterface<CardsOfRange> {};

TEST_P(CardsInUse, AreThoseThatReachTheLastChannel) {
  const TShortTestData data(1, GetParam().bis);
  PrepareCards(data, true);
  ReleaseAllLines(data);
  EXPECT_EQ(log.Text(), PrepareAfterReset(GetParam().cards) + ReleaseAll(GetParam().cards));
}

INSTANTIATE_TEST_SUITE_P(Ranges, CardsInUse,
                         ::testing::Values(CardsOfRange{"Channel1", 1, 1}, CardsOfRange{"Channel48", 48, 1},
                                           CardsOfRange{"Channel49", 49, 2}, CardsOfRange{"Channel96", 96, 2},
                                           CardsOfRange{"Channel97", 97, 3},
                                           CardsOfRange{"Channel240", 240, 5}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace shorttest::testkit
