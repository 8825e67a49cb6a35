#include "bench/documents/YamlDocumentText.h"

#include <algorithm>

namespace kxbench::documents {

namespace {

constexpr std::string_view YamlBlanks = " \t\r\n";

/// What a line begins with: the dashes of lists, and marks of keys and values that stand alone.
std::size_t LastDashOf(std::string_view line) {
  const std::size_t end = std::min(line.find_first_not_of(" \t\r-?:"), line.size());
  return line.substr(0, end).rfind('-');
}

}  // namespace

std::size_t YamlContentAt(std::string_view text, std::size_t at) {
  while (at < text.size()) {
    if (text[at] == '#') {
      at = text.find('\n', at);
    } else if (text[at] == '&') {
      at = text.find_first_of(" \t\r\n[]{},", at);
    } else if (text[at] == '!') {
      // A tag may have a ' in it, but no ".
      at = text.find_first_of(text.substr(at, 2) == "!<" ? ">" : " \t\r\n[]{},\"", at);
      if (at != std::string_view::npos && text[at] == '>') ++at;
    } else if (YamlBlanks.find(text[at]) != std::string_view::npos) {
      ++at;
    } else {
      return at;
    }
  }
  return text.size();
}

bool IsYamlQuoteOpen(std::string_view text, std::size_t at, std::size_t end) {
  if (at >= text.size() || (text[at] != '"' && text[at] != '\'')) return false;
  const char quote = text[at];
  end = std::min(end, text.size());
  for (++at; at < end; ++at) {
    if (quote == '"' && text[at] == '\\') {
      ++at;
    } else if (text[at] == quote) {
      const bool doubled = quote == '\'' && at + 1 < end && text[at + 1] == quote;
      if (!doubled) return false;
      ++at;
    }
  }
  return true;
}

std::string_view YamlNullAt(std::string_view text, std::size_t at) {
  text.remove_prefix(std::min(at, text.size()));
  for (const std::string_view word : {"null", "Null", "NULL", "~"}) {
    if (text.starts_with(word)) return text.substr(0, word.size());
  }
  return {};
}

std::size_t YamlDashBefore(std::string_view text, std::size_t at) {
  // Between the dash and what comes next there are blanks and comments alone.
  std::size_t end = at;
  while (end > 0) {
    const std::size_t lineBreak = text.rfind('\n', end - 1);
    const std::size_t start = lineBreak == std::string_view::npos ? 0 : lineBreak + 1;
    const std::string_view line = text.substr(start, end - start);
    const std::size_t first = line.find_first_not_of(" \t\r");
    if (first != std::string_view::npos && line[first] != '#') {
      const std::size_t dash = LastDashOf(line);
      return dash == std::string_view::npos ? dash : start + dash;
    }
    end = start == 0 ? 0 : start - 1;
  }
  return std::string_view::npos;
}

}  // namespace kxbench::documents
