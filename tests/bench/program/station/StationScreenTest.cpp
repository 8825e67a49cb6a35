#include <gmock/gmock.h>

#include <algorithm>

#include "bench/program/station/StationScreen.h"

namespace kxbench {
namespace {

using testing::HasSubstr;
using testing::Not;

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines(1);
  for (const char c : text) {
    if (c == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += c;
    }
  }
  return lines;
}

TEST(LargeWord, FillsTheTerminal) {
  const auto lines = LinesOf(LargeWord("PASS", 80, 14, "#"));
  EXPECT_EQ(lines.size(), 1 + 2 * 5U);
  EXPECT_EQ(lines[0], "############         #########         ############      ############");
  EXPECT_EQ(lines[1], lines[0]);
  EXPECT_GT(LinesOf(LargeWord("PASS", 200, 50, "#")).size(), 15U);
}

TEST(LargeWord, FitsOrIsLeftOut) {
  for (int columns = 1; columns < 120; ++columns) {
    for (int rows = 1; rows < 30; ++rows) {
      const auto lines = LinesOf(LargeWord("CANCELLED", columns, rows, "#"));
      EXPECT_LE(lines.size() - 1, static_cast<std::size_t>(rows));
      for (const std::string& line : lines) EXPECT_LE(line.size(), static_cast<std::size_t>(columns));
    }
  }
  EXPECT_EQ(LargeWord("PASS", 20, 20, "#"), "");
}

TEST(StationScreen, FitsEverySize) {
  ScreenText text{
      "FAIL",      "", "FAIL  S1",       std::vector<std::string>(30, "open: 3 (B-1) has come off its net"),
      "checked 1", "", "Serial number: "};
  for (const TerminalSize size : {TerminalSize{80, 24}, {20, 6}, {200, 60}, {30, 10}, {1, 1}}) {
    const auto lines =
        LinesOf(ScreenOf(text, size, false, false).substr(std::string("\x1b[2J\x1b[H").size()));
    EXPECT_LE(static_cast<int>(lines.size()), std::max(size.rows, 6)) << size.columns << "x" << size.rows;
    for (const std::string& line : lines)
      EXPECT_LE(static_cast<int>(line.size()), std::max(size.columns - 1, 26));
  }
}

TEST(StationScreen, SaysTheVerdictInPlainLettersToo) {
  const std::string screen =
      ScreenOf({"FAIL", "1;31", "FAIL  S1", {"open: 3"}, "", "", ""}, {80, 24}, true, true);
  EXPECT_THAT(screen, HasSubstr("FAIL  S1"));
  EXPECT_THAT(screen, HasSubstr("open: 3\n"));
  EXPECT_THAT(screen, HasSubstr("\x1b[1;31m"));
}

TEST(StationScreen, SaysHowManyLinesAreLeftOut) {
  const std::string screen = ScreenOf(
      {"FAIL", "", "FAIL  S1", std::vector<std::string>(30, "open"), "", "", ""}, {80, 24}, false, false);
  EXPECT_THAT(screen, HasSubstr(" lines more\n"));
}

TEST(StationScreen, IsHarmlessWhateverTheTexts) {
  const std::string hostile = "a\x1b[2Jb\x07\nc";
  const std::string screen =
      ScreenOf({"PASS", "", hostile, {hostile}, hostile, hostile, hostile}, {80, 24}, false, false);
  EXPECT_THAT(screen.substr(4), Not(HasSubstr("\x1b[2J")));
  EXPECT_THAT(screen, Not(HasSubstr("\x07")));
}

}  // namespace
}  // namespace kxbench
