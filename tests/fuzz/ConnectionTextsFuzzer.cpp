// Arbitrary text in the editor's fields: "first last|expected|skipped|blocked". It gives the matrix that a
// second, literal reading gives, or one of the two documented errors; what is then shown is what a literal
// writing shows, and gives the same matrix again.

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "plugin/data/ShorttestData.h"
#include "plugin/editor/ChannelNumbers.h"
#include "plugin/editor/ConnectionTexts.h"
#include "plugin/editor/DelimitedText.h"
#include "plugin/editor/NamesView.h"
#include "tests/fuzz/Require.h"
#include "tests/plugin/editor/PlainConnections.h"

namespace {

using namespace shorttest;
using fuzz::Require;

// More channels cost time and no line of code.
constexpr std::int64_t LongestRange = 24;

struct Fields {
  std::int32_t von = 1;
  std::int32_t bis = 8;
  ConnectionTexts texts;
};

std::string_view TakeField(std::string_view& input) {
  const std::size_t end = std::min(input.find('|'), input.size());
  const std::string_view field = input.substr(0, end);
  input.remove_prefix(std::min(end + 1, input.size()));
  return field;
}

Fields FieldsOf(std::string_view input) {
  Fields fields;
  const std::string_view range = TakeField(input);
  const char* const end = range.data() + range.size();
  const auto first = std::from_chars(range.data(), end, fields.von);
  if (first.ptr < end) std::from_chars(first.ptr + 1, end, fields.bis);
  fields.texts.expected = SplitLines(TakeField(input));
  fields.texts.skipped = SplitLines(TakeField(input));
  fields.texts.blocked = std::string(TakeField(input));
  return fields;
}

bool Same(const ConnectionTexts& a, const ConnectionTexts& b) {
  return a.expected == b.expected && a.skipped == b.skipped && a.blocked == b.blocked;
}

// Whether everything that is connected to the same channel is connected to each other. An excluded pair in
// the middle of a group can keep it from that, and the one line of the group then cannot say so.
bool NetsAreClosed(const TShortTestData& data) {
  const std::int32_t high = data.Highconnections();
  for (std::int32_t i = 0; i <= high; ++i) {
    for (std::int32_t j = 0; j <= high; ++j) {
      if (i == j || data.Get(i, j) != CellState::Connected) continue;
      for (std::int32_t k = 0; k <= high; ++k) {
        if (k != i && k != j && data.Get(j, k) == CellState::Connected &&
            data.Get(i, k) != CellState::Connected) {
          return false;
        }
      }
    }
  }
  return true;
}

bool SameStates(const TShortTestData& a, const TShortTestData& b) {
  for (std::int32_t i = 0; i <= a.Highconnections(); ++i) {
    for (std::int32_t j = 0; j <= i; ++j) {
      if (a.Get(i, j) != b.Get(i, j)) return false;
    }
  }
  return true;
}

void CheckShowing(const TShortTestData& data) {
  const ConnectionTexts shown = TextsFromMatrix(data);
  Require(Same(shown, WriteConnectionsPlainly(data)), "both writings are the same");
  if (!NetsAreClosed(data)) return;
  TShortTestData back(data.von, data.bis);
  MatrixFromTexts(shown, back);
  Require(SameStates(data, back), "what is shown gives the same matrix");
}

void CheckNames(const Fields& fields) {
  const auto name = [](std::int32_t channel) {
    return channel % 3 == 0 ? std::string() : "pin \"" + std::to_string(channel) + '"';
  };
  const std::vector<std::string> view = NamesView(fields.texts.expected, fields.von, fields.bis, name);
  Require(view.size() == fields.texts.expected.size(), "the names stand line by line beside the numbers");
}

void CheckItems(const std::string& text) {
  std::vector<std::string> items = SplitDelimited(text, ',');
  std::erase(items, "");
  Require(SplitDelimited(JoinDelimited(items, ','), ',') == items, "items joined are split again:", text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const Fields fields = FieldsOf({reinterpret_cast<const char*>(bytes), size});
  if (std::int64_t{fields.bis} - fields.von + 1 > LongestRange) return 0;

  // What was there before does not matter.
  TShortTestData data(fields.von, fields.bis);
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) data.SetC(i, i / 2, CellState::Connected, 0.5);

  bool failed = false;
  try {
    MatrixFromTexts(fields.texts, data);
  } catch (const ConversionError&) {
    failed = true;
  } catch (const ChannelRangeError&) {
    failed = true;
  }
  const PlainConnections plain = ReadConnectionsPlainly(fields.texts, fields.von, fields.bis);
  const std::string difference = Difference(data, plain);
  Require(difference.empty(), "both readings are the same:", difference);
  Require(failed == plain.failed, "both readings fail or neither");

  if (!failed) CheckShowing(data);
  CheckNames(fields);
  CheckItems(fields.texts.blocked);
  return 0;
}
