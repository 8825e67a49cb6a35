#include "bench/documents/WholePlaces.h"

namespace kxbench::documents {

namespace {

class PlaceCheck {
 public:
  PlaceCheck(const WiringTable& table, const PlaceSplitter& places) : table_(table), places_(places) {}

  void Require(const ListLayout::Side& side) const {
    if (!side.pin || side.connector || table_.head.empty() || !AreAllBare(*side.pin)) return;
    const std::size_t pins = *side.pin;
    const std::string column = "column " + table_.ColumnText(pins);
    for (const std::size_t other : table_.layout.unknown) {
      if (side.isPlace && other == pins + 1 && IsFilled(other, pins, true)) {
        Refuse(column + " has no pins: do they stand in column " + table_.ColumnText(other) + '?');
      }
      if (!side.isPlace && IsFilled(other, pins, false)) {
        Refuse(column + " has no connectors: do they stand in column " + table_.ColumnText(other) + '?');
      }
    }
    const bool otherHasConnectors = table_.layout.from.connector || table_.layout.to.connector;
    if (!side.isPlace && otherHasConnectors) Refuse(column + " has no connectors, the other side has.");
  }

 private:
  [[noreturn]] void Refuse(const std::string& text) const {
    throw DocumentError({table_.file, table_.headLine, 0},
                        text + " Say with --columns, from the left, what each column holds");
  }

  /// Whether no place of a column is parted into connector and pin.
  bool AreAllBare(std::size_t column) const {
    bool any = false;
    for (const CsvRow& row : table_.rows) {
      const std::string& text = table_.At(row, column).text;
      if (text.empty() || SaysNothing(text)) continue;
      const Pin pin = places_.Split(text);
      if (!pin.connector.empty() && !pin.pin.empty()) return false;
      any = true;
    }
    return any;
  }

  /// Whether a column has something wherever `beside` has: numbers alone, or not only numbers.
  bool IsFilled(std::size_t column, std::size_t beside, bool numbers) const {
    bool onlyNumbers = true;
    for (const CsvRow& row : table_.rows) {
      const std::string& text = table_.At(row, column).text;
      if (text.empty() && !table_.At(row, beside).text.empty()) return false;
      onlyNumbers = onlyNumbers && (text.empty() || IsNumber(text));
    }
    return onlyNumbers == numbers;
  }

  const WiringTable& table_;
  const PlaceSplitter& places_;
};

}  // namespace

void RequireWholePlaces(const WiringTable& table, const PlaceSplitter& places) {
  const PlaceCheck check(table, places);
  check.Require(table.layout.from);
  check.Require(table.layout.to);
}

}  // namespace kxbench::documents
