#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/documents/ColumnNames.h"
#include "bench/documents/CsvScanner.h"

namespace kxbench::documents {

/// A table with pins in it: a wiring list, or a map of pins to channels.
struct WiringTable {
  std::string file;
  ListLayout layout;
  std::vector<CsvRow> rows;    ///< without the head
  std::size_t headLine = 0;    ///< 0: there is none
  std::size_t linesAbove = 0;  ///< lines with text that stand above the head and were left out

  /// A cell's text and place; an empty text where the row has none.
  const CsvCell& At(const CsvRow& row, const std::optional<std::size_t>& column) const;
  Place PlaceOf(const CsvCell& cell) const { return {file, cell.line, cell.column}; }
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

/// Pins that are written in one column, "X1.3". All of a table are split at the same character: of
/// . : / - and a blank the one that most of them have, at its last place in each.
class PlaceSplitter {
 public:
  /// Tells of a place before any is split.
  void Learn(const std::string& text);

  /// A place without the character is a connector without a pin, such as a splice; a number alone is the
  /// channel of that number, without a connector.
  Pin Split(const std::string& text) const;

  /// The places of a cell that may hold several, "X1.3, X2.4" or "X1.3 X2.4".
  static std::vector<std::string> PlacesIn(const std::string& text);

 private:
  static constexpr std::string_view Splitters = ".:/- ";
  std::size_t counts_[Splitters.size()] = {};
};

/// Whether a cell says that nothing is connected: "-", "n.c.", "frei".
bool SaysNothing(const std::string& text);

/// Whether the text is digits alone.
bool IsNumber(std::string_view text);

}  // namespace kxbench::documents
