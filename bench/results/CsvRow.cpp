#include "bench/results/CsvRow.h"

#include <string_view>

#include "bench/results/PlainNumber.h"
#include "text/Utf8.h"

namespace kxbench::results {

CsvRow& CsvRow::Text(const std::string& text) {
  constexpr std::string_view FormulaStarts = "=+-@\t\r";
  const bool formula = !text.empty() && FormulaStarts.find(text.front()) != std::string_view::npos;
  return Cell((formula ? "'" : "") + shorttest::ToWellFormedUtf8(text));
}

CsvRow& CsvRow::Number(const std::optional<double>& number) {
  return Cell(number ? PlainNumberText(*number) : "");
}

CsvRow& CsvRow::Cell(const std::string& cell) {
  if (!first_) line_ += ',';
  first_ = false;
  if (cell.find_first_of(",\"\r\n") == std::string::npos) {
    line_ += cell;
    return *this;
  }
  line_ += '"';
  for (const char c : cell) line_ += c == '"' ? "\"\"" : std::string(1, c);
  line_ += '"';
  return *this;
}

}  // namespace kxbench::results
