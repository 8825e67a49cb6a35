#include <gmock/gmock.h>

#include "bench/results/CsvRow.h"
#include "bench/results/Outputs.h"
#include "tests/bench/results/ResultExamples.h"

namespace kxbench::results {
namespace {

using testing::HasSubstr;

struct CellRow {
  const char* name;
  const char* text;
  const char* cell;
};

class CsvCell : public testing::TestWithParam<CellRow> {};

TEST_P(CsvCell, IsWritten) {
  EXPECT_EQ(CsvRow().Text(GetParam().text).Line(), std::string(GetParam().cell) + "\r\n");
}

INSTANTIATE_TEST_SUITE_P(
    Cells, CsvCell,
    testing::Values(CellRow{"Plain", "a b", "a b"}, CellRow{"Empty", "", ""},
                    CellRow{"Comma", "a,b", "\"a,b\""}, CellRow{"Quote", "a\"b", "\"a\"\"b\""},
                    CellRow{"LineFeed", "a\nb", "\"a\nb\""}, CellRow{"Formula", "=1+1", "'=1+1"},
                    CellRow{"Plus", "+1", "'+1"}, CellRow{"Minus", "-1", "'-1"},
                    CellRow{"At", "@SUM(A1)", "'@SUM(A1)"}, CellRow{"Tab", "\t=1", "'\t=1"},
                    CellRow{"Return", "\r=1", "\"'\r=1\""}, CellRow{"NoText", "\xff", "\xEF\xBF\xBD"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(CsvNumber, StaysANumber) {
  EXPECT_EQ(CsvRow().Number(-1.5).Number(std::nullopt).Number(0.1).Line(), "-1.5,,0.1\r\n");
}

TEST(OutputCsv, HasARowForEachRecord) {
  const std::string text = ResultsCsv({{BrokenWire(), ""}});
  EXPECT_THAT(
      text,
      HasSubstr("id,started,seconds,verdict,serial,part,operator,station,expectation,sha256,diagnosis"));
  EXPECT_THAT(text, HasSubstr(",fail,SN-1,4711,Eva,bench 3,adapter.dat,"));
  EXPECT_THAT(text, HasSubstr(",1,fehlende Verbindung zwischen 1 und 3,-1,0,10,Ohm\r\n"));
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 4);
}

TEST(OutputCsv, ResultWithoutRecordsHasARowAndAsManyCells) {
  const std::string text = ResultsCsv({{MissingTester(), ""}});
  EXPECT_THAT(text, HasSubstr("card 1 does not answer,,,,,,\r\n"));
}

}  // namespace
}  // namespace kxbench::results
