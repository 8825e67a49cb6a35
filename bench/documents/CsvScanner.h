#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

/// Bounds of a table; what is larger is no wiring list.
inline constexpr std::size_t MostFieldBytes = 4096;
inline constexpr std::size_t MostFields = 1024;  ///< of one row
inline constexpr std::size_t MostTableFields = 1'000'000;

struct CsvCell {
  std::string
      text;  ///< without its quotes and the blanks at its ends; line breaks and tabs inside are one blank
  std::size_t line = 0;
  std::size_t column = 0;  ///< in characters
};

struct CsvRow {
  std::vector<CsvCell> cells;
  std::size_t line = 0;
};

/// A text without the blanks that spreadsheets leave at the ends of fields, those that do not break too, and
/// with a blank for each run of line breaks and tabs inside.
std::string CleanedField(std::string_view text);

/// Reads a table row by row. Lines end with CRLF, LF or CR; fields may be quoted, with quotes doubled inside.
/// Left out: empty lines, rows without any content, and lines that begin with "#" or "//".
class CsvScanner {
 public:
  /// `text` is UTF-8 without a byte order mark, and outlives the scanner.
  CsvScanner(std::string fileName, std::string_view text, char separator);

  /// The next row; none at the end. Throws DocumentError: a control character, a quote that is not closed,
  /// anything but the separator after a closing quote, a field or a row beyond the bounds.
  std::optional<CsvRow> Next();

 private:
  bool AtEnd() const { return rest_.empty(); }
  bool AtLineEnd() const { return AtEnd() || rest_.front() == '\n' || rest_.front() == '\r'; }
  bool AtFieldEnd() const { return AtLineEnd() || rest_.front() == separator_; }
  void Take();
  void SkipBlanks();
  bool SkipComment();
  CsvCell ReadCell();
  void ReadQuoted(CsvCell& cell);
  [[noreturn]] void Fail(std::size_t line, std::size_t column, const std::string& what) const;

  std::string fileName_;
  std::string_view rest_;
  char separator_;
  std::size_t line_ = 1;
  std::size_t column_ = 1;
};

/// The text of a document as UTF-8: as its byte order mark says, else UTF-8 where it is that, else
/// Windows-1252, on every system.
std::string DocumentTextToUtf8(std::string text);

/// The same. Throws DocumentError for a text that is not what its byte order mark says: names that differ
/// could become one.
std::string CheckedDocumentText(const std::string& fileName, std::string text);

/// A text as a field of a table: quoted where it would not be read back as it is.
std::string CsvField(const std::string& text);

}  // namespace kxbench::documents
