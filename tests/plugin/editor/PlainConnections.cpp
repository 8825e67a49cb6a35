#include "tests/plugin/editor/PlainConnections.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>

#include "tests/plugin/data/PlainMatrix.h"

namespace shorttest {
namespace {

class ItemError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

bool IsBlank(char c) { return c >= 0 && c <= ' '; }

// A delimited list: comma as delimiter, blanks separate too, double quotes enclose.
std::vector<std::string> ItemsOf(const std::string& text) {
  std::vector<std::string> items;
  std::size_t at = 0;
  const auto skipBlanks = [&] {
    while (at < text.size() && IsBlank(text[at])) ++at;
  };
  skipBlanks();
  while (at < text.size()) {
    std::string item;
    if (text[at] == '"') {
      ++at;
      while (at < text.size()) {
        const bool twice = text[at] == '"' && at + 1 < text.size() && text[at + 1] == '"';
        if (text[at] == '"' && !twice) break;
        at += twice ? 1 : 0;
        item += text[at++];
      }
      ++at;
    } else {
      while (at < text.size() && !IsBlank(text[at]) && text[at] != ',') item += text[at++];
    }
    items.push_back(item);
    skipBlanks();
    if (at < text.size() && text[at] == ',') {
      ++at;
      if (at == text.size()) items.emplace_back();
      skipBlanks();
    }
  }
  return items;
}

// The index of the channel that the item names.
std::int32_t Index(std::string item, std::int32_t von, std::int32_t bis) {
  const auto isSpace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
  while (!item.empty() && isSpace(item.back())) item.pop_back();
  while (!item.empty() && isSpace(item.front())) item.erase(0, 1);
  const bool isSigned = !item.empty() && (item[0] == '+' || item[0] == '-');
  const std::string digits = item.substr(isSigned ? 1 : 0);
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) throw ItemError(item);
  const long long channel = std::strtoll(item.c_str(), nullptr, 10);
  if (channel < von || channel > bis) throw ItemError(item);
  return static_cast<std::int32_t>(channel - von);
}

}  // namespace

PlainConnections ReadConnectionsPlainly(const ConnectionTexts& texts, std::int32_t von, std::int32_t bis) {
  PlainConnections result;
  TShortTestData start(von, bis);
  try {
    for (const std::string& item : ItemsOf(texts.blocked)) {
      const std::int32_t channel = Index(item, von, bis);
      start.SetC(channel, channel, CellState::Suspended, NoResistance);
    }
    for (const std::string& line : texts.skipped) {
      const auto items = ItemsOf(line);
      for (std::size_t n = 0; n < items.size(); ++n) {
        const std::int32_t first = Index(items[0], von, bis);
        const std::int32_t other = Index(items[n], von, bis);
        if (first != other) start.SetC(first, other, CellState::ExcludedPair, NoResistance);
      }
    }
  } catch (const ItemError&) {
    result.failed = true;
  }

  data_test::PlainMatrix matrix(start);
  try {
    for (const std::string& line : result.failed ? std::vector<std::string>() : texts.expected) {
      const auto items = ItemsOf(line);
      for (std::size_t n = 0; n < items.size(); ++n) {
        matrix.Put(Index(items[0], von, bis), Index(items[n], von, bis), CellState::Connected, NoResistance);
      }
    }
  } catch (const ItemError&) {
    result.failed = true;
  }

  for (std::int32_t i = 0; i <= start.Highconnections(); ++i) {
    result.pairs.emplace_back();
    for (std::int32_t j = 0; j <= i; ++j) {
      const CellState state = matrix.At(i, j).state;
      const bool open = state == CellState::Unknown && !result.failed;
      result.pairs.back().push_back(open ? CellState::NotConnected : state);
    }
  }
  return result;
}

ConnectionTexts WriteConnectionsPlainly(const TShortTestData& data) {
  ConnectionTexts texts;
  std::vector<bool> listed(data.connections.size());
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    const std::string number = std::to_string(data.von + i);
    if (data.Get(i, i) == CellState::Suspended) texts.blocked += " " + number;
    std::string line = number;
    for (std::int32_t j = 0; j <= data.Highconnections(); ++j) {
      if (j == i) continue;
      const std::string other = " " + std::to_string(data.von + j);
      if (data.Get(i, j) == CellState::Connected) {
        line += other;
        listed[static_cast<std::size_t>(j)] = true;
      } else if (i < j && data.Get(i, j) == CellState::ExcludedPair) {
        texts.skipped.push_back(number + other);
      }
    }
    if (!listed[static_cast<std::size_t>(i)] && line != number) texts.expected.push_back(line);
  }
  return texts;
}

std::string Difference(const TShortTestData& data, const PlainConnections& expected) {
  if (data.connections.size() != expected.pairs.size()) return "the number of channels";
  std::string text;
  for (std::size_t i = 0; i < expected.pairs.size(); ++i) {
    for (std::size_t j = 0; j < expected.pairs.size(); ++j) {
      const TConnectionCell& cell = data.connections[i][j];
      const CellState state = j <= i ? expected.pairs[i][j] : CellState::NotApplicable;
      if (cell.state == state && cell.resistance == NoResistance) continue;
      text += "(" + std::to_string(i) + ", " + std::to_string(j) + ") is " +
              std::to_string(static_cast<int>(cell.state)) + " instead of " +
              std::to_string(static_cast<int>(state)) + "; ";
    }
  }
  return text;
}

}  // namespace shorttest
