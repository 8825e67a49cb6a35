#include <gtest/gtest.h>

#include "ui/terminal/ProgressText.h"

namespace kxbench {
namespace {

TEST(DurationText, MinutesAndHours) {
  EXPECT_EQ(DurationText(0), "0:00");
  EXPECT_EQ(DurationText(59.99), "0:59");
  EXPECT_EQ(DurationText(60), "1:00");
  EXPECT_EQ(DurationText(754), "12:34");
  EXPECT_EQ(DurationText(3723), "1:02:03");
  EXPECT_EQ(DurationText(-5), "0:00");
}

TEST(PercentText, IsRoundedDownAndClipped) {
  EXPECT_EQ(PercentText(0.999), "99 %");
  EXPECT_EQ(PercentText(1.0), "100 %");
  EXPECT_EQ(PercentText(1.5), "100 %");
  EXPECT_EQ(PercentText(-0.5), "0 %");
}

ProgressState Half() { return {"Kurzschlusstest", "Ctrl-C: Abbrechen", 0.5, 7}; }

TEST(ProgressBarText, ShowsBarPercentTimeAndHint) {
  EXPECT_EQ(ProgressBarText(Half(), 80, false),
            "Kurzschlusstest [###############................]  50 %  0:07  Ctrl-C: Abbrechen");
}

TEST(ProgressBarText, BarHasAGreatestLength) {
  EXPECT_EQ(ProgressBarText(Half(), 400, false),
            "Kurzschlusstest [####################....................]  50 %  0:07  Ctrl-C: Abbrechen");
}

TEST(ProgressBarText, EmptyAndFull) {
  ProgressState state = Half();
  state.fraction = 0;
  EXPECT_EQ(ProgressBarText(state, 42, false), "Kurzschlusstest [............]   0 %  0:07");
  state.fraction = 1;
  EXPECT_EQ(ProgressBarText(state, 42, false), "Kurzschlusstest [############] 100 %  0:07");
}

TEST(ProgressBarText, MovesInEighthsWhereTheTerminalShowsThem) {
  ProgressState state{"T", "", 0.0, 0};
  state.fraction = 3.0 / 80;
  EXPECT_EQ(ProgressBarText(state, 26, true), "T ▕▍         ▏   3 %  0:00");
  state.fraction = 1;
  EXPECT_EQ(ProgressBarText(state, 26, true), "T ▕██████████▏ 100 %  0:00");
}

struct Width {
  const char* name;
  int columns;
  const char* line;
};

class NarrowTerminal : public testing::TestWithParam<Width> {};

TEST_P(NarrowTerminal, LeavesOut) {
  EXPECT_EQ(ProgressBarText(Half(), GetParam().columns, false), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(
    Columns, NarrowTerminal,
    testing::Values(Width{"Nothing", 59, "Kurzschlusstest [#####.....]  50 %  0:07  Ctrl-C: Abbrechen"},
                    Width{"Hint", 58, "Kurzschlusstest [##############..............]  50 %  0:07"},
                    Width{"Bar", 39, "Kurzschlusstest  50 %  0:07"},
                    Width{"TheEnd", 19, "Kurzschlusstest  50"}, Width{"Everything", 0, ""}),
    [](const auto& row) { return row.param.name; });

TEST(ProgressBarText, NeverExceedsTheColumns) {
  ProgressState state = Half();
  state.caption = "Prüfung der Stränge";
  for (int columns = 0; columns < 120; ++columns) {
    const std::string line = ProgressBarText(state, columns, true);
    int characters = 0;
    for (const char c : line) characters += (static_cast<unsigned char>(c) & 0xC0U) != 0x80U ? 1 : 0;
    EXPECT_LE(characters, columns);
  }
}

TEST(ProgressLineText, IsShort) { EXPECT_EQ(ProgressLineText(Half()), "Kurzschlusstest: 50 %, 0:07"); }

}  // namespace
}  // namespace kxbench
