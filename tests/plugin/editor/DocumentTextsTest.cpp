// The connection texts and the files: what is taken, what is rejected, what may be written.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

#include "plugin/editor/ChannelNumbers.h"
#include "tests/plugin/editor/DocumentBench.h"

namespace shorttest::testkit {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

class DocumentTexts : public DocumentBench {
 protected:
  DocumentTexts() { document.New(1, 8); }

  void Take() { document.TakeTexts(typed); }
  std::string WriteBroken() const {
    std::ofstream(File("kaputt.dat")) << "[BEREICH]\r\nSTART=1\r\nENDE=99999\r\n";
    return File("kaputt.dat");
  }
};

TEST_F(DocumentTexts, TypedTextsBecomeTheMatrix) {
  typed = {.expected = {"1, 2 3"}, .skipped = {"4 5"}, .blocked = " 8"};
  Take();
  EXPECT_EQ(Pair(1, 3), CellState::Connected);
  EXPECT_EQ(Pair(4, 5), CellState::ExcludedPair);
  EXPECT_EQ(Pair(8, 8), CellState::Suspended);
  EXPECT_EQ(Pair(1, 4), CellState::NotConnected);
  EXPECT_THAT(document.ShowTexts().expected, ElementsAre("1 2 3"));
}

TEST_F(DocumentTexts, WrongItemLeavesTheMatrixHalfBuiltAndIsInsistedOn) {
  typed.expected = {"1 2", "3 49"};
  EXPECT_EQ(ErrorOf([this] { Take(); }), "49 is too large.");
  EXPECT_EQ(Pair(1, 2), CellState::Connected);
  EXPECT_EQ(Pair(1, 3), CellState::Unknown);
  for (int tries = 0; tries < 2; ++tries) {
    EXPECT_EQ(ErrorOf([this] { document.RequireComplete(typed); }), "49 is too large.");
  }
  typed.expected = {"1 2", "3 4"};
  EXPECT_EQ(Saved().Get(0, 2), CellState::NotConnected);
}

// A text can change without the keyboard: dropped into it with the mouse.
TEST_F(DocumentTexts, TextThatWasNotTakenYetIsTakenBeforeItIsWritten) {
  Take();
  typed.expected = {"1 2"};
  EXPECT_EQ(Saved().Get(0, 1), CellState::Connected);
  typed.skipped = {"x"};
  EXPECT_THROW(document.RequireComplete(typed), ConversionError);
}

TEST_F(DocumentTexts, TextsThatAreKnownLeaveTheMatrixAsItStands) {
  TShortTestData data = Learned(1, 4, {{1, 2}});
  data.SetC(2, 3, CellState::Unknown, NoResistance);
  Open(data);
  EXPECT_EQ(Saved().Get(2, 3), CellState::Unknown);
}

struct PlaceRow {
  const char* name;
  ConnectionTexts texts;
  ItemPlace::Text text;
  std::size_t line;
  std::size_t begin;
  std::size_t end;
};

TEST_F(DocumentTexts, WrongItemHasAPlace) {
  using Text = ItemPlace::Text;
  const std::vector<PlaceRow> rows = {
      {"expected, second line", {{"1 2", " 3, 49 5"}, {}, ""}, Text::Expected, 1, 4, 6},
      {"expected, first item", {{"x"}, {}, ""}, Text::Expected, 0, 0, 1},
      {"expected, empty item", {{"1,,2"}, {}, ""}, Text::Expected, 0, 2, 2},
      {"expected, comma at the end", {{"1 2,"}, {}, ""}, Text::Expected, 0, 4, 4},
      {"expected, quoted", {{"1 \"2 3\""}, {}, ""}, Text::Expected, 0, 2, 7},
      {"skipped, after a line without items", {{"99"}, {"", "1 0"}, ""}, Text::Skipped, 1, 2, 3},
      {"blocked before all others", {{"99"}, {"99"}, " 1 größer"}, Text::Blocked, 0, 3, 11},
  };
  for (const PlaceRow& row : rows) {
    SCOPED_TRACE(row.name);
    try {
      document.TakeTexts(row.texts);
      ADD_FAILURE() << "no error";
    } catch (const WrongItem& error) {
      ASSERT_TRUE(error.place);
      EXPECT_EQ(error.place->text, row.text);
      EXPECT_EQ(error.place->line, row.line);
      EXPECT_EQ(error.place->begin, row.begin);
      EXPECT_EQ(error.place->end, row.end);
    }
  }
}

TEST_F(DocumentTexts, NumberFieldsHaveErrorsWithoutAPlace) {
  try {
    document.LeaveRelay("x");
    ADD_FAILURE() << "no error";
  } catch (const WrongItem& error) {
    EXPECT_FALSE(error.place);
  }
}

TEST_F(DocumentTexts, OpenedFileReplacesEverything) {
  typed.expected = {"1 49"};
  EXPECT_ANY_THROW(Take());
  Open(Learned(3, 9, {{3, 9}}));
  EXPECT_EQ(document.Data()->von, 3);
  EXPECT_THAT(typed.expected, ElementsAre("3 9"));
  EXPECT_NO_THROW(document.RequireComplete(typed));
}

TEST_F(DocumentTexts, FileThatCannotBeReadLeavesNoData) {
  const std::string broken = WriteBroken();
  const auto size = std::filesystem::file_size(broken);
  EXPECT_THROW(document.Open(broken), std::length_error);
  EXPECT_EQ(document.Data(), nullptr);
  EXPECT_THAT(ErrorOf([this] { document.RequireComplete(typed); }), HasSubstr("keine Daten"));
  EXPECT_THAT(ErrorOf([this] { document.RequireData(); }), HasSubstr("keine Daten"));
  EXPECT_EQ(std::filesystem::file_size(broken), size);
  EXPECT_THROW(document.Open(File("fehlt.dat")), std::system_error);
  EXPECT_EQ(document.Data(), nullptr);
}

TEST_F(DocumentTexts, AnotherFileMakesItWholeAgain) {
  EXPECT_ANY_THROW(document.Open(WriteBroken()));
  Open(Learned(1, 4, {{1, 4}}));
  EXPECT_EQ(Saved().Get(0, 3), CellState::Connected);
}

TEST_F(DocumentTexts, WithoutDataNothingHappens) {
  document.Close();
  typed.expected = {"1 x"};
  Take();
  document.SetVoltageControl(1);
  document.SetTimeout(1);
  document.SetMaxError(1);
  for (const char* const text : {"", "1", "x"}) {
    SCOPED_TRACE(text);
    document.TypeLowerThreshold(text);
    document.LeaveLowerThreshold(text);
    document.TypeUpperThreshold(text);
    document.LeaveUpperThreshold(text);
    document.TypeRelayCard(text);
    document.LeaveRelayCard(text);
    document.TypeRelay(text);
    document.LeaveRelay(text);
    document.LeaveRange(text);
  }
  document.ChangeRange(1, 5);
  EXPECT_EQ(document.Data(), nullptr);
}

TEST_F(DocumentTexts, FileThatCannotBeWrittenKeepsTheData) {
  EXPECT_THROW(document.Save(File("fehlt/kabel.dat")), std::system_error);
  EXPECT_NE(document.Data(), nullptr);
}

}  // namespace
}  // namespace shorttest::testkit
