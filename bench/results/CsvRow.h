#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kxbench::results {

/// One line of CSV (RFC 4180) with its end, CR LF. A text that a spreadsheet would take for a formula (it
/// begins with =, +, -, @, tab or CR) gets an apostrophe in front. See also
/// https://owasp.org/www-community/attacks/CSV_Injection.
class CsvRow {
 public:
  CsvRow& Text(const std::string& text);

  /// A number with a decimal point, with as many digits as it takes to read the same one; an empty cell for
  /// none.
  CsvRow& Number(const std::optional<double>& number);

  std::string Line() const { return line_ + "\r\n"; }

 private:
  CsvRow& Cell(const std::string& cell);

  std::string line_;
  bool first_ = true;
};

}  // namespace kxbench::results
