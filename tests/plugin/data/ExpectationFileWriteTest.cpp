#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <system_error>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"

namespace data_test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class ExpectationFileWrite : public FileTest {
 protected:
  // Four channels: 1 and 2 connected, 3 and 4 excluded from each other, the rest open.
  static TShortTestData Example() {
    TShortTestData data(1, 4);
    data.Schwelle2 = 2.5;
    data.SetC(3, 2, CellState::ExcludedPair, -1.0);
    data.SetC(1, 0, CellState::Connected, 0.4);
    for (const int row : {2, 3}) {
      for (const int column : {0, 1}) data.SetC(row, column, CellState::NotConnected, 1e6);
    }
    return data;
  }

  static std::string ExampleFile() {
    return Lines({"[BEREICH]", "START=1", "ENDE=4", "WIDERSTAND=10", "WIDERSTAND2=2.5", "[OPTION]",
                  "U_KONTROLLE=2", "LASTRELAISKARTE=0", "LASTRELAIS=0", "TIMEOUT=5000", "MAX ERROR=10",
                  "[DATEN]", "8888", "2888", "1188", "1138"});
  }

  std::string Saved(const TShortTestData& data) const {
    data.SaveExpectationFile(Name("saved.exp"));
    return Content("saved.exp");
  }

  std::string SavedOver(std::string_view old, const TShortTestData& data) const {
    Write("saved.exp", old);
    return Saved(data);
  }

  static void ExpectSameFields(const TShortTestData& a, const TShortTestData& b) {
    EXPECT_EQ(a.von, b.von);
    EXPECT_EQ(a.bis, b.bis);
    EXPECT_EQ(a.Schwelle, b.Schwelle);
    EXPECT_EQ(a.Schwelle2, b.Schwelle2);
    EXPECT_EQ(a.U_Control, b.U_Control);
    EXPECT_EQ(a.LastRelaisKarte, b.LastRelaisKarte);
    EXPECT_EQ(a.LastRelais, b.LastRelais);
    EXPECT_EQ(a.Timeout, b.Timeout);
    EXPECT_EQ(a.MaxError, b.MaxError);
  }
};

TEST_F(ExpectationFileWrite, WritesTheFileOfFourChannelsByteForByte) {
  EXPECT_EQ(Saved(Example()), ExampleFile());
}

TEST_F(ExpectationFileWrite, AFreshInstanceReadsBackTheSame) {
  const TShortTestData data(1, 4);
  Saved(data);
  const TShortTestData back(Name("saved.exp"));
  ExpectSameFields(back, data);
  EXPECT_EQ(States(back), States(data));
  EXPECT_THAT(Resistances(back), Each(-1.0));
  EXPECT_THAT(back.voltages, ElementsAre(0.0, 0.0, 0.0, 0.0));
}

TEST_F(ExpectationFileWrite, ResistancesAndVoltagesAreNotKept) {
  TShortTestData data = Example();
  data.voltages = {1.0, 2.0, 3.0, 4.0};
  Saved(data);
  const TShortTestData back(Name("saved.exp"));
  EXPECT_EQ(States(back), States(data));
  EXPECT_THAT(Resistances(back), Each(-1.0));
  EXPECT_THAT(back.voltages, Each(0.0));
}

TEST_F(ExpectationFileWrite, ASuspendedChannelIsWrittenAs9AndLosesItsVoltage) {
  TShortTestData data(1, 3);
  data.SuspendChannel(1, 12.5);
  EXPECT_THAT(Saved(data), EndsWith("[DATEN]\r\n888\r\n498\r\n048\r\n"));
  const TShortTestData back(Name("saved.exp"));
  EXPECT_EQ(back.Get(1, 1), CellState::Suspended);
  EXPECT_EQ(back.GetVoltage(1), 0.0);
}

TEST_F(ExpectationFileWrite, AFileOfOneChannelHasOneLineWithOneDigit) {
  EXPECT_THAT(Saved(TShortTestData(17, 17)), EndsWith("[DATEN]\r\n8\r\n"));
}

TEST_F(ExpectationFileWrite, EveryFieldGoesIntoItsKey) {
  TShortTestData data(11, 11);
  data.Schwelle = 13.5;
  data.Schwelle2 = 14.25;
  data.U_Control = 15;
  data.LastRelaisKarte = -1;
  data.LastRelais = 17;
  data.Timeout = 2147483647;
  data.MaxError = -2147483648;
  EXPECT_EQ(Saved(data), Lines({"[BEREICH]", "START=11", "ENDE=11", "WIDERSTAND=13.5", "WIDERSTAND2=14.25",
                                "[OPTION]", "U_KONTROLLE=15", "LASTRELAISKARTE=-1", "LASTRELAIS=17",
                                "TIMEOUT=2147483647", "MAX ERROR=-2147483648", "[DATEN]", "8"}));
  ExpectSameFields(TShortTestData(Name("saved.exp")), data);
}

