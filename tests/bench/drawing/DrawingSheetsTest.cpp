#include <gmock/gmock.h>

#include <cmath>

#include "bench/drawing/DrawingSheets.h"
#include "bench/drawing/DrawingStyle.h"
#include "tests/bench/drawing/PictureSamples.h"

namespace kxbench::drawing {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr double Head = 52;

/// Where the sheets begin and end; each begins where the one before ends.
std::vector<double> CutsOf(const PrintedSheets& printed) {
  std::vector<double> cuts{0};
  for (const PrintedSheet& sheet : printed.sheets) {
    EXPECT_EQ(sheet.top, cuts.back());
    cuts.push_back(sheet.bottom);
  }
  return cuts;
}

struct Sheets {
  DrawingLayout layout;
  DrawingFrame frame;
  std::vector<double> cuts;
};

Sheets SheetsFor(const HarnessPicture& picture, const std::vector<FaultMark>& marks = {}) {
  Sheets sheets;
  sheets.layout = LaidOut(picture, MarksIn(picture, marks));
  sheets.frame = {sheets.layout.width + 2 * DrawingMargin, Head + sheets.layout.height + 60, Head, 0};
  sheets.cuts = CutsOf(SheetsOf(sheets.layout, sheets.frame));
  return sheets;
}

TEST(DrawingSheetsTest, ASmallDrawingIsOneSheet) {
  const Sheets sheets = SheetsFor(RandomPicture(1, 48));
  EXPECT_THAT(sheets.cuts, ElementsAre(0, sheets.frame.height));
}

TEST(DrawingSheetsTest, AsManySheetsAsLegibleTextsNeed) {
  const DrawingLayout layout = [] {
    DrawingLayout tall;
    tall.rowHeight = 16;
    tall.height = 4000;
    return tall;
  }();
  // 6 of 8.25 points: A4 takes 1438 pixels, and 987 in width.
  EXPECT_THAT(CutsOf(SheetsOf(layout, {987, 1438, 0, 0})), SizeIs(2));
  EXPECT_THAT(CutsOf(SheetsOf(layout, {987, 1439, 0, 0})), ElementsAre(0, 720, 1439));
  EXPECT_THAT(CutsOf(SheetsOf(layout, {987, 2900, 0, 0})), SizeIs(4));
  EXPECT_FALSE(SheetsOf(layout, {987, 2900, 0, 0}).landscape);
  // Across, it takes 987 of a drawing that is 1438 wide. A wider one is smaller anyhow.
  EXPECT_TRUE(SheetsOf(layout, {988, 500, 0, 0}).landscape);
  EXPECT_THAT(CutsOf(SheetsOf(layout, {988, 500, 0, 0})), SizeIs(2));
  EXPECT_THAT(CutsOf(SheetsOf(layout, {1438, 987, 0, 0})), SizeIs(2));
  EXPECT_THAT(CutsOf(SheetsOf(layout, {1438, 988, 0, 0})), SizeIs(3));
  EXPECT_THAT(CutsOf(SheetsOf(layout, {2092, 1436, 0, 0})), SizeIs(2));
}

TEST(DrawingSheetsTest, CutsAreBetweenRowsAndOffTheLines) {
  for (std::uint32_t seed = 1; seed <= 8; ++seed) {
    const HarnessPicture picture = RandomPicture(seed, 240);
    const Sheets sheets =
        SheetsFor(picture, seed % 2 == 0 ? RandomMarks(seed, picture) : std::vector<FaultMark>());
    const std::size_t number = sheets.cuts.size() - 1;
    ASSERT_GE(number, 2U) << seed;
    const double cut = sheets.cuts[1] - Head;
    EXPECT_NEAR(sheets.cuts[1], sheets.frame.height / static_cast<double>(number),
                4 * sheets.layout.rowHeight)
        << seed;
    for (const DrawnBox& box : sheets.layout.boxes) {
      for (const DrawnRow& row : box.rows) {
        EXPECT_GE(std::abs(row.y - cut), sheets.layout.rowHeight / 2) << seed;
        EXPECT_GE(std::abs(row.port.y - cut), 3) << seed;
      }
    }
    for (const DrawnExtra& extra : sheets.layout.extras) {
      for (const Point& point : extra.points) EXPECT_GE(std::abs(point.y - cut), 3) << seed;
    }
  }
}

TEST(DrawingSheetsTest, SheetsNameTheConnectorsThatBeganOnAnother) {
  DrawingLayout layout;
  layout.rowHeight = 16;
  layout.height = 1920;
  layout.left = {0, 80, 0, 0, 0};
  layout.right = {400, 90, 0, 0, 0};
  const auto add = [&](bool left, double top, double height, const std::string& title) {
    layout.boxes.push_back({left, top, height, title, title, false, {}});
  };
  add(true, 0, 960, "ends at the cut");
  add(true, 960, 160, "begins at it");
  add(false, 0, 944, "before it");
  add(false, 944, 32, "across it");
  const PrintedSheets printed = SheetsOf(layout, {500, 1920, 0, 16});
  ASSERT_THAT(printed.sheets, SizeIs(2));
  EXPECT_EQ(printed.sheets[1].top, 960);
  EXPECT_THAT(printed.sheets[0].continued, SizeIs(0));
  ASSERT_THAT(printed.sheets[1].continued, SizeIs(1));
  EXPECT_EQ(printed.sheets[1].continued[0].title, "across it");
  EXPECT_EQ(printed.sheets[1].continued[0].x, 16 + 490);
  EXPECT_FALSE(printed.sheets[1].continued[0].left);
}

TEST(DrawingSheetsTest, ALineInTheWayMovesTheCut) {
  DrawingLayout layout;
  layout.rowHeight = 16;
  layout.height = 2000;
  const std::vector<double> free = CutsOf(SheetsOf(layout, {700, 2000, 0, 0}));
  ASSERT_THAT(free, SizeIs(3));
  layout.extras.push_back({{}, {{0, free[1] + 2}, {50, free[1] + 2}}});
  EXPECT_EQ(CutsOf(SheetsOf(layout, {700, 2000, 0, 0}))[1], free[1] - 16);
  layout.extras.push_back({{}, {{0, free[1] - 18}, {50, free[1] - 18}}});
  EXPECT_EQ(CutsOf(SheetsOf(layout, {700, 2000, 0, 0}))[1], free[1] + 16);
}

}  // namespace
}  // namespace kxbench::drawing
