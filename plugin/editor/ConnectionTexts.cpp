#include "plugin/editor/ConnectionTexts.h"

#include <cstddef>
#include <cstdint>

#include "plugin/editor/ChannelNumbers.h"
#include "plugin/editor/DelimitedText.h"

namespace shorttest {
namespace {

// For each channel what it is connected to and, of the pairs excluded, the higher ones; ascending.
struct Partners {
  std::vector<std::vector<std::int32_t>> connected;
  std::vector<std::vector<std::int32_t>> excluded;
};

// Reads the matrix once, row by row as it lies in memory: this runs at every progress report of learning.
Partners FindPartners(const TShortTestData& data) {
  const std::size_t count = data.connections.size();
  Partners partners{std::vector<std::vector<std::int32_t>>(count),
                    std::vector<std::vector<std::int32_t>>(count)};
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const CellState state = data.connections[i][j].state;
      if (state == CellState::Connected) {
        partners.connected[i].push_back(static_cast<std::int32_t>(j));
        partners.connected[j].push_back(static_cast<std::int32_t>(i));
      } else if (state == CellState::ExcludedPair) {
        partners.excluded[j].push_back(static_cast<std::int32_t>(i));
      }
    }
  }
  return partners;
}

void Reset(TShortTestData& data) {
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    data.SetC(i, i, CellState::NotApplicable, NoResistance);
    for (std::int32_t j = 0; j < i; ++j) data.SetC(i, j, CellState::Unknown, NoResistance);
  }
}

// Matrix index of an item; an error tells where the item stands.
std::int32_t IndexOf(const TShortTestData& data, const DelimitedItem& item, ItemPlace::Text text,
                     std::size_t line) {
  try {
    return ChannelIndex(data, item.text);
  } catch (WrongItem& error) {
    error.place = {text, line, item.begin, item.end};
    throw;
  }
}

// Calls pair(first, other) for the first channel of each line with each of the others.
template <typename Pair>
void ForEachPair(const TShortTestData& data, ItemPlace::Text text, const std::vector<std::string>& lines,
                 Pair pair) {
  for (std::size_t line = 0; line < lines.size(); ++line) {
    const std::vector<DelimitedItem> items = FindDelimited(lines[line], ',');
    if (items.empty()) continue;
    const std::int32_t first = IndexOf(data, items.front(), text, line);
    for (std::size_t i = 1; i < items.size(); ++i) pair(first, IndexOf(data, items[i], text, line));
  }
}

}  // namespace

ConnectionTexts TextsFromMatrix(const TShortTestData& data) {
  const Partners partners = FindPartners(data);
  std::vector<bool> listed(data.connections.size(), false);
  ConnectionTexts texts;
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    const auto row = static_cast<std::size_t>(i);
    const std::string number = std::to_string(data.von + i);
    if (data.Get(i, i) == CellState::Suspended) texts.blocked += " " + number;
    for (const std::int32_t j : partners.excluded[row]) {
      texts.skipped.push_back(number + " " + std::to_string(data.von + j));
    }
    // A damaged file may connect channels without closing the net: a partner of a listed channel is marked
    // all the same, whether or not that channel gets a line.
    const bool open = !listed[row] && !partners.connected[row].empty();
    std::string line = number;
    for (const std::int32_t j : partners.connected[row]) {
      listed[static_cast<std::size_t>(j)] = true;
      if (open) line += " " + std::to_string(data.von + j);
    }
    if (open) texts.expected.push_back(line);
  }
  return texts;
}

void MatrixFromTexts(const ConnectionTexts& texts, TShortTestData& data) {
  Reset(data);
  for (const DelimitedItem& item : FindDelimited(texts.blocked, ',')) {
    const std::int32_t channel = IndexOf(data, item, ItemPlace::Text::Blocked, 0);
    data.SetC(channel, channel, CellState::Suspended, NoResistance);
  }
  ForEachPair(data, ItemPlace::Text::Skipped, texts.skipped, [&data](std::int32_t a, std::int32_t b) {
    // A channel is no pair with itself, and a blocked one must not come back into the test that way.
    if (a != b) data.SetC(a, b, CellState::ExcludedPair, NoResistance);
  });
  ForEachPair(data, ItemPlace::Text::Expected, texts.expected, [&data](std::int32_t a, std::int32_t b) {
    data.Put(a, b, CellState::Connected, NoResistance);
  });
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    for (std::int32_t j = 0; j < i; ++j) {
      if (data.Get(i, j) == CellState::Unknown) data.SetC(i, j, CellState::NotConnected, NoResistance);
    }
  }
}

}  // namespace shorttest
