// Every way of damaging a valid file of four channels by one byte, and every truncation: what comes out is
// what a second, literal reading of the file gives.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "plugin/data/ExpectationText.h"
#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"
#include "tests/plugin/data/ForeignLines.h"
#include "tests/plugin/data/PlainReader.h"
#include "tests/support/Sweep.h"

namespace data_test {
namespace {

constexpr std::string_view LineFeed = "\n";
constexpr std::string_view CarriageReturnLineFeed = "\r\n";

std::string Printable(const std::string& text) {
  std::string result;
  for (const char c : text) {
    if (c == '\r') {
      result += "\\r";
    } else if (c == '\n') {
      result += "\\n\n";
    } else {
      result += c;
    }
  }
  return result;
}

struct FileKind {
  const char* name;
  std::string_view lineEnd;
  char decimalSeparator;  // the one in force; the file is written with a point
};

class DamagedFile : public FileTest, public testing::WithParamInterface<FileKind> {
 protected:
  DamagedFile() { UseDecimalSeparator(std::string(1, GetParam().decimalSeparator)); }

  // Channels 3 to 6: 3 and 4 connected, 5 suspended, 4 and 6 excluded from each other.
  static std::string ValidFile() {
    const std::string lines =
        Lines({"[BEREICH]", "START=3", "ENDE=6", "WIDERSTAND=12.5", "WIDERSTAND2=250", "[OPTION]",
               "U_KONTROLLE=1", "LASTRELAISKARTE=2", "LASTRELAIS=7", "TIMEOUT=1500", "MAX ERROR=25",
               "[DATEN]", "8888", "2888", "4498", "1348"});
    return ReplaceAll(lines, "\r\n", GetParam().lineEnd);
  }

  // Compares a reading of the content with the literal one.
  template <typename Read>
  static void ExpectReadAsItStands(const std::string& content, const std::string& damage, Read read) {
    std::string difference;
    try {
      difference = Difference(read(content), ReadPlainly(content, GetParam().decimalSeparator));
    } catch (const std::exception& error) {
      difference = std::string("exception: ") + error.what();
    }
    ASSERT_EQ(difference, "") << damage << "\n" << Printable(content);
  }
  static void ExpectReadAsItStands(const std::string& content, const std::string& damage) {
    ExpectReadAsItStands(content, damage, shorttest::ReadExpectationText);
  }
  void ExpectFileReadAsItStands(const std::string& content, const std::string& damage) const {
    ExpectReadAsItStands(content, damage, [this](const std::string& text) {
      Write("damaged.exp", text);
      return TShortTestData(Name("damaged.exp"));
    });
  }
};

TEST_P(DamagedFile, UndamagedIsReadAsTheTwoReadersSay) {
  ASSERT_NO_FATAL_FAILURE(ExpectFileReadAsItStands(ValidFile(), "none"));
}

TEST_P(DamagedFile, OneByteReplacedByAnyOther) {
  const std::string valid = ValidFile();
  for (std::size_t position = 0; position < valid.size(); ++position) {
    for (int byte = 0; byte < 256; byte += shorttest::testkit::SweepStep) {
      std::string content = valid;
      content[position] = static_cast<char>(byte);
      ASSERT_NO_FATAL_FAILURE(ExpectReadAsItStands(
          content, "byte " + std::to_string(position) + " replaced by " + std::to_string(byte)));
    }
  }
}

TEST_P(DamagedFile, OneByteMissing) {
  const std::string valid = ValidFile();
  for (std::size_t position = 0; position < valid.size(); ++position) {
    std::string content = valid;
    content.erase(position, 1);
    ASSERT_NO_FATAL_FAILURE(ExpectReadAsItStands(content, "byte " + std::to_string(position) + " missing"));
  }
}

TEST_P(DamagedFile, AnyByteInserted) {
  const std::string valid = ValidFile();
  for (std::size_t position = 0; position <= valid.size(); ++position) {
    for (int byte = 0; byte < 256; byte += shorttest::testkit::SweepStep) {
      std::string content = valid;
      content.insert(position, 1, static_cast<char>(byte));
      ASSERT_NO_FATAL_FAILURE(ExpectReadAsItStands(
          content, "byte " + std::to_string(byte) + " inserted at " + std::to_string(position)));
    }
  }
}

TEST_P(DamagedFile, EveryTruncation) {
  const std::string valid = ValidFile();
  for (std::size_t size = 0; size < valid.size(); ++size) {
    ASSERT_NO_FATAL_FAILURE(
        ExpectFileReadAsItStands(valid.substr(0, size), "cut to " + std::to_string(size)));
  }
}

TEST_P(DamagedFile, EveryTruncationAtTheFront) {
  const std::string valid = ValidFile();
  for (std::size_t size = 1; size <= valid.size(); ++size) {
    ASSERT_NO_FATAL_FAILURE(
        ExpectReadAsItStands(valid.substr(size), "without the first " + std::to_string(size)));
  }
}

// Whatever is left of a file, saving over it makes one that is read back as it was saved.
TEST_P(DamagedFile, IsMendedBySaving) {
  TShortTestData data(3, 5);
  data.Schwelle = 7.5;
  data.Schwelle2 = 8.25;
  data.MaxError = 4;
  data.SetC(2, 1, CellState::Connected, NoResistance);
  data.SuspendChannel(0, 1.0);
  const std::string valid = ValidFile();
  for (std::size_t position = 0; position < valid.size(); position += 2) {
    for (const std::string& damaged : {valid.substr(0, position), std::string(valid).erase(position, 1)}) {
      Write("damaged.exp", damaged);
      data.SaveExpectationFile(Name("damaged.exp"));
      const TShortTestData back(Name("damaged.exp"));
      ASSERT_EQ(States(back), States(data)) << Printable(damaged);
      ASSERT_EQ(back.von, 3) << Printable(damaged);
      ASSERT_EQ(back.Schwelle, 7.5) << Printable(damaged);
      ASSERT_EQ(back.Schwelle2, 8.25) << Printable(damaged);
      ASSERT_EQ(back.MaxError, 4) << Printable(damaged);
      ASSERT_EQ(Count(Content("damaged.exp"), "[DATEN]"), 1) << Printable(damaged);
      ASSERT_EQ(ForeignLines(Content("damaged.exp")), ForeignLines(damaged)) << Printable(damaged);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(, DamagedFile,
                         testing::Values(FileKind{"WithCrLf", CarriageReturnLineFeed, '.'},
                                         FileKind{"WithLf", LineFeed, '.'},
                                         FileKind{"UnderADecimalComma", CarriageReturnLineFeed, ','}),
                         CaseName());

}  // namespace
}  // namespace data_test
