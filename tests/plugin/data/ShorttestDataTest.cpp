#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"

namespace data_test {
namespace {

using testing::Each;
using testing::ElementsAre;

TEST(ShorttestData, CreateFourChannels) {
  const TShortTestData data(1, 4);
  EXPECT_EQ(data.von, 1);
  EXPECT_EQ(data.bis, 4);
  EXPECT_EQ(data.Schwelle, 10.0);
  EXPECT_EQ(data.Schwelle2, 10.0);
  EXPECT_EQ(data.U_Control, 2);
  EXPECT_EQ(data.LastRelaisKarte, 0);
  EXPECT_EQ(data.LastRelais, 0);
  EXPECT_EQ(data.Timeout, 5000);
  EXPECT_EQ(data.MaxError, 10);
  EXPECT_EQ(data.Highconnections(), 3);
  EXPECT_EQ(States(data), (StateRows{{8, 8, 8, 8}, {0, 8, 8, 8}, {0, 0, 8, 8}, {0, 0, 0, 8}}));
  EXPECT_THAT(Resistances(data), Each(-1.0));
  EXPECT_THAT(data.voltages, ElementsAre(0.0, 0.0, 0.0, 0.0));
}

TEST(ShorttestData, GetReadsThePairInEitherOrder) {
  TShortTestData data(1, 4);
  data.connections[3][1] = {CellState::ExcludedPair, 7.5};
  data.connections[1][3] = {CellState::Reserved, 99.0};  // above the diagonal, never read as a pair
  EXPECT_EQ(data.Get(1, 3), CellState::ExcludedPair);
  EXPECT_EQ(data.Get(3, 1), CellState::ExcludedPair);
  EXPECT_EQ(data.GetR(1, 3), 7.5);
  EXPECT_EQ(data.GetR(3, 1), 7.5);
}

TEST(ShorttestData, SetCWritesThePairInEitherOrder) {
  TShortTestData lower(1, 4);
  TShortTestData upper(1, 4);
  lower.SetC(3, 1, CellState::Connected, 0.25);
  upper.SetC(1, 3, CellState::Connected, 0.25);
  const StateRows expected{{8, 8, 8, 8}, {0, 8, 8, 8}, {0, 0, 8, 8}, {0, 2, 0, 8}};
  EXPECT_EQ(States(lower), expected);
  EXPECT_EQ(States(upper), expected);
  EXPECT_EQ(lower.connections[3][1].resistance, 0.25);
  EXPECT_EQ(upper.connections[3][1].resistance, 0.25);
  EXPECT_EQ(upper.connections[1][3].resistance, -1.0);
}

TEST(ShorttestData, SetCOverwritesWhateverTheCellHolds) {
  TShortTestData data(1, 2);
  data.SetC(0, 1, CellState::Connected, 0.5);
  data.SetC(0, 1, CellState::Unknown, -1.0);
  EXPECT_EQ(data.Get(0, 1), CellState::Unknown);
  EXPECT_EQ(data.GetR(0, 1), -1.0);
  data.SetC(1, 1, CellState::Suspended, 3.0);
  EXPECT_EQ(data.Get(1, 1), CellState::Suspended);
  EXPECT_EQ(data.GetR(1, 1), 3.0);
}

TEST(ShorttestData, SetCDoesNotPropagate) {
  TShortTestData data(1, 3);
  data.SetC(0, 1, CellState::Connected, 0.5);
  data.SetC(1, 2, CellState::Connected, 0.5);
  EXPECT_EQ(data.Get(0, 2), CellState::Unknown);
}

TEST(ShorttestData, ACellHoldsAStateThatIsNotDefined) {
  TShortTestData data(1, 2);
  data.SetC(0, 1, static_cast<CellState>(221), 4.0);
  EXPECT_EQ(static_cast<int>(data.Get(1, 0)), 221);
}

TEST(ShorttestData, OneChannelHasItsDiagonalAlone) {
  const TShortTestData data(17, 17);
  EXPECT_EQ(data.Highconnections(), 0);
  EXPECT_EQ(States(data), (StateRows{{8}}));
  EXPECT_THAT(data.voltages, ElementsAre(0.0));
}

TEST(SuspendChannel, OnAFreshMatrixMakesEveryPairOfTheChannelNotTestable) {
  TShortTestData data(1, 4);
  data.SuspendChannel(2, 12.5);
  EXPECT_EQ(States(data), (StateRows{{8, 8, 8, 8}, {0, 8, 8, 8}, {4, 4, 9, 8}, {0, 0, 4, 8}}));
  EXPECT_EQ(data.GetVoltage(2), 12.5);
  EXPECT_THAT(data.voltages, ElementsAre(0.0, 0.0, 12.5, 0.0));
  EXPECT_THAT(Resistances(data), Each(-1.0));

  const StateRows suspended = States(data);
  for (int k = 0; k < 4; ++k) {
    data.Put(2, k, CellState::Connected, 0.5);
    data.Put(k, 2, CellState::NotConnected, 1e6);
  }
  EXPECT_EQ(States(data), suspended);
  EXPECT_THAT(Resistances(data), Each(-1.0));
}

TEST(SuspendChannel, OverwritesWhatThePairsHeld) {
  TShortTestData data(1, 5);
  data.SetC(2, 0, CellState::NotConnected, 1e6);
  data.SetC(2, 1, CellState::Connected, 0.5);
  data.SetC(3, 2, CellState::ExcludedPair, 5.0);
  data.SetC(4, 2, static_cast<CellState>(221), 6.0);
  data.SetC(4, 3, CellState::Connected, 0.75);
  data.SuspendChannel(2, -3.25);
  EXPECT_EQ(States(data),
            (StateRows{{8, 8, 8, 8, 8}, {0, 8, 8, 8, 8}, {4, 4, 9, 8, 8}, {0, 0, 4, 8, 8}, {0, 0, 4, 2, 8}}));
  for (int k = 0; k < 5; ++k) EXPECT_EQ(data.GetR(2, k), -1.0) << k;
  EXPECT_EQ(data.GetR(4, 3), 0.75);
  EXPECT_EQ(data.GetVoltage(2), -3.25);
}

TEST(SuspendChannel, OfASecondChannelOverwritesThePairOfBoth) {
  TShortTestData data(1, 3);
  data.SuspendChannel(0, 1.0);
  data.SetC(0, 2, CellState::NotConnected, 1e6);
  data.SuspendChannel(2, 2.0);
  EXPECT_EQ(States(data), (StateRows{{9, 8, 8}, {4, 8, 8}, {4, 4, 9}}));
  EXPECT_EQ(data.GetR(0, 2), -1.0);
}

TEST(SuspendChannel, AgainKeepsThePairsWithOtherSuspendedChannels) {
  TShortTestData data(1, 4);
  data.SuspendChannel(0, 1.0);
  data.SuspendChannel(2, 2.0);
  data.SetC(0, 2, CellState::ExcludedPair, 8.0);
  data.SetC(1, 2, CellState::NotConnected, 1e6);
  data.SuspendChannel(2, 3.0);
  EXPECT_EQ(States(data), (StateRows{{9, 8, 8, 8}, {4, 8, 8, 8}, {3, 4, 9, 8}, {4, 0, 4, 8}}));
  EXPECT_EQ(data.GetR(0, 2), 8.0);
  EXPECT_EQ(data.GetR(1, 2), -1.0);
  EXPECT_EQ(data.GetVoltage(2), 3.0);
}

TEST(SuspendChannel, ClearsTheResistanceOfTheDiagonal) {
  TShortTestData data(1, 2);
  data.SetC(1, 1, CellState::NotApplicable, 5.0);
  data.SuspendChannel(1, 0.0);
  EXPECT_EQ(data.Get(1, 1), CellState::Suspended);
  EXPECT_EQ(data.GetR(1, 1), -1.0);
}

// A pair that a damaged file gave the state 8 is left as it is, like the diagonal that the rule is made for.
TEST(SuspendChannel, SkipsEveryCellThatHoldsNotApplicable) {
  TShortTestData data(1, 3);
  data.SetC(2, 0, CellState::NotApplicable, 5.0);
  data.SuspendChannel(2, 1.0);
  EXPECT_EQ(States(data), (StateRows{{8, 8, 8}, {0, 8, 8}, {8, 4, 9}}));
  EXPECT_EQ(data.GetR(2, 0), 5.0);
}

struct CardsCase {
  const char* name;
  std::int32_t bis;
  std::int32_t cards;
};

class AnzahlKarten : public testing::TestWithParam<CardsCase> {};

TEST_P(AnzahlKarten, ReachesTheLastChannel) {
  TShortTestData data(GetParam().bis, GetParam().bis);
  EXPECT_EQ(data.AnzahlKarten(), GetParam().cards);
}

INSTANTIATE_TEST_SUITE_P(
    , AnzahlKarten,
    testing::Values(CardsCase{"Bis1", 1, 1}, CardsCase{"Bis47", 47, 1}, CardsCase{"Bis48", 48, 1},
                    CardsCase{"Bis49", 49, 2}, CardsCase{"Bis96", 96, 2}, CardsCase{"Bis97", 97, 3},
                    CardsCase{"Bis192", 192, 4}, CardsCase{"Bis193", 193, 5}, CardsCase{"Bis240", 240, 5},
                    CardsCase{"Bis241", 241, 6},
                    // integer division truncates toward zero
                    CardsCase{"Bis0", 0, 1}, CardsCase{"BisMinus46", -46, 1}, CardsCase{"BisMinus47", -47, 0},
                    CardsCase{"Largest", std::numeric_limits<std::int32_t>::max(), 44739243},
                    CardsCase{"Smallest", std::numeric_limits<std::int32_t>::min(), -44739241}),
    CaseName());

TEST(ShorttestData, AnzahlKartenDependsOnTheLastChannelAlone) {
  EXPECT_EQ(TShortTestData(97, 100).AnzahlKarten(), 3);
}

}  // namespace
}  // namespace data_test
