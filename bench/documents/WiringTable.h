#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/documents/ColumnNames.h"
#include "bench/documents/CsvScanner.h"
#include "bench/documents/FieldText.h"

namespace kxbench::documents {

/// A table with pins in it: a wiring list, or a map of pins to channels.
struct WiringTable {
  std::string file;
  ListLayout layout;
  std::vector<CsvRow> rows;  ///< without the head
  std::vector<CsvCell> head;
  std::size_t headLine = 0;     ///< 0: there is none
  std::size_t linesAbove = 0;   ///< lines with text that stand above the head and were left out
  bool headIsPresumed = false;  ///< --columns says what they hold, and the first line looks like a head

  /// A cell's text and place; an empty text where the row has none.
  const CsvCell& At(const CsvRow& row, const std::optional<std::size_t>& column) const;
  Place PlaceOf(const CsvCell& cell) const { return {file, cell.line, cell.column}; }

  /// How to speak of a column: its number, and its head where there is one.
  std::string ColumnText(std::size_t column) const;

  /// Throws DocumentError for a row that has fewer than `needed` fields, or text past the head's last one.
  void RequireFields(const CsvRow& row, std::size_t needed) const;
};

enum class TableUse { List, Map };

/// Reads the table `utf8` and finds out its separator (, ; or tab) and its columns: by the first of its lines
/// that names what `use` needs, among the first few, or by `columns`.
///
/// `columns` says what the columns hold from the left, in the words of a head and parted by commas, "-" for
/// one that holds nothing ("von,-,nach"); or which column of the head it is ("from=Startpunkt,to=Endpunkt").
/// A map without a head is taken as "place, channel" or "connector, pin, channel".
///
/// Throws DocumentError.
WiringTable ReadWiringTable(const std::string& file, std::string_view utf8, TableUse use,
                            const std::optional<std::string>& columns);

bool SameTexts(const std::vector<CsvCell>& a, const std::vector<CsvCell>& b);

}  // namespace kxbench::documents
