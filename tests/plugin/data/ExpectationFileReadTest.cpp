#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <system_error>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"

namespace data_test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;

class ExpectationFileRead : public FileTest {
 protected:
  TShortTestData Read(std::string_view content) const {
    Write("read.exp", content);
    return TShortTestData(Name("read.exp"));
  }
};

TEST_F(ExpectationFileRead, AFileOfFourChannels) {
  const TShortTestData data =
      Read(Lines({"[BEREICH]", "START=1", "ENDE=4", "WIDERSTAND=10", "WIDERSTAND2=2.5", "[OPTION]",
                  "U_KONTROLLE=2", "LASTRELAISKARTE=0", "LASTRELAIS=0", "TIMEOUT=5000", "MAX ERROR=10",
                  "[DATEN]", "8888", "2888", "1188", "1138"}));
  EXPECT_EQ(data.von, 1);
  EXPECT_EQ(data.bis, 4);
  EXPECT_EQ(data.Schwelle, 10.0);
  EXPECT_EQ(data.Schwelle2, 2.5);
  EXPECT_EQ(data.U_Control, 2);
  EXPECT_EQ(data.LastRelaisKarte, 0);
  EXPECT_EQ(data.LastRelais, 0);
  EXPECT_EQ(data.Timeout, 5000);
  EXPECT_EQ(data.MaxError, 10);
  EXPECT_EQ(States(data), (StateRows{{8, 8, 8, 8}, {2, 8, 8, 8}, {1, 1, 8, 8}, {1, 1, 3, 8}}));
  EXPECT_THAT(Resistances(data), Each(-1.0));
  EXPECT_THAT(data.voltages, ElementsAre(0.0, 0.0, 0.0, 0.0));
}

TEST_F(ExpectationFileRead, EveryKeyGoesIntoItsField) {
  const TShortTestData data =
      Read(Lines({"[BEREICH]", "START=11", "ENDE=12", "WIDERSTAND=13.5", "WIDERSTAND2=14.5", "[OPTION]",
                  "U_KONTROLLE=15", "LASTRELAISKARTE=16", "LASTRELAIS=17", "TIMEOUT=18", "MAX ERROR=19",
                  "[DATEN]", "88", "08"}));
  EXPECT_EQ(data.von, 11);
  EXPECT_EQ(data.bis, 12);
  EXPECT_EQ(data.Schwelle, 13.5);
  EXPECT_EQ(data.Schwelle2, 14.5);
  EXPECT_EQ(data.U_Control, 15);
  EXPECT_EQ(data.LastRelaisKarte, 16);
  EXPECT_EQ(data.LastRelais, 17);
  EXPECT_EQ(data.Timeout, 18);
  EXPECT_EQ(data.MaxError, 19);
}

TEST_F(ExpectationFileRead, OnlyARangeAndNoDataBlock) {
  const TShortTestData data = Read(Lines({"[BEREICH]", "START=5", "ENDE=7"}));
  EXPECT_EQ(data.von, 5);
  EXPECT_EQ(data.bis, 7);
  EXPECT_EQ(data.Schwelle, 10.0);
  EXPECT_EQ(data.Schwelle2, 10.0);
  EXPECT_EQ(data.U_Control, 2);
  EXPECT_EQ(data.LastRelaisKarte, 0);
  EXPECT_EQ(data.LastRelais, 0);
  EXPECT_EQ(data.Timeout, 5000);
  EXPECT_EQ(data.MaxError, 10);
  EXPECT_EQ(States(data), (StateRows{{BehindTheEnd, BehindTheEnd, BehindTheEnd},
                                     {BehindTheEnd, BehindTheEnd, BehindTheEnd},
                                     {BehindTheEnd, BehindTheEnd, BehindTheEnd}}));
  EXPECT_THAT(Resistances(data), Each(-1.0));
}

