#include "bench/documents/WiringTable.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "bench/documents/NameText.h"
#include "text/Trim.h"

namespace kxbench::documents {

namespace {

constexpr std::string_view Separators = ",;\t";
constexpr std::size_t MostLinesAboveHead = 20;
constexpr std::size_t RowsLookedAt = 40;

bool Fits(const ListLayout& layout, TableUse use) {
  return use == TableUse::List ? layout.IsList() : layout.IsMap();
}

/// What --columns says.
struct AskedColumns {
  std::vector<ColumnMeaning> meanings;
  std::vector<std::string> heads;  // in small letters; empty: the columns from the left
};

ColumnMeaning AskedMeaning(const std::string& word) {
  if (word == "-") return {};
  const ColumnMeaning meaning = MeaningOf(word);
  if (meaning.kind == ColumnKind::Unused) {
    throw DocumentError({"--columns"}, word +
                                           " is no kind of column: from, to, connector, pin, pins, net, "
                                           "signal, splice, channel or - (from-pin, to-connector ...)");
  }
  return meaning;
}

AskedColumns Asked(const std::string& columns) {
  AskedColumns asked;
  std::size_t named = 0;
  for (const std::string& part : SplitAt(columns, ",")) {
    const std::size_t equals = part.find('=');
    asked.meanings.push_back(AskedMeaning(part.substr(0, equals)));
    if (equals == std::string::npos) continue;
    ++named;
    asked.heads.push_back(Lowered(shorttest::Trim(std::string_view(part).substr(equals + 1))));
  }
  if (named != 0 && named != asked.meanings.size()) {
    throw DocumentError({"--columns"}, "either all columns have their names in the file or none has");
  }
  return asked;
}

/// The meanings of a row that is the head which --columns speaks of; empty when it is another row.
std::vector<ColumnMeaning> MeaningsByHead(const CsvRow& row, const AskedColumns& asked) {
  std::vector<ColumnMeaning> meanings(row.cells.size());
  for (std::size_t i = 0; i < asked.heads.size(); ++i) {
    const auto cell = std::find_if(row.cells.begin(), row.cells.end(),
                                   [&](const CsvCell& c) { return Lowered(c.text) == asked.heads[i]; });
    if (cell == row.cells.end()) return {};
    meanings[static_cast<std::size_t>(cell - row.cells.begin())] = asked.meanings[i];
  }
  return meanings;
}

std::vector<ColumnMeaning> MeaningsOfRow(const CsvRow& row) {
  std::vector<ColumnMeaning> meanings;
  for (const CsvCell& cell : row.cells) meanings.push_back(MeaningOf(cell.text));
  return meanings;
}

/// A head names what stands below it; a number does not.
bool CanBeHead(const CsvRow& row) {
  return std::none_of(row.cells.begin(), row.cells.end(),
                      [](const CsvCell& cell) { return IsNumber(cell.text); });
}

bool LooksLikeHead(const CsvRow& row, TableUse use) {
  return CanBeHead(row) && Fits(LayoutOf(MeaningsOfRow(row)), use);
}

/// Every word of it is one of heads: a connector "Pin" with a contact "Pin.54g" is not.
bool IsNothingButHead(const CsvRow& row, TableUse use) {
  const std::vector<ColumnMeaning> meanings = MeaningsOfRow(row);
  return LooksLikeHead(row, use) && std::all_of(meanings.begin(), meanings.end(),
                                                [](const ColumnMeaning& meaning) { return meaning.whole; });
}

/// A map whose first row is already one: "X1.3,14" or "X1,3,14".
std::optional<ListLayout> HeadlessMap(const CsvRow& row) {
  const std::size_t count = row.cells.size();
  if ((count != 2 && count != 3) || !IsNumber(row.cells.back().text)) return std::nullopt;
  const ColumnMeaning channel = {ColumnKind::Channel};
  if (count == 2) return LayoutOf({{ColumnKind::Place}, channel});
  return LayoutOf({{ColumnKind::Connector}, {ColumnKind::Pin}, channel});
}

/// How one separator reads the beginning of the table.
struct Attempt {
  char separator = ',';
  ListLayout layout;
  bool fits = false;
  std::size_t rowsAbove = 0;  // rows before the head
  bool hasHead = false;
  std::size_t secondHead = 0;  // the line below that looks like one, too; 0: there is none
  std::size_t fields = 0;      // of the rows looked at
};

void FindLayout(const std::vector<CsvRow>& rows, TableUse use, const std::optional<AskedColumns>& asked,
                Attempt& attempt) {
  if (asked && asked->heads.empty()) {
    attempt.layout = LayoutOf(asked->meanings);
    attempt.layout.placesGoOn = attempt.layout.IsNetOnEachLine();
    attempt.fits = Fits(attempt.layout, use);
    const auto first =
        std::find_if(rows.begin(), rows.end(), [use](const CsvRow& row) { return !LooksLikeHead(row, use); });
    // What looks like a head throughout is none: connectors that are called "Stecker A".
    attempt.hasHead = first != rows.begin() && (first != rows.end() || rows.size() == 1);
    if (attempt.hasHead) attempt.rowsAbove = static_cast<std::size_t>(first - rows.begin()) - 1;
    return;
  }
  for (std::size_t i = 0; i < std::min(rows.size(), MostLinesAboveHead); ++i) {
    if (!asked && !CanBeHead(rows[i])) continue;
    const ListLayout layout = LayoutOf(asked ? MeaningsByHead(rows[i], *asked) : MeaningsOfRow(rows[i]));
    if (!Fits(layout, use)) continue;
    const bool another = !asked && i + 1 < rows.size() && IsNothingButHead(rows[i + 1], use) &&
                         !SameTexts(rows[i].cells, rows[i + 1].cells);
    if (another) attempt.secondHead = rows[i + 1].line;
    attempt.layout = layout;
    attempt.fits = true;
    attempt.hasHead = true;
    attempt.rowsAbove = i;
    return;
  }
  if (use != TableUse::Map || asked || rows.empty()) return;
  if (const auto layout = HeadlessMap(rows.front())) {
    attempt.layout = *layout;
    attempt.fits = true;
  }
}

/// "sep=;", which spreadsheets take for a first line, as that separator reads it.
bool IsSeparatorLine(const CsvRow& row) { return row.line == 1 && Lowered(row.cells.front().text) == "sep="; }

Attempt Try(const std::string& file, std::string_view text, char separator, TableUse use,
            const std::optional<AskedColumns>& asked) {
  Attempt attempt;
  attempt.separator = separator;
  std::vector<CsvRow> rows;
  try {
    CsvScanner scanner(file, text, separator);
    while (rows.size() < RowsLookedAt) {
      auto row = scanner.Next();
      if (!row) break;
      if (IsSeparatorLine(*row)) continue;
      attempt.fields += row->cells.size();
      rows.push_back(std::move(*row));
    }
  } catch (const DocumentError&) {
    // Another separator may read it; if none does, reading the whole table says why.
  }
  FindLayout(rows, use, asked, attempt);
  return attempt;
}

/// The separator that such a line names.
std::optional<char> GivenSeparator(std::string_view text) {
  constexpr std::string_view Mark = "sep=";
  if (text.size() < Mark.size() + 2 || Lowered(text.substr(0, Mark.size())) != Mark) return std::nullopt;
  const char separator = text[Mark.size()];
  const char after = text[Mark.size() + 1];
  if (Separators.find(separator) == std::string_view::npos || (after != '\r' && after != '\n')) {
    return std::nullopt;
  }
  return separator;
}

Attempt BestAttempt(const std::string& file, std::string_view text, TableUse use,
                    const std::optional<AskedColumns>& asked) {
  if (const auto given = GivenSeparator(text)) return Try(file, text, *given, use, asked);
  std::optional<Attempt> best;
  for (const char separator : Separators) {
    Attempt attempt = Try(file, text, separator, use, asked);
    const auto rank = [](const Attempt& a) { return std::tuple(a.fits, a.layout.Understood(), a.fields); };
    if (!best || rank(attempt) > rank(*best)) best = std::move(attempt);
  }
  return *best;
}

[[noreturn]] void FailWithoutColumns(const WiringTable& table, const std::string& file, TableUse use,
                                     bool asked) {
  const Place place{file, table.rows.empty() ? 0 : table.rows.front().line, 0};
  if (table.rows.empty()) throw DocumentError(place, "there is nothing in it");
  if (asked) throw DocumentError(place, "no line holds the columns that --columns names");
  if (use == TableUse::Map) {
    throw DocumentError(place, "the columns of a map are connector, pin and channel; this line names others");
  }
  throw DocumentError(place,
                      "this line does not name the columns (from and to, or connector, pin and net ...); "
                      "say what they hold with --columns");
}

/// Of two columns that say the same, one would be left out, and its pins with it.
void RefuseDoubledColumns(const WiringTable& table) {
  if (!table.layout.doubled) return;
  const auto [first, second] = *table.layout.doubled;
  const std::string text =
      "columns " + table.ColumnText(first) + " and " + table.ColumnText(second) + " say the same";
  if (table.head.empty()) throw DocumentError({"--columns"}, text);
  throw DocumentError(table.PlaceOf(table.head.at(second)),
                      text + ": say with --columns, from the left, what each column holds");
}

/// The connectors beside them would be left without their pins.
void RefusePinsOfOne(const WiringTable& table) {
  if (!table.layout.pinsOfOne) return;
  const std::string text = "column " + table.ColumnText(*table.layout.pinsOfOne) +
                           " is for several pins of the connector beside it, which is not read: each pin "
                           "needs a line of its own";
  if (table.head.empty()) throw DocumentError({"--columns"}, text);
  throw DocumentError(table.PlaceOf(table.head.at(*table.layout.pinsOfOne)),
                      text + "; if it holds one, say with --columns that it is a pin");
}

}  // namespace

const CsvCell& WiringTable::At(const CsvRow& row, const std::optional<std::size_t>& column) const {
  static const CsvCell none;
  return column && *column < row.cells.size() ? row.cells[*column] : none;
}

std::string WiringTable::ColumnText(std::size_t column) const {
  const bool named = column < head.size() && !head[column].text.empty();
  return std::to_string(column + 1) + (named ? " (" + ShownText(head[column].text) + ")" : "");
}

void WiringTable::RequireFields(const CsvRow& row, std::size_t needed) const {
  const std::size_t count = row.cells.size();
  if (count < needed) {
    throw DocumentError({file, row.line, 0}, "this line has " + std::to_string(count) +
                                                 (count == 1 ? " field" : " fields") +
                                                 "; the columns that count are " + std::to_string(needed));
  }
  if (layout.placesGoOn || headLine == 0) return;
  for (std::size_t i = layout.columns; i < count; ++i) {
    if (row.cells[i].text.empty()) continue;
    throw DocumentError(PlaceOf(row.cells[i]), "this field is past the last column of the head, which has " +
                                                   std::to_string(layout.columns));
  }
}

bool SameTexts(const std::vector<CsvCell>& a, const std::vector<CsvCell>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const CsvCell& x, const CsvCell& y) { return x.text == y.text; });
}

