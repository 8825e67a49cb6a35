#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"

namespace data_test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

// A matrix in which every cell of the full square and every voltage tells which channels it belongs to.
class SetVonBis : public testing::Test {
 protected:
  static double Mark(int row, int column) { return 100.0 * row + column; }

  static TShortTestData Marked(std::int32_t von, std::int32_t bis) {
    TShortTestData data(von, bis);
    for (std::int32_t row = von; row <= bis; ++row) {
      for (std::int32_t column = von; column <= bis; ++column) {
        data.connections[static_cast<std::size_t>(row - von)][static_cast<std::size_t>(column - von)] = {
            static_cast<CellState>((row * 7 + column) % 10), Mark(row, column)};
      }
      data.voltages[static_cast<std::size_t>(row - von)] = row;
    }
    return data;
  }

  // Every cell whose two channels were in the old range is the old one; every other is that of a new matrix.
  static void ExpectCells(const TShortTestData& data, const TShortTestData& old) {
    const auto wasIn = [&old](std::int32_t channel) { return channel >= old.von && channel <= old.bis; };
    ASSERT_EQ(data.Highconnections(), data.bis - data.von);
    for (std::int32_t row = data.von; row <= data.bis; ++row) {
      ASSERT_EQ(data.connections[static_cast<std::size_t>(row - data.von)].size(), data.connections.size());
      for (std::int32_t column = data.von; column <= data.bis; ++column) {
        const TConnectionCell& cell = data.connections[static_cast<std::size_t>(row - data.von)]
                                                      [static_cast<std::size_t>(column - data.von)];
        const bool kept = wasIn(row) && wasIn(column);
        const int fresh = column < row ? 0 : 8;
        EXPECT_EQ(static_cast<int>(cell.state), kept ? (row * 7 + column) % 10 : fresh)
            << row << ", " << column;
        EXPECT_EQ(cell.resistance, kept ? Mark(row, column) : -1.0) << row << ", " << column;
      }
    }
  }
};

TEST_F(SetVonBis, TheSameRangeKeepsEveryCellAndVoltage) {
  TShortTestData data = Marked(3, 7);
  data.SetVonBis(3, 7);
  ExpectCells(data, Marked(3, 7));
  EXPECT_THAT(data.voltages, ElementsAre(3, 4, 5, 6, 7));
}

TEST_F(SetVonBis, WideningFrom1To4To1To6KeepsTheCornerAndAddsUnknownRowsAndColumns) {
  TShortTestData data(1, 4);
  data.SetC(1, 0, CellState::Connected, 0.5);
  data.SuspendChannel(3, 12.0);
  data.SetVonBis(1, 6);
  EXPECT_EQ(data.von, 1);
  EXPECT_EQ(data.bis, 6);
  EXPECT_EQ(data.Highconnections(), 5);
  EXPECT_EQ(States(data), (StateRows{{8, 8, 8, 8, 8, 8},
                                     {2, 8, 8, 8, 8, 8},
                                     {0, 0, 8, 8, 8, 8},
                                     {4, 4, 4, 9, 8, 8},
                                     {0, 0, 0, 0, 8, 8},
                                     {0, 0, 0, 0, 0, 8}}));
  EXPECT_EQ(data.GetR(1, 0), 0.5);
  EXPECT_THAT(data.voltages, ElementsAre(0, 0, 0, 12.0, 0, 0));
}

TEST_F(SetVonBis, NarrowingFrom1To6To3To6MovesIndex2ToIndex0) {
  TShortTestData data(1, 6);
  data.SetC(4, 2, CellState::Connected, 0.25);
  data.SetC(5, 3, CellState::NotConnected, 1e6);
  data.SetC(1, 0, CellState::Connected, 0.5);
  data.SuspendChannel(3, 7.5);
  data.SetC(5, 3, CellState::ExcludedPair, -1.0);
  data.voltages[5] = 2.5;
  data.SetVonBis(3, 6);
  EXPECT_EQ(data.von, 3);
  EXPECT_EQ(data.bis, 6);
  EXPECT_EQ(States(data), (StateRows{{8, 8, 8, 8}, {4, 9, 8, 8}, {2, 4, 8, 8}, {0, 3, 0, 8}}));
  EXPECT_EQ(data.GetR(2, 0), 0.25);
  EXPECT_THAT(data.voltages, ElementsAre(0, 7.5, 0, 2.5));
}

TEST_F(SetVonBis, KeepsWhatADamagedFilePutAboveTheDiagonal) {
  TShortTestData data(1, 3);
  data.connections[0][2] = {static_cast<CellState>(221), 5.0};
  data.SetVonBis(1, 5);
  EXPECT_EQ(static_cast<int>(data.connections[0][2].state), 221);
  EXPECT_EQ(data.connections[0][2].resistance, 5.0);
}

