#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugin/editor/GridPicture.h"

namespace shorttest {

void PrintTo(const CellRange& range, std::ostream* out) {
  *out << range.left << ',' << range.top << ".." << range.right << ',' << range.bottom;
}

namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

struct ColourCase {
  const char* name;
  int state;
  GridColour colour;
};

class StateColour : public ::testing::TestWithParam<ColourCase> {};

TEST_P(StateColour, Is) {
  EXPECT_EQ(ColourOfState(static_cast<CellState>(GetParam().state)), GetParam().colour);
}

INSTANTIATE_TEST_SUITE_P(
    Table, StateColour,
    ::testing::Values(ColourCase{"Unknown", 0, {128, 128, 0}}, ColourCase{"NotConnected", 1, {255, 255, 255}},
                      ColourCase{"Connected", 2, {0, 128, 0}}, ColourCase{"Excluded", 3, {255, 0, 0}},
                      ColourCase{"NotTestable", 4, {128, 0, 0}}, ColourCase{"Reserved", 5, {0, 204, 255}},
                      ColourCase{"Unused6", 6, {128, 128, 0}}, ColourCase{"Unused7", 7, {128, 128, 0}},
                      ColourCase{"NotApplicable", 8, {192, 192, 192}},
                      ColourCase{"Suspended", 9, {128, 128, 128}}, ColourCase{"Above9", 10, {128, 128, 0}},
                      ColourCase{"Damaged", 221, {128, 128, 0}}),
    [](const auto& row) { return row.param.name; });

struct SizeCase {
  const char* name;
  int extent;
  int count;
  int size;
};

class CellSize : public ::testing::TestWithParam<SizeCase> {};

TEST_P(CellSize, FillsTheExtent) {
  EXPECT_EQ(GridCellSize(GetParam().extent, GetParam().count, 1), GetParam().size);
}

INSTANTIATE_TEST_SUITE_P(
    Table, CellSize,
    ::testing::Values(SizeCase{"RoundedDown", 800, 48, 15}, SizeCase{"Even", 480, 48, 9},
                      SizeCase{"Small", 800, 240, 2}, SizeCase{"OnePixelAndTheLine", 480, 240, 1},
                      SizeCase{"OnlyTheLine", 479, 240, 0}, SizeCase{"MoreCellsThanPixels", 100, 240, 0},
                      SizeCase{"NoCells", 800, 0, 0}, SizeCase{"NegativeCount", 800, -1, 0}),
    [](const auto& row) { return row.param.name; });

class ShownGrid : public ::testing::Test {
 protected:
  ShownGrid() { picture.Update(data); }

  TShortTestData data{1, 5};
  GridPicture picture;
};

TEST_F(ShownGrid, ShowsEverythingAtFirst) {
  GridPicture fresh;
  EXPECT_THAT(fresh.Update(data), UnorderedElementsAre(CellRange{0, 0, 4, 4}));
  EXPECT_EQ(fresh.Count(), 5);
}

TEST_F(ShownGrid, NothingChanged) { EXPECT_THAT(picture.Update(data), IsEmpty()); }

TEST_F(ShownGrid, BothHalvesShowThePair) {
  data.SetC(1, 3, CellState::Connected, 0.1);
  picture.Update(data);
  EXPECT_EQ(picture.State(1, 3), CellState::Connected);
  EXPECT_EQ(picture.State(3, 1), CellState::Connected);
  EXPECT_EQ(picture.State(1, 1), CellState::NotApplicable);
  EXPECT_EQ(picture.State(0, 4), CellState::Unknown);
}

TEST_F(ShownGrid, PairIsTwoCells) {
  data.SetC(1, 3, CellState::Connected, 0.1);
  EXPECT_THAT(picture.Update(data), UnorderedElementsAre(CellRange{1, 3, 1, 3}, CellRange{3, 1, 3, 1}));
}

TEST_F(ShownGrid, ChannelIsOneCell) {
  data.SetC(2, 2, CellState::Suspended, NoResistance);
  EXPECT_THAT(picture.Update(data), UnorderedElementsAre(CellRange{2, 2, 2, 2}));
}

TEST_F(ShownGrid, SettledChannelIsOneRowAndOneColumn) {
  for (std::int32_t j = 0; j < 5; ++j) data.Put(2, j, CellState::NotConnected, 1e6);
  EXPECT_THAT(picture.Update(data),
              UnorderedElementsAre(CellRange{0, 2, 1, 2}, CellRange{2, 0, 2, 1},    // left of the diagonal
                                   CellRange{2, 3, 2, 4}, CellRange{3, 2, 4, 2}));  // below it
}

TEST_F(ShownGrid, NewRangeIsPaintedWhole) {
  data.SetVonBis(1, 3);
  EXPECT_THAT(picture.Update(data), UnorderedElementsAre(CellRange{0, 0, 2, 2}));
}

TEST_F(ShownGrid, SameChannelsInAnotherRangeAreCompared) {
  data.SetC(0, 1, CellState::Connected, 0.1);
  picture.Update(data);
  data.SetVonBis(2, 6);
  EXPECT_THAT(picture.Update(data), UnorderedElementsAre(CellRange{0, 1, 0, 1}, CellRange{1, 0, 1, 0}));
}

TEST_F(ShownGrid, EmptyRange) {
  data.SetVonBis(5, 4);
  picture.Update(data);
  EXPECT_EQ(picture.Count(), 0);
}

}  // namespace
}  // namespace shorttest
