#include "bench/documents/CsvScanner.h"

#include <utility>

#include "bench/documents/TextPlaces.h"
#include "text/SystemText.h"
#include "text/TextEncoding.h"
#include "text/Trim.h"
#include "text/Utf8.h"

namespace kxbench::documents {

namespace {

constexpr std::string_view NoBreakSpace = "\xC2\xA0";

}  // namespace

std::string CleanedField(std::string_view text) {
  for (bool changed = true; changed;) {
    text = shorttest::Trim(text);
    changed = text.starts_with(NoBreakSpace) || text.ends_with(NoBreakSpace);
    if (text.starts_with(NoBreakSpace)) text.remove_prefix(NoBreakSpace.size());
    if (text.ends_with(NoBreakSpace)) text.remove_suffix(NoBreakSpace.size());
  }
  std::string cleaned;
  bool inBreak = false;
  for (const char c : text) {
    const bool breaks = c == '\n' || c == '\r' || c == '\t';
    if (!breaks || !inBreak) cleaned += breaks ? ' ' : c;
    inBreak = breaks;
  }
  return cleaned;
}

CsvScanner::CsvScanner(std::string fileName, std::string_view text, char separator)
    : fileName_(std::move(fileName)), rest_(text), separator_(separator) {}

void CsvScanner::Fail(std::size_t line, std::size_t column, const std::string& what) const {
  throw DocumentError({fileName_, line, column}, what);
}

void CsvScanner::Take() {
  const char c = rest_.front();
  const auto byte = static_cast<unsigned char>(c);
  if (c == '\0') Fail(line_, column_, "there is a NUL byte: this is no text, or UTF-16 without its mark");
  if ((byte < 0x20U && c != '\t' && c != '\n' && c != '\r') || byte == 0x7FU) {
    Fail(line_, column_, "there is a control character");
  }
  const bool ends = c == '\n' || (c == '\r' && !rest_.starts_with("\r\n"));
  if (ends) {
    ++line_;
    column_ = 1;
  } else if ((byte & 0xC0U) != 0x80U) {
    ++column_;
  }
  rest_.remove_prefix(1);
}

void CsvScanner::SkipBlanks() {
  while (!AtEnd() && rest_.front() != separator_ && (rest_.front() == ' ' || rest_.front() == '\t')) Take();
}

bool CsvScanner::SkipComment() {
  if (!rest_.starts_with("#") && !rest_.starts_with("//")) return false;
  while (!AtLineEnd()) Take();
  return true;
}

void CsvScanner::ReadQuoted(CsvCell& cell) {
  Take();
  for (;;) {
    if (AtEnd()) Fail(cell.line, cell.column, "this quote is not closed");
    if (rest_.starts_with("\"\"")) {
      Take();
    } else if (rest_.front() == '"') {
      break;
    }
    cell.text += rest_.front();
    Take();
    if (cell.text.size() > MostFieldBytes) {
      Fail(
          cell.line, cell.column,
          "this field is longer than " + std::to_string(MostFieldBytes) + " bytes: is its quote not closed?");
    }
  }
  Take();
  SkipBlanks();
  if (!AtFieldEnd())
    Fail(line_, column_, "after a closing quote there must be a separator or the line's end");
}

CsvCell CsvScanner::ReadCell() {
  SkipBlanks();
  CsvCell cell{"", line_, column_};
  if (!AtEnd() && rest_.front() == '"') {
    ReadQuoted(cell);
  } else {
    while (!AtFieldEnd()) {
      cell.text += rest_.front();
      Take();
      if (cell.text.size() > MostFieldBytes) {
        Fail(cell.line, cell.column,
             "this field is longer than " + std::to_string(MostFieldBytes) + " bytes");
      }
    }
  }
  cell.text = CleanedField(cell.text);
  return cell;
}

std::optional<CsvRow> CsvScanner::Next() {
  while (!AtEnd()) {
    SkipBlanks();
    CsvRow row{{}, line_};
    bool hasText = false;
    if (!SkipComment()) {
      for (bool more = true; more;) {
        row.cells.push_back(ReadCell());
        hasText = hasText || !row.cells.back().text.empty();
        if (row.cells.size() > MostFields) {
          Fail(row.line, 0, "this line has more than " + std::to_string(MostFields) + " fields");
        }
        more = !AtLineEnd();
        if (more) Take();
      }
    }
    if (!AtEnd() && rest_.starts_with("\r\n")) Take();
    if (!AtEnd()) Take();
    if (hasText) return row;
  }
  return std::nullopt;
}

std::string DocumentTextToUtf8(std::string text) {
  std::string_view bytes = text;
  const bool marked =
      bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF") || shorttest::TakeByteOrderMark(bytes);
  if (marked) return shorttest::FileTextToUtf8(text);
  if (shorttest::IsUtf8(text)) return text;
  return shorttest::Windows1252ToUtf8(text);
}

std::string CheckedDocumentText(const std::string& fileName, std::string text) {
  constexpr std::string_view Replaced = "\xEF\xBF\xBD";  // what stands for characters that are none
  std::string utf8 = DocumentTextToUtf8(std::move(text));
  const std::size_t at = utf8.find(Replaced);
  if (at == std::string::npos) return utf8;
  const auto [line, column] = TextPlaces(utf8).At(utf8, at);
  throw DocumentError({fileName, line, column}, "there is no character here that the file's encoding has");
}

std::string CsvField(const std::string& text) {
  const bool plain = text.find_first_of(",;\t\"\r\n") == std::string::npos && !text.starts_with('#') &&
                     !text.starts_with("//") && shorttest::Trim(text).size() == text.size();
  if (plain) return text;
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + "\"";
}

}  // namespace kxbench::documents
