#include "plugin/editor/DelimitedText.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "text/Lines.h"

namespace shorttest {
namespace {

constexpr char Quote = '"';

// Blanks and control characters; bytes of UTF-8 sequences are neither.
bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' '; }

void SkipBlanks(std::string_view& rest) {
  const auto* const end = std::find_if_not(rest.begin(), rest.end(), IsBlank);
  rest.remove_prefix(static_cast<std::size_t>(end - rest.begin()));
}

std::string TakeQuoted(std::string_view& rest) {
  std::string item;
  rest.remove_prefix(1);
  while (!rest.empty()) {
    const char c = rest.front();
    rest.remove_prefix(1);
    if (c == Quote) {
      if (rest.empty() || rest.front() != Quote) break;
      rest.remove_prefix(1);
    }
    item += c;
  }
  return item;
}

std::string TakePlain(std::string_view& rest, char delimiter) {
  const auto* const end =
      std::find_if(rest.begin(), rest.end(), [delimiter](char c) { return IsBlank(c) || c == delimiter; });
  const auto length = static_cast<std::size_t>(end - rest.begin());
  std::string item(rest.substr(0, length));
  rest.remove_prefix(length);
  return item;
}

}  // namespace

std::vector<DelimitedItem> FindDelimited(std::string_view text, char delimiter) {
  std::vector<DelimitedItem> items;
  std::string_view rest = text;
  const auto place = [&text, &rest] { return text.size() - rest.size(); };
  SkipBlanks(rest);
  while (!rest.empty()) {
    const std::size_t begin = place();
    std::string item = rest.front() == Quote ? TakeQuoted(rest) : TakePlain(rest, delimiter);
    items.push_back({std::move(item), begin, place()});
    SkipBlanks(rest);
    if (!rest.empty() && rest.front() == delimiter) {
      rest.remove_prefix(1);
      if (rest.empty()) items.push_back({"", place(), place()});
      SkipBlanks(rest);
    }
  }
  return items;
}

std::vector<std::string> SplitDelimited(std::string_view text, char delimiter) {
  std::vector<std::string> items;
  for (DelimitedItem& item : FindDelimited(text, delimiter)) items.push_back(std::move(item.text));
  return items;
}

std::string JoinDelimited(const std::vector<std::string>& items, char delimiter) {
  std::string text;
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (i > 0) text += delimiter;
    const std::string& item = items[i];
    const bool quoted = std::any_of(
        item.begin(), item.end(), [delimiter](char c) { return IsBlank(c) || c == Quote || c == delimiter; });
    if (!quoted) {
      text += item;
      continue;
    }
    text += Quote;
    for (const char c : item) {
      if (c == Quote) text += Quote;
      text += c;
    }
    text += Quote;
  }
  return text;
}

std::vector<std::string> SplitLines(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) lines.emplace_back(TakeLine(text).text);
  return lines;
}

std::string JoinLines(const std::vector<std::string>& lines) {
  std::string text;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) text += '\n';
    text += lines[i];
  }
  return text;
}

}  // namespace shorttest
