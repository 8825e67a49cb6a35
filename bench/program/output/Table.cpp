#include "bench/program/output/Table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "ui/terminal/Printable.h"

namespace kxbench {

namespace {

constexpr std::size_t Gap = 2;

std::string Padded(const std::string& text, std::size_t width, Table::Align align) {
  const std::size_t characters = CharactersIn(text);
  const std::string blanks(width > characters ? width - characters : 0, ' ');
  return align == Table::Align::Left ? text + blanks : blanks + text;
}

void AppendLine(std::string& text, std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  text += line + "\n";
}

std::string NumberText(double value, std::chars_format format, int precision) {
  std::array<char, 400> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value, format, precision).ptr;
  return std::string(text.data(), end);
}

}  // namespace

std::size_t CharactersIn(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

std::vector<std::string> Wrapped(const std::string& text, std::size_t width) {
  std::vector<std::string> lines(1);
  for (std::size_t begin = 0; begin < text.size();) {
    // A word with the blanks before it, so that several blanks in a row survive within a line.
    const std::size_t word = std::min(text.find_first_not_of(' ', begin), text.size());
    const std::size_t end = std::min(text.find(' ', word), text.size());
    const std::string part = text.substr(begin, end - begin);
    const bool fits = CharactersIn(lines.back()) + CharactersIn(part) <= width;
    if (fits || lines.back().empty()) {
      lines.back() += part;
    } else {
      lines.push_back(text.substr(word, end - word));
    }
    begin = end;
  }
  return lines;
}

std::string Entry(const std::string& label, const std::string& text) {
  constexpr std::size_t labelWidth = 24;
  constexpr std::size_t lineWidth = 100;
  std::string entry;
  std::string start = std::string(Indent, ' ') + label + std::string(labelWidth - CharactersIn(label), ' ');
  for (const std::string& line : Wrapped(text, lineWidth - labelWidth - Indent)) {
    entry += start + line + "\n";
    start.assign(Indent + labelWidth, ' ');
  }
  return entry;
}

std::string ShortNumber(double value) { return NumberText(value, std::chars_format::general, 3); }

std::string PlainNumber(double value) { return NumberText(value, std::chars_format::general, 15); }

std::string FixedNumber(double value, int decimals) {
  return NumberText(value, std::chars_format::fixed, decimals);
}

Table::Table(std::vector<Align> columns, std::size_t firstWidth)
    : columns_(std::move(columns)), firstWidth_(firstWidth) {}

void Table::AddRow(std::vector<std::string> cells) {
  for (std::string& cell : cells) cell = Printable(cell);
  rows_.push_back(std::move(cells));
}

std::string Table::Text(std::size_t indent) const {
  std::vector<std::size_t> widths(columns_.size(), 0);
  for (const auto& row : rows_) {
    for (const std::string& line : Wrapped(row[0], firstWidth_))
      widths[0] = std::max(widths[0], CharactersIn(line));
    for (std::size_t i = 1; i < row.size(); ++i) widths[i] = std::max(widths[i], CharactersIn(row[i]));
  }

  const std::string margin(indent, ' ');
  std::string text;
  for (const auto& row : rows_) {
    std::vector<std::string> lines = Wrapped(row[0], firstWidth_);
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) AppendLine(text, margin + lines[i]);
    std::string line = margin + Padded(lines.back(), widths[0], columns_[0]);
    for (std::size_t i = 1; i < row.size(); ++i) {
      line += std::string(Gap, ' ') + Padded(row[i], widths[i], columns_[i]);
    }
    AppendLine(text, line);
  }
  return text;
}

}  // namespace kxbench
