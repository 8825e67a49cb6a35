#include "bench/documents/WiringListReader.h"

#include <map>
#include <optional>
#include <set>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bench/documents/NameText.h"
#include "bench/documents/WholePlaces.h"
#include "bench/documents/WiringBuilder.h"
#include "bench/documents/WiringTable.h"

namespace kxbench::documents {

namespace {

class ListReading {
 public:
  explicit ListReading(WiringTable table) : table_(std::move(table)), layout_(table_.layout) {
    const Place head{table_.file, table_.headLine, 0};
    if (table_.linesAbove > 0) {
      builder_.Warn(head, "what stands above this head was not read: lines with text, " +
                              std::to_string(table_.linesAbove));
    }
    if (table_.headIsPresumed) builder_.Warn(head, "this line was taken for a head, and not read");
    for (const CsvRow& row : table_.rows) LearnPlaces(row);
    RequireWholePlaces(table_, places_);
  }

  WiringDocument Read() {
    for (const CsvRow& row : table_.rows) {
      if (IsHeadAgain(row)) continue;
      table_.RequireFields(row, layout_.FieldsNeeded());
      if (layout_.IsNetOnEachLine()) {
        ReadNetLine(row);
      } else if (layout_.IsFromTo()) {
        ReadWire(row);
      } else {
        ReadPinLine(row);
      }
    }
    WarnOfEndsWithoutPin();
    RequirePins();
    return builder_.Take();
  }

 private:
  using Number = std::optional<std::size_t>;  // of a pin in the builder

  /// A head that a print of several pages repeats.
  bool IsHeadAgain(const CsvRow& row) {
    if (table_.head.empty() || !SameTexts(row.cells, table_.head)) return false;
    if (!headAgain_) builder_.Warn({table_.file, row.line, 0}, "the head once more: not read");
    headAgain_ = true;
    return true;
  }

  void LearnPlaces(const CsvRow& row) {
    for (const ListLayout::Side* side : {&layout_.from, &layout_.to}) {
      if (side->pin && !side->connector) places_.Learn(table_.At(row, side->pin).text);
    }
    for (std::size_t i = 0; layout_.IsNetOnEachLine() && i < row.cells.size(); ++i) {
      if (!IsPlaceColumn(i)) continue;
      for (const std::string& place : PlaceSplitter::PlacesIn(row.cells[i].text)) places_.Learn(place);
    }
  }

  bool IsPlaceColumn(std::size_t i) const {
    if (layout_.placesGoOn && i >= layout_.columns) return true;
    for (const std::size_t column : layout_.places) {
      if (column == i) return true;
    }
    return false;
  }

  Number AddPlace(const CsvCell& cell) { return AddPlace(cell.text, cell); }

  Number AddPlace(const std::string& text, const CsvCell& cell) {
    if (text.empty() || SaysNothing(text)) return std::nullopt;
    return builder_.AddPin(places_.Split(text), table_.PlaceOf(cell));
  }

  /// The pin of one side; none where the cells are empty.
  Number AddSide(const CsvRow& row, const ListLayout::Side& side) {
    const CsvCell& pin = table_.At(row, side.pin);
    if (!side.connector) return AddPlace(pin);
    const CsvCell& connector = table_.At(row, side.connector);
    if (connector.text.empty() && pin.text.empty()) return std::nullopt;
    const bool noPin = pin.text.empty() || SaysNothing(pin.text);
    if (layout_.IsFromTo() && noPin && (connector.text.empty() || SaysNothing(connector.text)))
      return std::nullopt;
    if (connector.text.empty())
      throw DocumentError(table_.PlaceOf(pin), "pin " + pin.text + " is on no connector");
    if (layout_.IsFromTo() && !pin.text.empty() && noPin && !IsPole(connector.text, pin.text)) {
      if (endsWithoutPin_++ == 0) firstEndWithoutPin_ = table_.PlaceOf(pin);
      return std::nullopt;
    }
    if (layout_.IsFromTo()) {  // a list of pins may mean it, such as one that was exported
      if (pin.text.empty()) {
        whole_.try_emplace(connector.text, table_.PlaceOf(connector));
      } else {
        parted_.insert(connector.text);
      }
    }
    return builder_.AddPin({connector.text, pin.text}, table_.PlaceOf(connector));
  }

  /// A battery's "-" is a pin where there is a "+".
  bool IsPole(const std::string& connector, const std::string& pin) {
    if (pin.find_first_not_of("-\xE2\x80\x93\x94") != std::string::npos) return false;
    if (!poles_) {
      poles_.emplace();
      for (const CsvRow& row : table_.rows) {
        for (const ListLayout::Side* side : {&layout_.from, &layout_.to}) {
          const std::string& text = table_.At(row, side->pin).text;
          if (text.find_first_not_of('+') == std::string::npos && !text.empty())
            poles_->insert(table_.At(row, side->connector).text);
        }
      }
    }
    return poles_->contains(connector);
  }

