// Arbitrary bytes as an expectation file. It is read as a second, literal reading says; saved again it is
// read back the same, saving once more changes nothing, and every line of others stays as it was.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "plugin/data/ExpectationText.h"
#include "plugin/data/ShorttestData.h"
#include "tests/fuzz/Require.h"
#include "tests/plugin/data/ForeignLines.h"
#include "tests/plugin/data/PlainReader.h"
#include "text/NumberText.h"

namespace {

using fuzz::Require;
using shorttest::ReadExpectationText;
using shorttest::WriteExpectationText;

// A longer range costs time and no line of code: the matrix is a square of the same cells. That the longest
// one possible is read and the next is refused is tested in tests/data.
constexpr std::int64_t LongestRange = 60;

constexpr std::string_view DataHeader = "[DATEN]";

// States of more than one digit make their line longer than it is read.
bool HasDigitsAlone(const TShortTestData& data) {
  for (const auto& row : data.connections) {
    for (const TConnectionCell& cell : row) {
      if (static_cast<int>(cell.state) > 9) return false;
    }
  }
  return true;
}

// Saving keeps a line of others that contains the header, and the reader then takes that one. Only the
// block's own header has nothing but state digits after it.
bool BlockIsFoundFirst(const TShortTestData& data, const std::string& saved) {
  const std::size_t blockSize =
      DataHeader.size() + 2 + data.connections.size() * (data.connections.size() + 2);
  return saved.find(DataHeader) == saved.size() - blockSize;
}

// 15 digits can round the very largest doubles up to what is none any more.
bool HasPrintableThresholds(const TShortTestData& data) {
  constexpr double LargestPrintable = 1.79769313486231e308;
  return std::fabs(data.Schwelle) < LargestPrintable && std::fabs(data.Schwelle2) < LargestPrintable;
}

void RequireSameScalars(const TShortTestData& a, const TShortTestData& b) {
  Require(a.von == b.von && a.bis == b.bis, "the range survives saving");
  Require(shorttest::FloatToText(a.Schwelle) == shorttest::FloatToText(b.Schwelle),
          "Schwelle survives saving");
  Require(shorttest::FloatToText(a.Schwelle2) == shorttest::FloatToText(b.Schwelle2),
          "Schwelle2 survives saving");
  Require(a.U_Control == b.U_Control && a.LastRelaisKarte == b.LastRelaisKarte &&
              a.LastRelais == b.LastRelais && a.Timeout == b.Timeout && a.MaxError == b.MaxError,
          "the options survive saving");
}

void RequireSameStates(const TShortTestData& a, const TShortTestData& b) {
  for (std::size_t row = 0; row < a.connections.size(); ++row) {
    for (std::size_t column = 0; column < a.connections.size(); ++column) {
      Require(a.connections[row][column].state == b.connections[row][column].state,
              "every state survives saving");
    }
  }
}

void CheckSaving(const TShortTestData& data, std::string_view content) {
  const std::string saved = WriteExpectationText(data, content);
  Require(data_test::ForeignLines(saved) == data_test::ForeignLines(content), "lines of others stay");
  if (!HasPrintableThresholds(data)) return;

  const TShortTestData back = ReadExpectationText(saved);
  RequireSameScalars(data, back);
  if (!HasDigitsAlone(data) || !BlockIsFoundFirst(data, saved)) return;
  RequireSameStates(data, back);
  Require(WriteExpectationText(back, saved) == saved, "saving once more changes nothing");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const std::string content(reinterpret_cast<const char*>(bytes), size);
  const char separator = size % 2 == 0 ? '.' : ',';
  shorttest::SetDecimalSeparator(std::string(1, separator));

  data_test::PlainExpectation plain = data_test::ReadKeysPlainly(content, separator);
  const std::int64_t count = std::int64_t{plain.bis} - plain.von + 1;
  if (count > TShortTestData::MaxChannels) {
    bool refused = false;
    try {
      ReadExpectationText(content);
    } catch (const std::length_error&) {
      refused = true;
    }
    Require(refused, "a range that no memory holds is refused");
    return 0;
  }
  if (count > LongestRange) return 0;

  const TShortTestData data = ReadExpectationText(content);
  data_test::ReadStatesPlainly(content, plain);
  const std::string difference = data_test::Difference(data, plain);
  Require(difference.empty(), "both readings are the same:", difference);
  CheckSaving(data, content);
  return 0;
}