struct RangeChange {
  const char* name;
  std::int32_t oldVon, oldBis, newVon, newBis;
  std::vector<double> voltages;  // Marked gives every channel its number
};

class SetVonBisFromTo : public SetVonBis, public testing::WithParamInterface<RangeChange> {};

TEST_P(SetVonBisFromTo, KeepsTheChannelsThatStay) {
  const RangeChange& c = GetParam();
  TShortTestData data = Marked(c.oldVon, c.oldBis);
  data.SetVonBis(c.newVon, c.newBis);
  EXPECT_EQ(data.von, c.newVon);
  EXPECT_EQ(data.bis, c.newBis);
  ExpectCells(data, Marked(c.oldVon, c.oldBis));
  EXPECT_EQ(data.voltages, c.voltages);
}

// Only as many voltages as the shorter of the two ranges has are moved, counted from the new start: a channel
// that stays can lose its voltage when the range grows downwards.
INSTANTIATE_TEST_SUITE_P(, SetVonBisFromTo,
                         testing::Values(RangeChange{"GrowsUp", 1, 4, 1, 6, {1, 2, 3, 4, 0, 0}},
                                         RangeChange{"GrowsDown", 3, 6, 1, 6, {0, 0, 3, 4, 0, 0}},
                                         RangeChange{"GrowsDownByOne", 2, 4, 1, 4, {0, 2, 3, 0}},
                                         RangeChange{"GrowsBothWays", 3, 4, 1, 6, {0, 0, 0, 0, 0, 0}},
                                         RangeChange{"ShrinksFromAbove", 1, 6, 1, 3, {1, 2, 3}},
                                         RangeChange{"ShrinksFromBelow", 1, 6, 3, 6, {3, 4, 5, 6}},
                                         RangeChange{"ShrinksToOneChannel", 1, 6, 4, 4, {4}},
                                         RangeChange{"MovesUp", 1, 4, 3, 6, {3, 4, 0, 0}},
                                         RangeChange{"MovesDown", 3, 6, 1, 4, {0, 0, 3, 4}},
                                         RangeChange{"MovesUpAndGrows", 1, 4, 3, 8, {3, 4, 0, 0, 0, 0}},
                                         RangeChange{"MovesDownAndShrinks", 3, 8, 1, 4, {0, 0, 3, 4}},
                                         RangeChange{"LeavesNoChannelAbove", 1, 4, 5, 8, {0, 0, 0, 0}},
                                         RangeChange{"LeavesNoChannelBelow", 5, 8, 1, 4, {0, 0, 0, 0}},
                                         RangeChange{
                                             "ToTheOtherEnd", 1, 4, 2000000000, 2000000003, {0, 0, 0, 0}},
                                         RangeChange{"FromEmpty", 5, 4, 3, 5, {0, 0, 0}}),
                         CaseName());

TEST_F(SetVonBis, ToAnEmptyRangeAndBackStartsAnew) {
  TShortTestData data = Marked(1, 4);
  data.SetVonBis(3, 2);
  EXPECT_EQ(data.Highconnections(), -1);
  EXPECT_THAT(data.connections, IsEmpty());
  EXPECT_THAT(data.voltages, IsEmpty());
  EXPECT_EQ(data.von, 3);
  EXPECT_EQ(data.bis, 2);
  data.SetVonBis(1, 2);
  EXPECT_EQ(States(data), (StateRows{{8, 8}, {0, 8}}));
  EXPECT_THAT(Resistances(data), Each(-1.0));
  EXPECT_THAT(data.voltages, ElementsAre(0.0, 0.0));
}

TEST_F(SetVonBis, LeavesThresholdsAndOptions) {
  TShortTestData data(1, 4);
  data.Schwelle = 1.5;
  data.Schwelle2 = 2.5;
  data.U_Control = 1;
  data.LastRelaisKarte = 3;
  data.LastRelais = 4;
  data.Timeout = 5;
  data.MaxError = 6;
  data.SetVonBis(2, 9);
  EXPECT_EQ(data.Schwelle, 1.5);
  EXPECT_EQ(data.Schwelle2, 2.5);
  EXPECT_EQ(data.U_Control, 1);
  EXPECT_EQ(data.LastRelaisKarte, 3);
  EXPECT_EQ(data.LastRelais, 4);
  EXPECT_EQ(data.Timeout, 5);
  EXPECT_EQ(data.MaxError, 6);
}

}  // namespace
}  // namespace data_test