  void WarnOfEndsWithoutPin() {
    if (endsWithoutPin_ == 0) return;
    builder_.Warn(firstEndWithoutPin_,
                  "ends whose pin says that nothing is connected, and that lead nowhere: " +
                      std::to_string(endsWithoutPin_));
  }

  /// A connector without a pin is a point of its own, such as a splice. With pins elsewhere, one is missing.
  void RequirePins() const {
    for (const auto& [connector, place] : whole_) {
      if (parted_.contains(connector)) {
        throw DocumentError(place, connector + " stands here without a pin, elsewhere with one");
      }
    }
  }

  Number AddSplice(const CsvRow& row) {
    const CsvCell& cell = table_.At(row, layout_.splice);
    if (cell.text.empty() || SaysNothing(cell.text)) return std::nullopt;
    builder_.MakeSplice(cell.text);
    return builder_.AddPin({cell.text, ""}, table_.PlaceOf(cell));
  }

  const CsvCell& NetCell(const CsvRow& row) const {
    return table_.At(row, layout_.net ? layout_.net : layout_.signal);
  }

  void ReadWire(const CsvRow& row) {
    const Number from = AddSide(row, layout_.from);
    const Number to = AddSide(row, layout_.to);
    const Number splice = AddSplice(row);
    if (from && to) {
      if (*from == *to) builder_.Warn({table_.file, row.line, 0}, "this wire ends where it begins");
      builder_.Connect(*from, *to);
    }
    const Number end = from ? from : to;
    if (end && splice) builder_.Connect(*end, *splice, !(from && to));
    if (end) builder_.NameNet(*end, NetCell(row).text);
  }

  /// Joins a pin with its net, by the net's name.
  void Join(std::size_t pin, const std::string& name, const Place& place) {
    if (name.empty() || SaysNothing(name)) return;
    const auto [named, isFirst] = netOf_.try_emplace(pin, name);
    if (!isFirst && named->second != name) {
      builder_.Warn(place, "this pin is in the nets " + ShownText(named->second) + " and " + ShownText(name) +
                               ": they are one");
    }
    const auto [net, isNew] = nets_.try_emplace(name, pin);
    if (isNew) {
      builder_.NameNet(pin, name);
    } else {
      builder_.Connect(net->second, pin, false);
    }
  }

  void ReadPinLine(const CsvRow& row) {
    Number pin = AddSide(row, layout_.from);
    const CsvCell& channel = table_.At(row, layout_.channel);
    if (!pin && IsNumber(channel.text)) pin = builder_.AddPin({"", channel.text}, table_.PlaceOf(channel));
    const Number splice = AddSplice(row);
    if (!pin) pin = splice;
    if (!pin) throw DocumentError({table_.file, row.line, 0}, "this line names no pin");
    if (splice) builder_.Connect(*pin, *splice, false);
    Join(*pin, NetCell(row).text, {table_.file, row.line, 0});
  }

  void ReadNetLine(const CsvRow& row) {
    const std::string& name = NetCell(row).text;
    Number first;
    for (std::size_t i = 0; i < row.cells.size(); ++i) {
      if (!IsPlaceColumn(i)) continue;
      for (const std::string& place : PlaceSplitter::PlacesIn(row.cells[i].text)) {
        const Number pin = AddPlace(place, row.cells[i]);
        if (!pin) continue;
        Join(*pin, name, table_.PlaceOf(row.cells[i]));
        if (first && !SaysNothing(name)) builder_.Connect(*first, *pin, false);
        if (!first) first = pin;
      }
    }
    if (!first) throw DocumentError({table_.file, row.line, 0}, "this line names no pin");
  }

  WiringTable table_;
  const ListLayout& layout_;
  PlaceSplitter places_;
  WiringBuilder builder_;
  std::map<std::string, std::size_t> nets_;
  std::unordered_map<std::size_t, std::string> netOf_;  // of a pin
  bool headAgain_ = false;

  std::map<std::string, Place> whole_;          // connectors that stand somewhere without a pin
  std::set<std::string> parted_;                // and with one
  std::optional<std::set<std::string>> poles_;  // connectors with a pin "+"
  std::size_t endsWithoutPin_ = 0;
  Place firstEndWithoutPin_;
};

}  // namespace

WiringDocument ReadWiringList(const std::string& fileName, std::string text,
                              const WiringListOptions& options) {
  const std::string utf8 = CheckedDocumentText(fileName, std::move(text));
  return ListReading(ReadWiringTable(fileName, utf8, TableUse::List, options.columns)).Read();
}

}  // namespace kxbench::documents
