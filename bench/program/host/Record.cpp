#include "bench/program/host/Record.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>

namespace kxbench {

namespace {

constexpr std::size_t FieldCount = 7;

constexpr std::array<std::string_view, 3> DefectTexts = {
    "Spannung an Kanal ", "fehlende Verbindung zwischen ", "Kurzschluss zwischen "};

std::vector<std::string> SplitFields(const std::string& line) {
  std::vector<std::string> fields;
  for (std::size_t begin = 0;;) {
    const std::size_t end = line.find('|', begin);
    if (end == std::string::npos) {
      fields.push_back(line.substr(begin));
      return fields;
    }
    fields.push_back(line.substr(begin, end - begin));
    begin = end + 1;
  }
}

/// Reads a limit; false when it is neither empty nor a number.
bool ReadLimit(const std::string& text, std::optional<double>& limit) {
  limit = NumberOf(text);
  return limit.has_value() || text.empty();
}

}  // namespace

bool TellsOfADefect(const std::string& text) {
  return std::any_of(DefectTexts.begin(), DefectTexts.end(),
                     [&](std::string_view start) { return text.starts_with(start); });
}

std::optional<double> NumberOf(const std::string& text) {
  // "inf" and "nan" are numbers to from_chars, but none that a limit could be compared with.
  if (text.find_first_not_of("0123456789+-.,eE") != std::string::npos) return std::nullopt;
  if (std::count_if(text.begin(), text.end(), [](char c) { return c == ',' || c == '.'; }) > 1)
    return std::nullopt;
  std::string point = text;
  std::replace(point.begin(), point.end(), ',', '.');
  double number = 0;
  const char* last = point.data() + point.size();
  const auto [end, error] = std::from_chars(point.data(), last, number);
  if (error != std::errc() || end != last) return std::nullopt;
  return number;
}

Record ParseRecord(const std::string& line) {
  Record record;
  record.line = line;
  const std::vector<std::string> fields = SplitFields(line);
  if (fields.size() != FieldCount) {
    record.text = line;
    return record;
  }
  record.text = fields[0];
  record.lowerText = fields[1];
  record.valueText = fields[2];
  record.unit = fields[3];
  record.upperText = fields[4];
  record.value = NumberOf(record.valueText);
  const bool limitsRead =
      ReadLimit(record.lowerText, record.lower) && ReadLimit(record.upperText, record.upper);
  const bool comparable = record.value || (!record.lower && !record.upper);
  // A defect is one whatever its value reads, even "INF".
  record.readable = limitsRead && (comparable || TellsOfADefect(record.text));
  return record;
}

bool IsFinding(const Record& record) {
  if (!record.readable || TellsOfADefect(record.text)) return true;
  if (record.lower && *record.value < *record.lower) return true;
  return record.upper && *record.value > *record.upper;
}

bool IsSummary(const Record& record) {
  return record.readable && record.lower && record.upper && *record.lower == *record.upper;
}

}  // namespace kxbench