TEST_F(ExpectationFileWrite, TheFullSquareIsWrittenAsItStands) {
  TShortTestData data(1, 2);
  data.connections[0][0].state = CellState::Reserved;
  data.connections[0][1].state = static_cast<CellState>(7);
  data.connections[1][0].state = CellState::NotTestable;
  data.connections[1][1].state = CellState::Suspended;
  EXPECT_THAT(Saved(data), EndsWith("[DATEN]\r\n57\r\n49\r\n"));
  EXPECT_EQ(States(TShortTestData(Name("saved.exp"))), States(data));
}

// Decimal without separators, so a state that only a damaged file can hold makes its line longer.
TEST_F(ExpectationFileWrite, AnUndefinedStateIsWrittenWithAllItsDigits) {
  TShortTestData data(1, 2);
  data.SetC(1, 0, static_cast<CellState>(221), -1.0);
  EXPECT_THAT(Saved(data), EndsWith("[DATEN]\r\n88\r\n2218\r\n"));
}

TEST_F(ExpectationFileWrite, AnotherFileIsNotLeftBehind) {
  Saved(Example());
  EXPECT_THAT(FolderContent(), ElementsAre("saved.exp"));
  Saved(Example());
  EXPECT_THAT(FolderContent(), ElementsAre("saved.exp"));
}

TEST_F(ExpectationFileWrite, NamesWithUmlautsAndBlanks) {
  Example().SaveExpectationFile(Name("Kabelbaum für Anhänger.exp"));
  EXPECT_THAT(FolderContent(), ElementsAre("Kabelbaum für Anhänger.exp"));
  EXPECT_EQ(Content("Kabelbaum für Anhänger.exp"), ExampleFile());
}

TEST_F(ExpectationFileWrite, ARelativeNameIsTakenAgainstTheCurrentDirectory) {
  const std::filesystem::path old = std::filesystem::current_path();
  std::filesystem::current_path(Folder());
  Example().SaveExpectationFile("bare.exp");
  std::filesystem::current_path(old);
  EXPECT_EQ(Content("bare.exp"), ExampleFile());
}

// ---- decimal separator ----

struct SeparatorCase {
  const char* name;
  const char* separator;
  double schwelle;
  const char* text;
};

class ExpectationFileSeparator : public ExpectationFileWrite,
                                 public testing::WithParamInterface<SeparatorCase> {};

TEST_P(ExpectationFileSeparator, IsWrittenAndReadBack) {
  UseDecimalSeparator(GetParam().separator);
  TShortTestData data(1, 1);
  data.Schwelle = GetParam().schwelle;
  EXPECT_THAT(Saved(data), HasSubstr(std::string("\r\nWIDERSTAND=") + GetParam().text + "\r\n"));
  EXPECT_EQ(TShortTestData(Name("saved.exp")).Schwelle, GetParam().schwelle);
}

INSTANTIATE_TEST_SUITE_P(, ExpectationFileSeparator,
                         testing::Values(SeparatorCase{"Point", ".", 2.5, "2.5"},
                                         SeparatorCase{"Comma", ",", 2.5, "2,5"},
                                         SeparatorCase{"WholeUnderPoint", ".", 10.0, "10"},
                                         SeparatorCase{"WholeUnderComma", ",", 10.0, "10"},
                                         SeparatorCase{"SmallUnderComma", ",", 0.00125, "0,00125"},
                                         SeparatorCase{"LargeUnderComma", ",", 1.5e16, "1,5E16"},
                                         SeparatorCase{"TwoBytes", "\xD9\xAB", 0.5,
                                                       "0\xD9\xAB"
                                                       "5"}),
                         CaseName());

TEST_F(ExpectationFileWrite, AFileSavedUnderACommaHasDefaultThresholdsUnderAPoint) {
  TShortTestData data(1, 2);
  data.Schwelle = 2.5;
  data.Schwelle2 = 47.5;
  UseDecimalSeparator(",");
  Saved(data);
  UseDecimalSeparator(".");
  const TShortTestData back(Name("saved.exp"));
  EXPECT_EQ(back.Schwelle, 10.0);
  EXPECT_EQ(back.Schwelle2, 10.0);
}

// ---- over an existing file ----

