#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"

namespace data_test {
namespace {

// The vocabulary of a measurement on six channels; names are matrix indices.
class Put : public testing::Test {
 protected:
  TShortTestData data{1, 6};

  CellState State(int i, int j) const { return data.Get(i, j); }
  double Ohm(int i, int j) const { return data.GetR(i, j); }
  void ExpectPair(int i, int j, CellState state, double ohm) const {
    EXPECT_EQ(State(i, j), state) << "pair " << i << ", " << j;
    EXPECT_EQ(Ohm(i, j), ohm) << "pair " << i << ", " << j;
  }
};

TEST_F(Put, EntersAnUnknownPair) {
  data.Put(3, 1, Open, 1e6);
  EXPECT_EQ(States(data), (StateRows{{8, 8, 8, 8, 8, 8},
                                     {0, 8, 8, 8, 8, 8},
                                     {0, 0, 8, 8, 8, 8},
                                     {0, 1, 0, 8, 8, 8},
                                     {0, 0, 0, 0, 8, 8},
                                     {0, 0, 0, 0, 0, 8}}));
  ExpectPair(1, 3, Open, 1e6);
}

TEST_F(Put, TwoConnectionsMakeTheThirdWithTheResistanceOfTheFirst) {
  data.Put(0, 1, Connected, 0.5);
  data.Put(1, 2, Connected, 0.7);
  ExpectPair(0, 1, Connected, 0.5);
  ExpectPair(1, 2, Connected, 0.7);
  ExpectPair(0, 2, Connected, 0.5);
}

TEST_F(Put, OpenGoesToTheWholeNetWithItsResistance) {
  data.Put(0, 1, Connected, 0.5);
  data.Put(1, 2, Connected, 0.7);
  data.Put(0, 3, Open, 1e6);
  ExpectPair(0, 3, Open, 1e6);
  ExpectPair(1, 3, Open, 1e6);
  ExpectPair(2, 3, Open, 1e6);
  EXPECT_EQ(State(3, 4), CellState::Unknown);
}

TEST_F(Put, StateUnknownChangesNothing) {
  data.Put(0, 1, CellState::Unknown, 5.0);
  data.Put(0, 1, Connected, 0.5);
  data.Put(0, 1, CellState::Unknown, 5.0);
  ExpectPair(0, 1, Connected, 0.5);
  data.Put(2, 3, CellState::Unknown, 5.0);
  ExpectPair(2, 3, CellState::Unknown, -1.0);
}

TEST_F(Put, AnOpenPairDoesNotTurnIntoAConnectedOne) {
  data.Put(0, 1, Open, 1e6);
  data.Put(0, 1, Connected, 0.5);
  data.Put(1, 0, Connected, 0.5);
  ExpectPair(0, 1, Open, 1e6);
}

TEST_F(Put, TheFirstStateOfAPairWins) {
  for (const CellState first : {Open, Connected, Excluded, CellState::NotTestable, CellState::Reserved}) {
    TShortTestData matrix(1, 2);
    matrix.Put(0, 1, first, 3.0);
    for (const CellState second : {Open, Connected, Excluded, CellState::NotTestable}) {
      matrix.Put(0, 1, second, 4.0);
      EXPECT_EQ(matrix.Get(0, 1), first);
      EXPECT_EQ(matrix.GetR(0, 1), 3.0);
    }
  }
}

TEST_F(Put, NeverWritesADiagonalCell) {
  data.SuspendChannel(5, 1.0);
  data.Put(0, 0, Connected, 0.5);
  data.Put(5, 5, Open, 1e6);
  data.Put(0, 1, Connected, 0.5);
  EXPECT_EQ(State(0, 0), CellState::NotApplicable);
  EXPECT_EQ(State(1, 1), CellState::NotApplicable);
  EXPECT_EQ(State(5, 5), CellState::Suspended);
  EXPECT_EQ(Ohm(0, 0), -1.0);
}

TEST_F(Put, NeverWritesAboveTheDiagonal) {
  data.Put(0, 1, Connected, 0.5);
  data.Put(1, 2, Connected, 0.7);
  data.Put(0, 3, Open, 1e6);
  for (std::size_t row = 0; row < 6; ++row) {
    for (std::size_t column = row; column < 6; ++column) {
      EXPECT_EQ(data.connections[row][column].state, CellState::NotApplicable);
      EXPECT_EQ(data.connections[row][column].resistance, -1.0);
    }
  }
}

TEST_F(Put, ConnectingTakesOverTheOpenPairsOfBothSides) {
  data.Put(0, 2, Open, 20.0);
  data.Put(1, 3, Open, 31.0);
  data.Put(0, 1, Connected, 0.5);
  ExpectPair(1, 2, Open, 20.0);
  ExpectPair(0, 3, Open, 31.0);
  EXPECT_EQ(State(2, 3), CellState::Unknown);
}

TEST_F(Put, ConnectingTakesOverExcludedAndNotTestablePairs) {
  data.SetC(0, 2, Excluded, -1.0);
  data.SuspendChannel(4, 9.0);
  data.Put(0, 1, Connected, 0.5);
  ExpectPair(1, 2, Excluded, -1.0);
  ExpectPair(1, 4, CellState::NotTestable, -1.0);
  ExpectPair(0, 4, CellState::NotTestable, -1.0);
}

TEST_F(Put, JoiningTwoNetsConnectsEveryPairAcross) {
  data.Put(0, 1, Connected, 0.1);
  data.Put(2, 3, Connected, 0.2);
  data.Put(1, 2, Connected, 0.3);
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < i; ++j) EXPECT_EQ(State(i, j), Connected) << i << ", " << j;
  }
  // At k = 0, 2 takes over what 1 knows of 0, with its resistance; inside that call, at k = 3, 0 takes over
  // what 2 knows of 3, and inside that one, at k = 1, 3 takes over what 0 knows of 1.
  ExpectPair(0, 2, Connected, 0.1);
  ExpectPair(0, 3, Connected, 0.2);
  ExpectPair(1, 3, Connected, 0.1);
}

TEST_F(Put, ExcludedGoesToTheWholeNet) {
  data.Put(0, 1, Connected, 0.1);
  data.Put(2, 3, Connected, 0.2);
  data.Put(1, 3, Excluded, -1.0);
  for (const auto& [i, j] : {std::pair{0, 2}, std::pair{0, 3}, std::pair{1, 2}, std::pair{1, 3}}) {
    ExpectPair(i, j, Excluded, -1.0);
  }
}

TEST_F(Put, AnExcludedPairStaysExcludedWhenItsNetsAreJoined) {
  data.SetC(0, 2, Excluded, -1.0);
  data.Put(0, 1, Connected, 0.1);
  data.Put(1, 2, Connected, 0.2);
  ExpectPair(0, 2, Excluded, -1.0);
  ExpectPair(1, 2, Excluded, -1.0);  // 1 took it over from 0, so it is no longer unknown
}

TEST_F(Put, KeepsAResistanceThatIsNotANumber) {
  data.Put(0, 1, Connected, std::numeric_limits<double>::quiet_NaN());
  data.Put(1, 2, Connected, std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(Ohm(0, 1)));
  EXPECT_TRUE(std::isnan(Ohm(0, 2)));
  EXPECT_EQ(Ohm(1, 2), std::numeric_limits<double>::infinity());
}

TEST_F(Put, OnOneChannelDoesNothing) {
  TShortTestData one(7, 7);
  one.Put(0, 0, Connected, 0.5);
  EXPECT_EQ(States(one), (StateRows{{8}}));
  EXPECT_EQ(one.GetR(0, 0), -1.0);
}

}  // namespace
}  // namespace data_test
