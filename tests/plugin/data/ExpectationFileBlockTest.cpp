// The data block of an expectation file, character by character.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"

namespace data_test {
namespace {

using namespace std::string_literals;

using testing::Each;

constexpr int End = BehindTheEnd;
constexpr int Cr = 221;
constexpr int Lf = 218;

struct BlockCase {
  const char* name;
  std::string file;  // after a range of channels 1 to 4
  StateRows states;
};

class ExpectationFileBlock : public FileTest, public testing::WithParamInterface<BlockCase> {};

TEST_P(ExpectationFileBlock, IsReadAsItStands) {
  Write("block.exp", Lines({"[BEREICH]", "START=1", "ENDE=4"}) + GetParam().file);
  const TShortTestData data(Name("block.exp"));
  EXPECT_EQ(States(data), GetParam().states);
  EXPECT_THAT(Resistances(data), Each(-1.0));
}

const StateRows Whole{{8, 8, 8, 8}, {2, 8, 8, 8}, {1, 1, 8, 8}, {1, 1, 3, 8}};
const StateRows Nothing(4, std::vector<int>(4, End));

// Short lines: the line break is read as cells, and what is skipped afterwards is the rest of whatever line
// the reader then stands in.
INSTANTIATE_TEST_SUITE_P(
    ShortLine, ExpectationFileBlock,
    testing::Values(BlockCase{"ByOneLosesItsLastCellAndShiftsNothing",
                              "[DATEN]\r\n888\r\n2888\r\n1188\r\n1138\r\n",
                              {{8, 8, 8, Cr}, {2, 8, 8, 8}, {1, 1, 8, 8}, {1, 1, 3, 8}}},
                    BlockCase{"ByTwoSwallowsTheNextLine",
                              "[DATEN]\r\n88\r\n2888\r\n1188\r\n1138\r\n",
                              {{8, 8, Cr, Lf}, {1, 1, 8, 8}, {1, 1, 3, 8}, {End, End, End, End}}},
                    BlockCase{"ByThreeTakesFromTheNextLineAndSkipsItsRest",
                              "[DATEN]\r\n8\r\n2888\r\n1188\r\n1138\r\n",
                              {{8, Cr, Lf, 2}, {1, 1, 8, 8}, {1, 1, 3, 8}, {End, End, End, End}}},
                    BlockCase{"EmptyTakesFromTheNextLine",
                              "[DATEN]\r\n\r\n2888\r\n1188\r\n1138\r\n",
                              {{Cr, Lf, 2, 8}, {1, 1, 8, 8}, {1, 1, 3, 8}, {End, End, End, End}}},
                    BlockCase{"ByOneWithLfSwallowsTheNextLine",
                              "[DATEN]\n888\n2888\n1188\n1138\n",
                              {{8, 8, 8, Lf}, {1, 1, 8, 8}, {1, 1, 3, 8}, {End, End, End, End}}},
                    BlockCase{"ByTwoWithLfTakesFromTheNextLine",
                              "[DATEN]\n88\n2888\n1188\n1138\n",
                              {{8, 8, Lf, 2}, {1, 1, 8, 8}, {1, 1, 3, 8}, {End, End, End, End}}},
                    BlockCase{"TheThird",
                              "[DATEN]\r\n8888\r\n2888\r\n1\r\n1138\r\n",
                              {{8, 8, 8, 8}, {2, 8, 8, 8}, {1, Cr, Lf, 1}, {End, End, End, End}}},
                    BlockCase{"TheLastRunsIntoTheEnd",
                              "[DATEN]\r\n8888\r\n2888\r\n1188\r\n11\r\n",
                              {{8, 8, 8, 8}, {2, 8, 8, 8}, {1, 1, 8, 8}, {1, 1, Cr, Lf}}},
                    BlockCase{"AllByOne",
                              "[DATEN]\r\n888\r\n288\r\n118\r\n113\r\n",
                              {{8, 8, 8, Cr}, {2, 8, 8, Cr}, {1, 1, 8, Cr}, {1, 1, 3, Cr}}}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    LongLine, ExpectationFileBlock,
    testing::Values(BlockCase{"DigitsBeyondTheFourthAreSkipped",
                              "[DATEN]\r\n88889\r\n28887777\r\n11881\r\n11380\r\n", Whole},
                    BlockCase{"TextBehindTheDigitsIsSkipped",
                              "[DATEN]\r\n8888 A1\r\n2888 [DATEN]\r\n1188\tB=2\r\n1138;\r\n", Whole},
                    BlockCase{"LinesBeyondTheFourthAreNotRead",
                              "[DATEN]\r\n8888\r\n2888\r\n1188\r\n1138\r\n9999\r\n", Whole}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    OtherCharacters, ExpectationFileBlock,
    testing::Values(BlockCase{"GiveTheirCodeMinus48As8Bits",
                              "[DATEN]\r\n A/:\r\n\0\x7F\xFF\x80\r\na=[;\r\n\t\"~?\r\n"s,
                              {{240, 17, 255, 10}, {208, 79, 207, 80}, {49, 13, 43, 11}, {217, 242, 78, 15}}},
                    BlockCase{"EveryDigitIsItsValue",
                              "[DATEN]\r\n0123\r\n4567\r\n8901\r\n2345\r\n",
                              {{0, 1, 2, 3}, {4, 5, 6, 7}, {8, 9, 0, 1}, {2, 3, 4, 5}}},
                    BlockCase{"BlanksInFrontShiftTheCells",
                              "[DATEN]\r\n 8888\r\n2888\r\n1188\r\n1138\r\n",
                              {{240, 8, 8, 8}, {2, 8, 8, 8}, {1, 1, 8, 8}, {1, 1, 3, 8}}},
                    BlockCase{"TheEndOfFileCharacterIsACharacter",
                              "[DATEN]\r\n\x1A"
                              "888\r\n2888\r\n1188\r\n1138\r\n",
                              {{234, 8, 8, 8}, {2, 8, 8, 8}, {1, 1, 8, 8}, {1, 1, 3, 8}}}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    EndOfFile, ExpectationFileBlock,
    testing::Values(
        BlockCase{"WithoutABlock", "", Nothing}, BlockCase{"BehindTheHeader", "[DATEN]", Nothing},
        BlockCase{"BehindTheHeaderLine", "[DATEN]\r\n", Nothing},
        BlockCase{"InTheFirstRow", "[DATEN]\r\n88", {{8, 8, End, End}, Nothing[0], Nothing[0], Nothing[0]}},
        BlockCase{"InTheMiddleOfARow",
                  "[DATEN]\r\n8888\r\n2888\r\n118",
                  {{8, 8, 8, 8}, {2, 8, 8, 8}, {1, 1, 8, End}, Nothing[0]}},
        BlockCase{"BetweenCrAndLf",
                  "[DATEN]\r\n8888\r\n2888\r",
                  {{8, 8, 8, 8}, {2, 8, 8, 8}, Nothing[0], Nothing[0]}},
        BlockCase{"WithTooFewLines",
                  "[DATEN]\r\n8888\r\n2888\r\n",
                  {{8, 8, 8, 8}, {2, 8, 8, 8}, Nothing[0], Nothing[0]}},
        BlockCase{"WithoutALastLineBreak", "[DATEN]\r\n8888\r\n2888\r\n1188\r\n1138", Whole}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(LineBreaks, ExpectationFileBlock,
                         testing::Values(BlockCase{"CrLf", "[DATEN]\r\n8888\r\n2888\r\n1188\r\n1138\r\n",
                                                   Whole},
                                         BlockCase{"Lf", "[DATEN]\n8888\n2888\n1188\n1138\n", Whole},
                                         BlockCase{"LoneCr", "[DATEN]\r8888\r2888\r1188\r1138\r", Whole},
                                         BlockCase{"Mixed", "[DATEN]\r8888\n2888\r\n1188\r1138\n", Whole}),
                         CaseName());

// The block begins after the first line that contains the text, wherever it is.
INSTANTIATE_TEST_SUITE_P(
    Header, ExpectationFileBlock,
    testing::Values(
        BlockCase{"WithBlanksAround", "  [DATEN]  \r\n8888\r\n2888\r\n1188\r\n1138\r\n", Whole},
        BlockCase{"InsideALine", "x[DATEN]y\r\n8888\r\n2888\r\n1188\r\n1138\r\n", Whole},
        BlockCase{"InAComment", "; [DATEN] follows\r\n8888\r\n2888\r\n1188\r\n1138\r\n[DATEN]\r\n0000\r\n",
                  Whole},
        BlockCase{"InAValue", "[NOTES]\r\nSEE=[DATEN]\r\n8888\r\n2888\r\n1188\r\n1138\r\n[DATEN]\r\n0000\r\n",
                  Whole},
        BlockCase{"DoubledBrackets", "[[DATEN]]\r\n8888\r\n2888\r\n1188\r\n1138\r\n", Whole},
        BlockCase{"TheFirstOfTwo", "[DATEN]\r\n8888\r\n2888\r\n1188\r\n1138\r\n[DATEN]\r\n0000\r\n", Whole},
        BlockCase{"TwiceInARow",
                  "[DATEN]\r\n[DATEN]\r\n2888\r\n1188\r\n1138\r\n",
                  {{43, 20, 17, 36}, {2, 8, 8, 8}, {1, 1, 8, 8}, {1, 1, 3, 8}}},
        BlockCase{"InLowerCaseIsNone", "[daten]\r\n8888\r\n2888\r\n1188\r\n1138\r\n", Nothing},
        BlockCase{"WithBlanksInsideIsNone", "[ DATEN ]\r\n8888\r\n2888\r\n1188\r\n1138\r\n", Nothing},
        BlockCase{"WithoutBracketIsNone", "DATEN]\r\n8888\r\n2888\r\n1188\r\n1138\r\n", Nothing}),
    CaseName());

}  // namespace
}  // namespace data_test