TEST_F(ExpectationFileWrite, TwiceLeavesOneBlockAtTheEndAndOneValuePerKey) {
  const std::string first = Saved(Example());
  EXPECT_EQ(Saved(Example()), first);

  TShortTestData other(2, 3);
  other.Schwelle = 5.0;
  other.MaxError = 1;
  const std::string second = Saved(other);
  EXPECT_EQ(second, Lines({"[BEREICH]", "START=2", "ENDE=3", "WIDERSTAND=5", "WIDERSTAND2=10", "[OPTION]",
                           "U_KONTROLLE=2", "LASTRELAISKARTE=0", "LASTRELAIS=0", "TIMEOUT=5000",
                           "MAX ERROR=1", "[DATEN]", "88", "08"}));
}

TEST_F(ExpectationFileWrite, OtherSectionsKeysCommentsAndTheirOrderStay) {
  const std::string saved = SavedOver(Lines({"; trailer cable, revision 4",
                                             "",
                                             "[PROJECT]",
                                             "AUTHOR = Ada",
                                             "START=77",
                                             "",
                                             "[OPTION]",
                                             "MAX ERROR = 3",
                                             "COLOUR=red",
                                             "; waits longer",
                                             "TIMEOUT=1",
                                             "",
                                             "[BEREICH]",
                                             "ENDE=9",
                                             "WIDERSTAND2=1",
                                             "[DATEN]",
                                             "88",
                                             "28",
                                             "[NOTES]",
                                             "no equals sign here",
                                             "x=[y]"}),
                                      Example());
  EXPECT_EQ(saved, Lines({"; trailer cable, revision 4",
                          "",
                          "[PROJECT]",
                          "AUTHOR = Ada",
                          "START=77",
                          "",
                          "[OPTION]",
                          "MAX ERROR=10",
                          "COLOUR=red",
                          "; waits longer",
                          "TIMEOUT=5000",
                          "U_KONTROLLE=2",
                          "LASTRELAISKARTE=0",
                          "LASTRELAIS=0",
                          "",
                          "[BEREICH]",
                          "ENDE=4",
                          "WIDERSTAND2=2.5",
                          "START=1",
                          "WIDERSTAND=10",
                          "[NOTES]",
                          "no equals sign here",
                          "x=[y]",
                          "[DATEN]",
                          "8888",
                          "2888",
                          "1188",
                          "1138"}));
}

TEST_F(ExpectationFileWrite, AFileOfForeignSectionsAloneGetsOurs) {
  const std::string saved = SavedOver(Lines({"[PROJECT]", "AUTHOR=Ada"}), Example());
  EXPECT_EQ(saved, Lines({"[PROJECT]", "AUTHOR=Ada"}) + ExampleFile());
}

TEST_F(ExpectationFileWrite, AMissingFinalLineBreakIsAdded) {
  EXPECT_EQ(SavedOver("[PROJECT]\r\nAUTHOR=Ada", Example()),
            Lines({"[PROJECT]", "AUTHOR=Ada"}) + ExampleFile());
}

TEST_F(ExpectationFileWrite, AMissingFinalLineBreakOfTheDataBlockDoesNotMatter) {
  std::string old = ExampleFile();
  old.resize(old.size() - 2);
  EXPECT_EQ(SavedOver(old, Example()), ExampleFile());
}

TEST_F(ExpectationFileWrite, AMissingFinalLineBreakBehindAnotherSection) {
  EXPECT_EQ(SavedOver("[DATEN]\r\n8\r\n[PROJECT]\r\nAUTHOR=Ada", Example()),
            Lines({"[PROJECT]", "AUTHOR=Ada"}) + ExampleFile());
}

TEST_F(ExpectationFileWrite, AnEmptyFileIsFilled) { EXPECT_EQ(SavedOver("", Example()), ExampleFile()); }

TEST_F(ExpectationFileWrite, TheOldBlockGoesWithAllItsLines) {
  const std::string saved = SavedOver(
      Lines({"[DATEN]", "8888", "", "; comment", "KEY=1", "no equals sign", "[PROJECT]", "A=1"}), Example());
  EXPECT_EQ(saved, Lines({"[PROJECT]", "A=1"}) + ExampleFile());
}

TEST_F(ExpectationFileWrite, EveryOldBlockGoes) {
  const std::string saved = SavedOver(Lines({"[DATEN]", "8888", "[PROJECT]", "A=1", "[Daten]", "2222",
                                             "[ DATEN2 ]", "B=2", "  [DATEN]  ", "3333"}),
                                      Example());
  EXPECT_EQ(saved, Lines({"[PROJECT]", "A=1", "[ DATEN2 ]", "B=2"}) + ExampleFile());
}

