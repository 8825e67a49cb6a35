#include "text/IniText.h"

#include <algorithm>

#include "text/Lines.h"
#include "text/NumberText.h"
#include "text/Trim.h"
#include "text/Utf8.h"

namespace shorttest {
namespace {

constexpr std::string_view LineEnd = "\r\n";

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Lower(x) == Lower(y); });
}

// Name of the section that the line opens.
std::optional<std::string_view> SectionName(std::string_view line) {
  const std::string_view text = Trim(line);
  if (text.empty() || text.front() != '[') return std::nullopt;
  const std::size_t close = text.find(']');  // a comment after it may hold another
  if (close == std::string_view::npos) return std::nullopt;
  return text.substr(1, close - 1);
}

// Key of a key=value line.
std::optional<std::string_view> KeyName(std::string_view line) {
  const std::string_view text = Trim(line);
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos || text.front() == ';') return std::nullopt;
  return Trim(text.substr(0, equals));
}

std::string_view Value(std::string_view line) {
  std::string_view value = Trim(line.substr(line.find('=') + 1));
  const bool quoted =
      value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
  return quoted ? value.substr(1, value.size() - 2) : value;
}

}  // namespace

IniText::IniText(std::string_view content) {
  if (TakeByteOrderMark(content)) byteOrderMark_ = Utf8ByteOrderMark;
  while (!content.empty()) {
    const TextLine line = TakeLine(content);
    lines_.push_back({std::string(line.text), std::string(line.lineBreak)});
  }
}

std::optional<std::size_t> IniText::FindSection(std::string_view section) const {
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const auto name = SectionName(lines_[i].text);
    if (name && SameName(*name, section)) return i;
  }
  return std::nullopt;
}

std::size_t IniText::SectionEnd(std::size_t header) const {
  std::size_t end = header + 1;
  while (end < lines_.size() && !SectionName(lines_[end].text)) ++end;
  return end;
}

std::optional<std::size_t> IniText::FindKey(std::string_view section, std::string_view key) const {
  const auto header = FindSection(section);
  if (!header) return std::nullopt;
  const std::size_t end = SectionEnd(*header);
  for (std::size_t i = *header + 1; i < end; ++i) {
    const auto name = KeyName(lines_[i].text);
    if (name && SameName(*name, key)) return i;
  }
  return std::nullopt;
}

std::optional<std::string> IniText::Find(std::string_view section, std::string_view key) const {
  const auto line = FindKey(section, key);
  if (!line) return std::nullopt;
  return std::string(Value(lines_[*line].text));
}

std::string IniText::ReadString(std::string_view section, std::string_view key,
                                const std::string& fallback) const {
  return Find(section, key).value_or(fallback);
}

std::int32_t IniText::ReadInteger(std::string_view section, std::string_view key,
                                  std::int32_t fallback) const {
  const auto value = Find(section, key);
  return value ? TextToInteger(*value).value_or(fallback) : fallback;
}

double IniText::ReadFloat(std::string_view section, std::string_view key, double fallback) const {
  const auto value = Find(section, key);
  return value ? TextToFloat(*value).value_or(fallback) : fallback;
}

void IniText::WriteString(std::string_view section, std::string_view key, const std::string& value) {
  if (const auto line = FindKey(section, key)) {
    lines_[*line] = {std::string(*KeyName(lines_[*line].text)) + "=" + value, std::string(LineEnd)};
    return;
  }
  auto header = FindSection(section);
  if (!header) {
    AppendLine("[" + std::string(section) + "]");
    header = lines_.size() - 1;
  }
  // After the section's last line with content: blank lines set it apart from the next section.
  std::size_t position = SectionEnd(*header);
  while (position > *header + 1 && Trim(lines_[position - 1].text).empty()) --position;
  if (lines_[position - 1].end.empty()) lines_[position - 1].end = LineEnd;
  lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(position),
                {std::string(key) + "=" + value, std::string(LineEnd)});
}

void IniText::WriteInteger(std::string_view section, std::string_view key, std::int32_t value) {
  WriteString(section, key, std::to_string(value));
}

void IniText::WriteFloat(std::string_view section, std::string_view key, double value) {
  WriteString(section, key, FloatToText(value));
}

void IniText::EraseSection(std::string_view section) {
  bool inside = false;
  std::erase_if(lines_, [&](const Line& line) {
    if (const auto name = SectionName(line.text)) inside = SameName(*name, section);
    return inside;
  });
}

void IniText::AppendLine(const std::string& line) {
  if (!lines_.empty() && lines_.back().end.empty()) lines_.back().end = LineEnd;
  lines_.push_back({line, std::string(LineEnd)});
}

std::string IniText::Content() const {
  std::string content = byteOrderMark_;
  for (const Line& line : lines_) content += line.text + line.end;
  return content;
}

}  // namespace shorttest
