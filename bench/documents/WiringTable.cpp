#include "bench/documents/WiringTable.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include "bench/documents/NameText.h"
#include "text/Trim.h"

namespace kxbench::documents {

namespace {

constexpr std::string_view Separators = ",;\t";
constexpr std::size_t MostLinesAboveHead = 20;
constexpr std::size_t RowsLookedAt = 40;

std::string Lowered(std::string_view text) {
  std::string lowered(text);
  for (char& c : lowered) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lowered;
}

bool Fits(const ListLayout& layout, TableUse use) {
  return use == TableUse::List ? layout.IsList() : layout.IsMap();
}

/// The parts between any of `separators`, without the empty ones.
std::vector<std::string> SplitAt(const std::string& text, std::string_view separators) {
  std::vector<std::string> parts;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find_first_of(separators, begin), text.size());
    const std::string part = CleanedField(std::string_view(text).substr(begin, end - begin));
    if (!part.empty()) parts.push_back(part);
    begin = end + 1;
  }
  return parts;
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
  std::size_t fields = 0;  // of the rows looked at
};

void FindLayout(const std::vector<CsvRow>& rows, TableUse use, const std::optional<AskedColumns>& asked,
                Attempt& attempt) {
  if (asked && asked->heads.empty()) {
    attempt.layout = LayoutOf(asked->meanings);
    attempt.layout.placesGoOn = attempt.layout.IsNetOnEachLine();
    attempt.fits = Fits(attempt.layout, use);
    attempt.hasHead = !rows.empty() && Fits(LayoutOf(MeaningsOfRow(rows.front())), use);
    return;
  }
  for (std::size_t i = 0; i < std::min(rows.size(), MostLinesAboveHead); ++i) {
    const ListLayout layout = LayoutOf(asked ? MeaningsByHead(rows[i], *asked) : MeaningsOfRow(rows[i]));
    if (!Fits(layout, use)) continue;
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
void RefuseDoubledColumns(const ListLayout& layout, const std::string& file, const CsvRow* head) {
  if (!layout.doubled) return;
  const auto [first, second] = *layout.doubled;
  const auto name = [&](std::size_t column) {
    const bool named = head != nullptr && column < head->cells.size() && !head->cells[column].text.empty();
    return std::to_string(column + 1) + (named ? " (" + ShownText(head->cells[column].text) + ")" : "");
  };
  const std::string text = "columns " + name(first) + " and " + name(second) + " say the same";
  if (head == nullptr) throw DocumentError({"--columns"}, text);
  throw DocumentError({file, head->line, head->cells.at(second).column},
                      text + ": say with --columns, from the left, what each column holds");
}

}  // namespace

const CsvCell& WiringTable::At(const CsvRow& row, const std::optional<std::size_t>& column) const {
  static const CsvCell none;
  return column && *column < row.cells.size() ? row.cells[*column] : none;
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
  const bool byPosition = asked && asked->heads.empty();
  RefuseDoubledColumns(table.layout, file,
                       attempt.hasHead && !byPosition ? &table.rows.at(attempt.rowsAbove) : nullptr);
  if (attempt.hasHead) {
    table.linesAbove = attempt.rowsAbove;
    table.headLine = table.rows.at(attempt.rowsAbove).line;
    table.rows.erase(table.rows.begin(),
                     table.rows.begin() + static_cast<std::ptrdiff_t>(attempt.rowsAbove + 1));
  }
  return table;
}

void PlaceSplitter::Learn(const std::string& text) {
  for (std::size_t i = 0; i < Splitters.size(); ++i) {
    const std::size_t at = text.rfind(Splitters[i]);
    if (at != std::string::npos && at > 0 && at + 1 < text.size()) ++counts_[i];
  }
}

Pin PlaceSplitter::Split(const std::string& text) const {
  if (IsNumber(text)) return {"", text};
  const auto* const best = std::max_element(std::begin(counts_), std::end(counts_));
  const std::size_t at =
      *best == 0 ? std::string::npos : text.rfind(Splitters[static_cast<std::size_t>(best - counts_)]);
  if (at == std::string::npos || at == 0 || at + 1 == text.size()) return {text, ""};
  return {CleanedField(std::string_view(text).substr(0, at)),
          CleanedField(std::string_view(text).substr(at + 1))};
}

std::vector<std::string> PlaceSplitter::PlacesIn(const std::string& text) {
  std::vector<std::string> places;
  for (const std::string& part : SplitAt(text, ",;")) {
    const std::vector<std::string> words = SplitAt(part, " ");
    const bool each = std::all_of(words.begin(), words.end(), [](const std::string& word) {
      return IsNumber(word) || word.find_first_of(".:/-") != std::string::npos;
    });
    if (each) {
      places.insert(places.end(), words.begin(), words.end());
    } else {
      places.push_back(part);
    }
  }
  return places;
}

bool SaysNothing(const std::string& text) {
  static constexpr auto Words = std::to_array<std::string_view>(
      {"-", "--", "---", "–", "—", "nc", "n.c.", "n/c", "n.c", "not connected", "unconnected", "unused",
       "open", "frei", "offen", "unbelegt", "nicht belegt", "n.b.", "nicht verbunden"});
  return std::find(Words.begin(), Words.end(), Lowered(text)) != Words.end();
}

bool IsNumber(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

}  // namespace kxbench::documents