TEST_F(ExpectationFileWrite, ValuesAreReplacedInTheFirstOfDuplicateKeysAndSections) {
  const std::string saved = SavedOver(
      Lines({"[BEREICH]", "START=8", "START=9", "[OPTION]", "[BEREICH]", "ENDE=7"}), TShortTestData(1, 1));
  EXPECT_EQ(saved, Lines({"[BEREICH]", "START=1", "START=9", "ENDE=1", "WIDERSTAND=10", "WIDERSTAND2=10",
                          "[OPTION]", "U_KONTROLLE=2", "LASTRELAISKARTE=0", "LASTRELAIS=0", "TIMEOUT=5000",
                          "MAX ERROR=10", "[BEREICH]", "ENDE=7", "[DATEN]", "8"}));
  EXPECT_EQ(TShortTestData(Name("saved.exp")).bis, 1);
}

TEST_F(ExpectationFileWrite, NamesInAnotherCaseAreFoundAndKept) {
  const std::string saved = SavedOver(
      Lines({"[bereich]", "Start=8", "[Option]", "max error=3", "[daten]", "8"}), TShortTestData(1, 1));
  EXPECT_EQ(saved, Lines({"[bereich]", "Start=1", "ENDE=1", "WIDERSTAND=10", "WIDERSTAND2=10", "[Option]",
                          "max error=10", "U_KONTROLLE=2", "LASTRELAISKARTE=0", "LASTRELAIS=0",
                          "TIMEOUT=5000", "[DATEN]", "8"}));
}

TEST_F(ExpectationFileWrite, LinesOfOthersKeepTheirLineEnds) {
  const std::string saved =
      SavedOver("; mine\n[BEREICH]\nSTART=8\nOTHER=1\n[DATEN]\n8\n", TShortTestData(1, 1));
  EXPECT_THAT(saved, StartsWith("; mine\n[BEREICH]\nSTART=1\r\nOTHER=1\nENDE=1\r\n"));
  EXPECT_THAT(saved, EndsWith("\r\n[DATEN]\r\n8\r\n"));
}

TEST_F(ExpectationFileWrite, AByteOrderMarkStaysInFront) {
  EXPECT_EQ(SavedOver("\xEF\xBB\xBF" + ExampleFile(), Example()), "\xEF\xBB\xBF" + ExampleFile());
}

TEST_F(ExpectationFileWrite, EveryLineWrittenEndsWithCrLf) {
  const std::string saved = Saved(TShortTestData(1, 48));
  EXPECT_EQ(Count(saved, "\r\n"), 12 + 48);
  EXPECT_EQ(Count(saved, "\n"), 12 + 48);
  EXPECT_EQ(Count(saved, "\r"), 12 + 48);
}

// The reader takes the first line that contains the header; a foreign line that does so keeps its place. Such
// a file cannot be used, see docs/expectation-file.md.
TEST_F(ExpectationFileWrite, AForeignLineThatContainsTheHeaderStaysAndIsReadFirst) {
  const std::string saved = SavedOver(Lines({"; [DATEN] below", "99"}), TShortTestData(1, 2));
  EXPECT_THAT(saved, StartsWith("; [DATEN] below\r\n99\r\n"));
  EXPECT_THAT(saved, EndsWith("[DATEN]\r\n88\r\n08\r\n"));
  EXPECT_EQ(States(TShortTestData(Name("saved.exp")))[0], (std::vector<int>{9, 9}));
}

// ---- saving that fails ----

TEST_F(ExpectationFileWrite, IntoAFolderThatDoesNotExistFailsAndCreatesNothing) {
  const auto error =
      Thrown<std::system_error>([this] { Example().SaveExpectationFile(Name("missing/saved.exp")); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::no_such_file_or_directory);
  EXPECT_THAT(error->message, HasSubstr("saved.exp"));
  EXPECT_THAT(FolderContent(), testing::IsEmpty());
}

TEST_F(ExpectationFileWrite, OverAFolderFailsAndLeavesIt) {
  std::filesystem::create_directories(Path("folder.exp/inside"));
  const auto error = Thrown<std::system_error>([this] { Example().SaveExpectationFile(Name("folder.exp")); });
  ASSERT_TRUE(error);
  EXPECT_THAT(error->message, HasSubstr(Name("folder.exp")));
  EXPECT_TRUE(std::filesystem::is_directory(Path("folder.exp/inside")));
  EXPECT_THAT(FolderContent(), ElementsAre("folder.exp"));
}

TEST_F(ExpectationFileWrite, WithAFileInThePlaceOfAFolderFails) {
  Write("file", "content");
  EXPECT_THROW(Example().SaveExpectationFile(Name("file/saved.exp")), std::system_error);
  EXPECT_EQ(Content("file"), "content");
  EXPECT_THAT(FolderContent(), ElementsAre("file"));
}

TEST_F(ExpectationFileWrite, UnderAnEmptyNameFails) {
  EXPECT_THROW(Example().SaveExpectationFile(""), std::system_error);
}

}  // namespace
}  // namespace data_test
