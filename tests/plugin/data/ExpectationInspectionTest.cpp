// What can be told of a damaged expectation file before it is trusted.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <system_error>

#include "plugin/data/ExpectationInspection.h"
#include "plugin/data/ExpectationText.h"
#include "tests/plugin/data/DataFixture.h"

namespace data_test {
namespace {

using shorttest::ExpectationInspection;
using shorttest::InspectExpectationFile;
using shorttest::InspectExpectationText;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Inspection : public FileTest {
 protected:
  // Channels 3 to 6: 3 and 4 connected, 5 suspended, 4 and 6 excluded from each other.
  static std::string Keys() {
    return Lines({"[BEREICH]", "START=3", "ENDE=6", "WIDERSTAND=12.5", "WIDERSTAND2=250", "[OPTION]",
                  "U_KONTROLLE=1", "LASTRELAISKARTE=2", "LASTRELAIS=7", "TIMEOUT=1500", "MAX ERROR=25"});
  }
  static std::string ValidFile() { return Keys() + Lines({"[DATEN]", "8888", "2888", "4498", "1348"}); }

  static bool ShowsNoDamage(const ExpectationInspection& seen) {
    return seen.startReadable && seen.endReadable && seen.von <= seen.bis && seen.missingKeys.empty() &&
           seen.unreadableKeys.empty() && seen.hasBlock && seen.wholeRows == seen.bis - seen.von + 1 &&
           seen.strangeCells == 0;
  }
};

TEST_F(Inspection, OfAnUndamagedFileCountsItsPairsAndChannels) {
  Write("good.exp", ValidFile());
  const ExpectationInspection seen = InspectExpectationFile(Name("good.exp"));
  EXPECT_TRUE(ShowsNoDamage(seen));
  EXPECT_EQ(seen.von, 3);
  EXPECT_EQ(seen.bis, 6);
  EXPECT_EQ(seen.wholeRows, 4);
  EXPECT_EQ(seen.unknownPairs, 0);
  EXPECT_EQ(seen.connectedPairs, 1);
  EXPECT_EQ(seen.excludedPairs, 1);
  EXPECT_EQ(seen.suspendedChannels, 1);
  EXPECT_EQ(Content("good.exp"), ValidFile());
}

TEST_F(Inspection, OfWhatIsSavedShowsNoDamage) {
  for (const std::int32_t bis : {1, 2, 60}) {
    TShortTestData data(1, bis);
    data.Schwelle = 0.5;
    if (bis == 60) data.SuspendChannel(7, 24.0);
    data.SaveExpectationFile(Name("saved.exp"));
    const ExpectationInspection seen = InspectExpectationFile(Name("saved.exp"));
    EXPECT_TRUE(ShowsNoDamage(seen)) << bis;
    EXPECT_EQ(seen.unknownPairs, bis == 60 ? 59 * 58 / 2 : bis == 2 ? 1 : 0);
  }
}

TEST_F(Inspection, OfAMissingFileNamesIt) {
  const auto error =
      Thrown<std::system_error>([this] { static_cast<void>(InspectExpectationFile(Name("none.exp"))); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::no_such_file_or_directory);
  EXPECT_THAT(error->message, HasSubstr(Name("none.exp")));
}

struct KeyCase {
  const char* name;
  std::string line;  // instead of "ENDE=6"
  bool endReadable;
  std::int32_t bis;
};

class InspectedEnd : public Inspection, public testing::WithParamInterface<KeyCase> {};

TEST_P(InspectedEnd, IsReadableWhereItsValueIsAnIntegerAsAWhole) {
  const ExpectationInspection seen =
      InspectExpectationText(ReplaceAll(ValidFile(), "ENDE=6", GetParam().line));
  EXPECT_EQ(seen.endReadable, GetParam().endReadable);
  EXPECT_EQ(seen.bis, GetParam().bis);
  EXPECT_TRUE(seen.startReadable);
  EXPECT_EQ(ShowsNoDamage(seen), GetParam().endReadable);
}

INSTANTIATE_TEST_SUITE_P(
    , InspectedEnd,
    testing::Values(KeyCase{"Plain", "ENDE=6", true, 6}, KeyCase{"WithBlanks", " ende =  6 ", true, 6},
                    KeyCase{"LettersAfterIt", "ENDE=6x", false, 2}, KeyCase{"Fraction", "ENDE=6.0", false, 2},
                    KeyCase{"Nothing", "ENDE=", false, 2}, KeyCase{"TooLarge", "ENDE=2147483648", false, 2},
                    KeyCase{"Missing", "", false, 2}, KeyCase{"Misspelt", "ENDX=6", false, 2},
                    KeyCase{"AComment", ";ENDE=6", false, 2}),
    CaseName());

TEST_F(Inspection, NamesTheKeysThatAreMissingAndThoseThatAreUnreadable) {
  std::string content = ReplaceAll(ValidFile(), "START=3", "START=3x");
  content = ReplaceAll(content, "WIDERSTAND=12.5", "WIDERSTAND=12,5");
  content = ReplaceAll(content, "TIMEOUT=1500\r\n", "");
  const ExpectationInspection seen = InspectExpectationText(content);
  EXPECT_THAT(seen.unreadableKeys, ElementsAre("START", "WIDERSTAND"));
  EXPECT_THAT(seen.missingKeys, ElementsAre("TIMEOUT"));
  EXPECT_FALSE(seen.startReadable);
  EXPECT_TRUE(seen.endReadable);
}

TEST_F(Inspection, OfAnEmptyFileFindsNothing) {
  const ExpectationInspection seen = InspectExpectationText("");
  EXPECT_FALSE(seen.startReadable);
  EXPECT_FALSE(seen.endReadable);
  EXPECT_EQ(seen.missingKeys.size(), 9U);
  EXPECT_FALSE(seen.hasBlock);
  EXPECT_EQ(seen.wholeRows, 0);
  EXPECT_EQ(seen.strangeCells, 4) << "the two channels of the default range";
}

TEST_F(Inspection, OfARangeThatIsRefusedCountsNoCells) {
  const ExpectationInspection seen =
      InspectExpectationText(ReplaceAll(ValidFile(), "ENDE=6", "ENDE=2147483647"));
  EXPECT_TRUE(seen.endReadable);
  EXPECT_EQ(seen.bis, 2147483647);
  EXPECT_TRUE(seen.hasBlock);
  EXPECT_EQ(seen.wholeRows, 0);
  EXPECT_EQ(seen.strangeCells, 0);
}

TEST_F(Inspection, OfAnEmptyRangeCountsNoCells) {
  const ExpectationInspection seen = InspectExpectationText(ReplaceAll(ValidFile(), "ENDE=6", "ENDE=-9"));
  EXPECT_EQ(seen.wholeRows, 0);
  EXPECT_EQ(seen.strangeCells, 0);
}

struct InspectedBlock {
  const char* name;
  std::string block;
  std::int32_t wholeRows;
  std::int64_t strangeCells;
};

class InspectedCells : public Inspection, public testing::WithParamInterface<InspectedBlock> {};

TEST_P(InspectedCells, AreCountedAsTheyAreRead) {
  const ExpectationInspection seen = InspectExpectationText(Keys() + GetParam().block);
  EXPECT_EQ(seen.hasBlock, GetParam().block.find("[DATEN]") != std::string::npos);
  EXPECT_EQ(seen.wholeRows, GetParam().wholeRows);
  EXPECT_EQ(seen.strangeCells, GetParam().strangeCells);
}

INSTANTIATE_TEST_SUITE_P(
    , InspectedCells,
    testing::Values(
        InspectedBlock{"NoBlock", Lines({"8888", "2888", "4498", "1348"}), 0, 16},
        InspectedBlock{"BlanksAtTheEnd", Lines({"[DATEN]", "8888  ", "2888", "4498", "1348"}), 4, 0},
        InspectedBlock{"AnotherDigitAtTheEnd", Lines({"[DATEN]", "88888", "2888", "4498", "1348"}), 3, 0},
        InspectedBlock{"LineTooShort", Lines({"[DATEN]", "8888", "288", "4498", "1348"}), 3, 1},
        InspectedBlock{"LineMissing", Lines({"[DATEN]", "8888", "2888", "4498"}), 3, 4},
        InspectedBlock{"LineTooMany", Lines({"[DATEN]", "8888", "2888", "4498", "1348", "12"}), 4, 0},
        InspectedBlock{"NoLastLineBreak", "[DATEN]\r\n8888\r\n2888\r\n4498\r\n1348", 4, 0},
        InspectedBlock{"LettersAsStates", Lines({"[DATEN]", "8888", "A888", "4498", "1348"}), 3, 1},
        InspectedBlock{"TheReservedState", Lines({"[DATEN]", "8888", "5888", "4498", "1348"}), 3, 1},
        InspectedBlock{"PairStateOnTheDiagonal", Lines({"[DATEN]", "8888", "2188", "4498", "1348"}), 4, 1},
        InspectedBlock{"PairStateAboveTheDiagonal", Lines({"[DATEN]", "8888", "2888", "4491", "1348"}), 4, 1},
        InspectedBlock{"ChannelStateOfAPair", Lines({"[DATEN]", "8888", "8888", "4498", "1948"}), 4, 2},
        InspectedBlock{"NotTestableWithBothInUse", Lines({"[DATEN]", "8888", "4888", "4498", "1348"}), 4, 1},
        InspectedBlock{"NotTestableNoMore", Lines({"[DATEN]", "8888", "2888", "4488", "1348"}), 4, 3}),
    CaseName());

// Whatever is cut off, it shows; but for the last line break and what saving adds after the block.
TEST_F(Inspection, EveryTruncationShows) {
  const std::string valid = ValidFile();
  for (std::size_t size = 0; size < valid.size() - 2; ++size) {
    EXPECT_FALSE(ShowsNoDamage(InspectExpectationText(valid.substr(0, size)))) << "cut to " << size;
  }
  EXPECT_TRUE(ShowsNoDamage(InspectExpectationText(valid.substr(0, valid.size() - 2))));
}

// A byte that became another either shows, or what is read is an expectation: every cell is a state that may
// stand there, and comes from its own line.
TEST_F(Inspection, ADamagedByteShowsOrLeavesAnExpectation) {
  const std::string valid = ValidFile();
  int hidden = 0;
  for (std::size_t position = 0; position < valid.size(); ++position) {
    for (int byte = 0; byte < 256; ++byte) {
      std::string content = valid;
      content[position] = static_cast<char>(byte);
      if (content == valid || !ShowsNoDamage(InspectExpectationText(content))) continue;
      ++hidden;
      const StateRows states = States(shorttest::ReadExpectationText(content));
      ASSERT_EQ(states.size(), 4U) << "byte " << position << " replaced by " << byte;
      for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
          const int state = states[row][column];
          const bool mayStand = row == column  ? state == 8 || state == 9
                                : row < column ? state == 8
                                               : state <= 4;
          ASSERT_TRUE(mayStand) << "byte " << position << " replaced by " << byte;
        }
      }
    }
  }
  EXPECT_GT(hidden, 0) << "one state for another cannot be told";
}

}  // namespace
}  // namespace data_test