WiringTable ReadWiringTable(const std::string& file, std::string_view utf8, TableUse use,
                            const std::optional<std::string>& columns) {
  const std::optional<AskedColumns> asked =
      columns ? std::optional<AskedColumns>(Asked(*columns)) : std::nullopt;
  if (asked && asked->heads.empty() && !Fits(LayoutOf(asked->meanings), use)) {
    throw DocumentError({"--columns"}, *columns + " names neither from and to nor pins and their net");
  }
  const Attempt attempt = BestAttempt(file, utf8, use, asked);
  WiringTable table;
  table.file = file;
  table.layout = attempt.layout;
  CsvScanner scanner(file, utf8, attempt.separator);
  std::size_t fields = 0;
  while (auto row = scanner.Next()) {
    if (IsSeparatorLine(*row)) continue;
    fields += row->cells.size();
    if (fields > MostTableFields) {
      throw DocumentError({file, row->line, 0},
                          "there are more than " + std::to_string(MostTableFields) + " fields");
    }
    table.rows.push_back(std::move(*row));
  }
  if (!attempt.fits) FailWithoutColumns(table, file, use, asked.has_value());
  if (attempt.secondHead != 0) {
    throw DocumentError({file, attempt.secondHead, 0},
                        "this line looks like a head, as the one above it does: say with --columns, from the "
                        "left, what each column holds");
  }
  table.headIsPresumed = attempt.hasHead && asked && asked->heads.empty();
  if (attempt.hasHead && !table.headIsPresumed) table.head = table.rows.at(attempt.rowsAbove).cells;
  RefuseDoubledColumns(table);
  if (use == TableUse::List) RefusePinsOfOne(table);
  if (attempt.hasHead) {
    table.linesAbove = attempt.rowsAbove;
    table.headLine = table.rows.at(attempt.rowsAbove).line;
    table.rows.erase(table.rows.begin(),
                     table.rows.begin() + static_cast<std::ptrdiff_t>(attempt.rowsAbove + 1));
  }
  return table;
}

}  // namespace kxbench::documents