TEST_F(ExpectationFileRead, AnEmptyFileIsChannels1And2WithDefaults) {
  const TShortTestData data = Read("");
  EXPECT_EQ(data.von, 1);
  EXPECT_EQ(data.bis, 2);
  EXPECT_EQ(data.Schwelle, 10.0);
  EXPECT_EQ(data.Schwelle2, 10.0);
  EXPECT_EQ(States(data), (StateRows{{BehindTheEnd, BehindTheEnd}, {BehindTheEnd, BehindTheEnd}}));
}

TEST_F(ExpectationFileRead, WiderstandWithoutWiderstand2SetsBothThresholds) {
  const TShortTestData data = Read(Lines({"[BEREICH]", "WIDERSTAND=25"}));
  EXPECT_EQ(data.Schwelle, 25.0);
  EXPECT_EQ(data.Schwelle2, 25.0);
}

TEST_F(ExpectationFileRead, AnUnreadableWiderstand2IsTheWiderstandJustRead) {
  const TShortTestData data = Read(Lines({"[BEREICH]", "WIDERSTAND2=much", "WIDERSTAND=25"}));
  EXPECT_EQ(data.Schwelle2, 25.0);
}

TEST_F(ExpectationFileRead, AWiderstandThatIsNoNumberIsTen) {
  const TShortTestData data = Read(Lines({"[BEREICH]", "WIDERSTAND=ten", "WIDERSTAND2=3"}));
  EXPECT_EQ(data.Schwelle, 10.0);
  EXPECT_EQ(data.Schwelle2, 3.0);
}

TEST_F(ExpectationFileRead, ABlankBehindFourDigitsIsSkippedWithTheRestOfTheLine) {
  const TShortTestData data =
      Read(Lines({"[BEREICH]", "START=1", "ENDE=4", "[DATEN]", "8888 ", "2888 ", "1188 ", "1138 "}));
  EXPECT_EQ(States(data), (StateRows{{8, 8, 8, 8}, {2, 8, 8, 8}, {1, 1, 8, 8}, {1, 1, 3, 8}}));
}

TEST_F(ExpectationFileRead, ARangeOfOneChannelHasOneLineWithOneDigit) {
  const TShortTestData data = Read(Lines({"[BEREICH]", "START=9", "ENDE=9", "[DATEN]", "9"}));
  EXPECT_EQ(data.von, 9);
  EXPECT_EQ(data.bis, 9);
  EXPECT_EQ(States(data), (StateRows{{9}}));
  EXPECT_THAT(data.voltages, ElementsAre(0.0));
}

TEST_F(ExpectationFileRead, AMissingFileIsNotFound) {
  const auto error = Thrown<std::system_error>([this] { TShortTestData data(Name("missing.exp")); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::no_such_file_or_directory);
  EXPECT_THAT(error->message, HasSubstr(Name("missing.exp")));
  EXPECT_THAT(FolderContent(), testing::IsEmpty());
}

TEST_F(ExpectationFileRead, AFolderIsNoFile) {
  std::filesystem::create_directory(Path("folder.exp"));
  const auto error = Thrown<std::system_error>([this] { TShortTestData data(Name("folder.exp")); });
  ASSERT_TRUE(error);
  EXPECT_THAT(error->message, HasSubstr(Name("folder.exp")));
}

TEST_F(ExpectationFileRead, AnEmptyNameIsAnError) {
  EXPECT_THROW(TShortTestData(std::string{}), std::system_error);
}

TEST_F(ExpectationFileRead, LeavesTheFileAsItIs) {
  const std::string content = "[BEREICH]\nENDE=3\n[DATEN]\n88";
  Read(content);
  EXPECT_EQ(Content("read.exp"), content);
  EXPECT_THAT(FolderContent(), ElementsAre("read.exp"));
}

TEST_F(ExpectationFileRead, NamesWithUmlautsAndBlanks) {
  Write("Kabelbaum für Anhänger.exp", Lines({"[BEREICH]", "ENDE=1", "[DATEN]", "9"}));
  const TShortTestData data(Name("Kabelbaum für Anhänger.exp"));
  EXPECT_EQ(States(data), (StateRows{{9}}));
}

// Whatever the process's current directory is, gone back to at the end.
class CurrentDirectory {
 public:
  explicit CurrentDirectory(const std::filesystem::path& folder) { std::filesystem::current_path(folder); }
  ~CurrentDirectory() { std::filesystem::current_path(old_); }

 private:
  std::filesystem::path old_ = std::filesystem::current_path();
};

TEST_F(ExpectationFileRead, ARelativeNameIsTakenAgainstTheCurrentDirectory) {
  Write("relative.exp", Lines({"[BEREICH]", "ENDE=1", "[DATEN]", "9"}));
  const CurrentDirectory inside(Folder());
  EXPECT_EQ(States(TShortTestData("relative.exp")), (StateRows{{9}}));
  const auto error = Thrown<std::system_error>([] { TShortTestData data("nothing.exp"); });
  ASSERT_TRUE(error);
  EXPECT_THAT(error->message, HasSubstr(Name("nothing.exp")));
}

// ---- keys ----

struct IntegerKey {
  const char* name;
  const char* section;
  const char* key;
  std::int32_t TShortTestData::*field;
  std::int32_t fallback;
};

class ExpectationFileInteger : public ExpectationFileRead, public testing::WithParamInterface<IntegerKey> {
 protected:
  std::int32_t ReadAs(const std::string& text) const {
    // The range stays small whichever end is being read.
    const std::string other = std::string(GetParam().key) == "START" ? "ENDE=1\r\n" : "START=2147483647\r\n";
    const bool isRange = std::string(GetParam().section) == "BEREICH";
    return Read("[" + std::string(GetParam().section) + "]\r\n" + (isRange ? other : "") + GetParam().key +
                text + "\r\n").*
           GetParam().field;
  }
};

TEST_P(ExpectationFileInteger, IsReadAsDecimal) {
  EXPECT_EQ(ReadAs("=7"), 7);
  EXPECT_EQ(ReadAs("=0"), 0);
  EXPECT_EQ(ReadAs("=007"), 7);
  EXPECT_EQ(ReadAs("=+7"), 7);
  EXPECT_EQ(ReadAs(" = 7 "), 7);
  EXPECT_EQ(ReadAs("=\"7\""), 7);
  EXPECT_EQ(ReadAs("=2147483647"), 2147483647);
}

TEST_P(ExpectationFileInteger, HasItsDefaultWhenMissingOrUnreadable) {
  for (const char* text : {"", "=", "= ", "=seven", "=7.0", "=7,0", "=7 8", "=0x7", "=7;", "=1e1", "=-",
                           "=+-7", "=2147483648", "=-2147483649", "=99999999999999999999", "X=7"}) {
    EXPECT_EQ(ReadAs(text), GetParam().fallback) << text;
  }
}

INSTANTIATE_TEST_SUITE_P(
    , ExpectationFileInteger,
    testing::Values(IntegerKey{"Start", "BEREICH", "START", &TShortTestData::von, 1},
                    IntegerKey{"Ende", "BEREICH", "ENDE", &TShortTestData::bis, 2},
                    IntegerKey{"UKontrolle", "OPTION", "U_KONTROLLE", &TShortTestData::U_Control, 2},
                    IntegerKey{"LastRelaisKarte", "OPTION", "LASTRELAISKARTE",
                               &TShortTestData::LastRelaisKarte, 0},
                    IntegerKey{"LastRelais", "OPTION", "LASTRELAIS", &TShortTestData::LastRelais, 0},
                    IntegerKey{"Timeout", "OPTION", "TIMEOUT", &TShortTestData::Timeout, 5000},
                    IntegerKey{"MaxError", "OPTION", "MAX ERROR", &TShortTestData::MaxError, 10}),
    CaseName());

TEST_F(ExpectationFileRead, ANegativeRelayNumberIsKept) {
  const TShortTestData data = Read(Lines({"[OPTION]", "LASTRELAISKARTE=-1", "LASTRELAIS=-1"}));
  EXPECT_EQ(data.LastRelaisKarte, -1);
  EXPECT_EQ(data.LastRelais, -1);
}

TEST_F(ExpectationFileRead, AKeyInTheOtherSectionIsNotRead) {
  const TShortTestData data = Read(Lines({"[OPTION]", "START=3", "WIDERSTAND=4", "[BEREICH]", "TIMEOUT=5"}));
  EXPECT_EQ(data.von, 1);
  EXPECT_EQ(data.Schwelle, 10.0);
  EXPECT_EQ(data.Timeout, 5000);
}

TEST_F(ExpectationFileRead, ForeignSectionsAndKeysAreIgnored) {
  const TShortTestData data =
      Read(Lines({"; a harness", "START=8", "[PROJECT]", "START=9", "[BEREICH]", "AUTHOR=me", "START=3",
                  "ENDE=3", "[OTHER]", "ENDE=5", "[DATEN]", "9"}));
  EXPECT_EQ(data.von, 3);
  EXPECT_EQ(data.bis, 3);
  EXPECT_EQ(States(data), (StateRows{{9}}));
}

TEST_F(ExpectationFileRead, SectionsBehindTheDataBlockAreRead) {
  const TShortTestData data = Read(Lines({"[DATEN]", "98", "29", "[BEREICH]", "START=4", "ENDE=5"}));
  EXPECT_EQ(data.von, 4);
  EXPECT_EQ(data.bis, 5);
  EXPECT_EQ(States(data), (StateRows{{9, 8}, {2, 9}}));
}

struct ThresholdCase {
  const char* name;
  const char* separator;
  const char* text;
  double schwelle;
};

class ExpectationFileThreshold : public ExpectationFileRead,
                                 public testing::WithParamInterface<ThresholdCase> {};

TEST_P(ExpectationFileThreshold, IsReadWithTheDecimalSeparatorInForce) {
  UseDecimalSeparator(GetParam().separator);
  const TShortTestData data = Read(Lines({"[BEREICH]", std::string("WIDERSTAND=") + GetParam().text}));
  EXPECT_EQ(data.Schwelle, GetParam().schwelle);
  EXPECT_EQ(data.Schwelle2, GetParam().schwelle);
}

// A file that comes from a country with the other separator has unreadable thresholds, hence the defaults.
INSTANTIATE_TEST_SUITE_P(, ExpectationFileThreshold,
                         testing::Values(ThresholdCase{"PointUnderPoint", ".", "2.5", 2.5},
                                         ThresholdCase{"CommaUnderComma", ",", "2,5", 2.5},
                                         ThresholdCase{"CommaUnderPoint", ".", "2,5", 10.0},
                                         ThresholdCase{"PointUnderComma", ",", "2.5", 10.0},
                                         ThresholdCase{"WholeNumberUnderPoint", ".", "25", 25.0},
                                         ThresholdCase{"WholeNumberUnderComma", ",", "25", 25.0},
                                         ThresholdCase{"ExponentUnderComma", ",", "1,5E3", 1500.0},
                                         ThresholdCase{"SeparatorOfTwoBytes", "\xD9\xAB",
                                                       "2\xD9\xAB"
                                                       "5",
                                                       2.5},
                                         ThresholdCase{"Negative", ".", "-2.5", -2.5},
                                         ThresholdCase{"NotANumber", ".", "NAN", 10.0},
                                         ThresholdCase{"Infinite", ".", "INF", 10.0},
                                         ThresholdCase{"BeyondDouble", ".", "1E400", 10.0}),
                         CaseName());

// ---- how files come from other programs ----

TEST_F(ExpectationFileRead, TheHeaderAsTheVeryFirstLine) {
  EXPECT_EQ(States(Read("[DATEN]\r\n98\r\n29\r\n")), (StateRows{{9, 8}, {2, 9}}));
}

TEST_F(ExpectationFileRead, AByteOrderMarkDoesNotHideTheFirstSection) {
  const TShortTestData data =
      Read("\xEF\xBB\xBF" + Lines({"[BEREICH]", "START=5", "ENDE=6", "[DATEN]", "88", "28"}));
  EXPECT_EQ(data.von, 5);
  EXPECT_EQ(data.bis, 6);
  EXPECT_EQ(States(data), (StateRows{{8, 8}, {2, 8}}));
}

TEST_F(ExpectationFileRead, AByteOrderMarkBeforeTheHeader) {
  EXPECT_EQ(States(Read("\xEF\xBB\xBF[DATEN]\r\n98\r\n29\r\n")), (StateRows{{9, 8}, {2, 9}}));
}

struct LineEndCase {
  const char* name;
  const char* lineEnd;
};

class ExpectationFileLineEnd : public ExpectationFileRead, public testing::WithParamInterface<LineEndCase> {};

TEST_P(ExpectationFileLineEnd, IsAccepted) {
  const TShortTestData data = Read(ReplaceAll(Lines({"[BEREICH]", "START=3", "ENDE=4", "WIDERSTAND=2.5", "",
                                                     "[OPTION]", "TIMEOUT=20", "[DATEN]", "98", "29"}),
                                              "\r\n", GetParam().lineEnd));
  EXPECT_EQ(data.von, 3);
  EXPECT_EQ(data.bis, 4);
  EXPECT_EQ(data.Schwelle, 2.5);
  EXPECT_EQ(data.Timeout, 20);
  EXPECT_EQ(States(data), (StateRows{{9, 8}, {2, 9}}));
}

INSTANTIATE_TEST_SUITE_P(, ExpectationFileLineEnd,
                         testing::Values(LineEndCase{"CrLf", "\r\n"}, LineEndCase{"Lf", "\n"},
                                         LineEndCase{"LoneCr", "\r"}),
                         CaseName());

TEST_F(ExpectationFileRead, NamesOfSectionsAndKeysInAnyCase) {
  const TShortTestData data =
      Read(Lines({"[Bereich]", "start=3", "Ende=3", "[option]", "max Error=4", "[DATEN]", "9"}));
  EXPECT_EQ(data.von, 3);
  EXPECT_EQ(data.bis, 3);
  EXPECT_EQ(data.MaxError, 4);
}

TEST_F(ExpectationFileRead, OfDuplicateSectionsAndKeysTheFirstCounts) {
  const TShortTestData data =
      Read(Lines({"[BEREICH]", "ENDE=3", "ENDE=4", "[OPTION]", "TIMEOUT=1", "[BEREICH]", "START=3", "ENDE=9",
                  "[OPTION]", "TIMEOUT=2", "MAX ERROR=7"}));
  EXPECT_EQ(data.von, 1);
  EXPECT_EQ(data.bis, 3);
  EXPECT_EQ(data.Timeout, 1);
  EXPECT_EQ(data.MaxError, 10);
}

// Found before anything is read: a file of two gigabytes would take a minute, and twice as much memory.
TEST_F(ExpectationFileRead, AFileAboveSixtyFourMebibytesIsAnErrorThatNamesItAndItsSize) {
  Write("huge.exp", "");
  std::filesystem::resize_file(Path("huge.exp"), std::uintmax_t{2} << 30U);
  const std::string text =
      "Die Erwartungsdatei '" + Name("huge.exp") + "' ist zu groß: 2147483648 Byte, möglich sind 67108864.";
  const auto reading = Thrown<std::length_error>([this] { TShortTestData data(Name("huge.exp")); });
  const auto saving =
      Thrown<std::length_error>([this] { TShortTestData(1, 2).SaveExpectationFile(Name("huge.exp")); });
  for (const auto& error : {reading, saving}) {
    ASSERT_TRUE(error);
    EXPECT_EQ(error->message, text);
  }
  EXPECT_EQ(std::filesystem::file_size(Path("huge.exp")), std::uintmax_t{2} << 30U);
}

TEST_F(ExpectationFileRead, AFileOfSixtyFourMebibytesIsRead) {
  Write("large.exp", "[BEREICH]\r\nENDE=3\r\n");
  std::filesystem::resize_file(Path("large.exp"), std::uintmax_t{64} << 20U);
  EXPECT_EQ(TShortTestData(Name("large.exp")).bis, 3);
}

}  // namespace
}  // namespace data_test
