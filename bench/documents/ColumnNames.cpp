#include "bench/documents/ColumnNames.h"

#include <algorithm>
#include <utility>

#include "bench/documents/HeadWords.h"

namespace kxbench::documents {

namespace {

ColumnKind KindOf(const std::vector<HeaderWord>& words) {
  const auto has = [&](HeaderWord word) {
    return std::find(words.begin(), words.end(), word) != words.end();
  };
  if (has(HeaderWord::Other)) return ColumnKind::Unused;
  if (has(HeaderWord::Channel)) return ColumnKind::Channel;
  if (has(HeaderWord::Splice)) return ColumnKind::Splice;
  if (has(HeaderWord::Pins)) return ColumnKind::Pins;
  if (has(HeaderWord::Connector) && has(HeaderWord::Pin)) return ColumnKind::Place;
  if (has(HeaderWord::Pin)) return ColumnKind::Pin;
  if (has(HeaderWord::Connector)) return ColumnKind::Connector;
  if (has(HeaderWord::Net)) return ColumnKind::Net;
  if (has(HeaderWord::Signal)) return ColumnKind::Signal;
  if (has(HeaderWord::From) != has(HeaderWord::To)) return ColumnKind::Place;
  return has(HeaderWord::Wire) ? ColumnKind::Wire : ColumnKind::Unused;
}

bool IsEndpoint(ColumnKind kind) {
  return kind == ColumnKind::Place || kind == ColumnKind::Connector || kind == ColumnKind::Pin;
}

using Doubled = std::optional<ListLayout::Doubled>;

void SetOnce(std::optional<std::size_t>& target, std::size_t column, Doubled& doubled) {
  if (!target) {
    target = column;
  } else if (!doubled) {
    doubled = {*target, column};
  }
}

/// Puts the columns of connectors and pins where they belong, from left to right.
class SideFinder {
 public:
  SideFinder(const std::vector<ColumnMeaning>& columns, ListLayout& layout)
      : columns_(columns), layout_(layout) {
    sided_ = std::any_of(columns.begin(), columns.end(), [](const ColumnMeaning& column) {
      return IsEndpoint(column.kind) && column.side != ColumnSide::None;
    });
    std::size_t places = 0;
    std::size_t followed = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      if (columns[i].kind != ColumnKind::Place) continue;
      ++places;
      if (i + 1 < columns.size() && columns[i + 1].blank) ++followed;
    }
    blankPins_ = places == 2 && followed == 2;
  }

  void Add(std::size_t i) {
    const ColumnMeaning& column = columns_[i];
    if (blankPins_ && column.blank && i > 0 && columns_[i - 1].kind == ColumnKind::Place) {
      AddPin(current_, i);
    } else if (column.kind == ColumnKind::Pin) {
      AddPin(SideOf(column, &ListLayout::Side::pin), i);
    } else if (column.kind == ColumnKind::Connector || column.kind == ColumnKind::Place) {
      current_ = SideOf(column, &ListLayout::Side::connector);
      SetOnce(current_->connector, i, layout_.doubled);
    }
  }

  /// A column for connector and pin in one stands as the side's pin.
  void Finish() {
    for (ListLayout::Side* side : {&layout_.from, &layout_.to}) {
      if (side->pin || !side->connector || columns_[*side->connector].kind != ColumnKind::Place) continue;
      side->pin = std::exchange(side->connector, std::nullopt);
      side->isPlace = true;
    }
  }

 private:
  using Slot = std::optional<std::size_t> ListLayout::Side::*;

  void AddPin(ListLayout::Side* side, std::size_t i) { SetOnce(side->pin, i, layout_.doubled); }

  ListLayout::Side* SideOf(const ColumnMeaning& column, Slot slot) {
    if (column.side == ColumnSide::From) return &layout_.from;
    if (column.side == ColumnSide::To) return &layout_.to;
    if (sided_) return current_ == nullptr ? &layout_.from : current_;
    return layout_.from.*slot ? &layout_.to : &layout_.from;
  }

  const std::vector<ColumnMeaning>& columns_;
  ListLayout& layout_;
  ListLayout::Side* current_ = nullptr;
  bool sided_ = false;
  bool blankPins_ = false;  // "from", "", "to", "": the pins stand under no name
};

/// "net, pins ..." or "net, pin 1, pin 2, pin 3": columns of whole places, beside no connectors.
std::vector<std::size_t> PlaceColumns(const std::vector<ColumnMeaning>& columns) {
  std::vector<std::size_t> places;
  std::size_t pins = 0;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].kind == ColumnKind::Connector || columns[i].kind == ColumnKind::Place) return {};
    const bool named = std::any_of(columns.begin() + static_cast<std::ptrdiff_t>(i), columns.end(),
                                   [](const ColumnMeaning& column) { return !column.blank; });
    const bool blank = columns[i].blank && !places.empty() && !named;
    if (columns[i].kind == ColumnKind::Pins) pins += 3;
    if (columns[i].kind == ColumnKind::Pin) ++pins;
    if (columns[i].kind == ColumnKind::Pins || columns[i].kind == ColumnKind::Pin || blank)
      places.push_back(i);
  }
  return pins > 2 ? places : std::vector<std::size_t>();
}

}  // namespace

ColumnMeaning MeaningOf(std::string_view header) {
  const HeadWords words = WordsOfHead(header);
  if (words.count == 0) return {ColumnKind::Unused, ColumnSide::None, true};
  const std::vector<HeaderWord>& meanings = words.meanings;
  const auto has = [&](HeaderWord a, HeaderWord b) {
    return std::any_of(meanings.begin(), meanings.end(),
                       [&](HeaderWord word) { return word == a || word == b; });
  };
  const bool from = has(HeaderWord::From, HeaderWord::WeakFrom);
  const bool to = has(HeaderWord::To, HeaderWord::WeakTo);
  ColumnMeaning meaning;
  meaning.kind = KindOf(meanings);
  meaning.whole = words.known == words.count;
  meaning.unknown =
      std::all_of(meanings.begin(), meanings.end(), IsSide) && meaning.kind == ColumnKind::Unused;
  if (IsEndpoint(meaning.kind) && from != to) meaning.side = from ? ColumnSide::From : ColumnSide::To;
  return meaning;
}

std::size_t ListLayout::Understood() const {
  std::size_t count = places.size();
  for (const auto& column : {from.connector, from.pin, to.connector, to.pin, net, signal, splice, channel}) {
    if (column) ++count;
  }
  return count;
}

std::size_t ListLayout::FieldsNeeded() const {
  if (IsNetOnEachLine()) return places.front() + 1;
  std::size_t needed = 0;
  for (const auto& column : {from.connector, from.pin, to.connector, to.pin, splice}) {
    if (column) needed = std::max(needed, *column + 1);
  }
  if (!IsFromTo()) {
    for (const auto& column : {net, net ? std::nullopt : signal}) {
      if (column) needed = std::max(needed, *column + 1);
    }
  }
  return needed;
}

ListLayout LayoutOf(const std::vector<ColumnMeaning>& columns) {
  ListLayout layout;
  layout.columns = columns.size();
  Doubled ofNets;  // what says nothing in a list of wires, and may be there twice
  for (std::size_t i = 0; i < columns.size(); ++i) {
    switch (columns[i].kind) {
      case ColumnKind::Net:
        SetOnce(layout.net, i, ofNets);
        break;
      case ColumnKind::Signal:  // a name, for which the first will do
        if (!layout.signal) layout.signal = i;
        break;
      case ColumnKind::Splice:
        SetOnce(layout.splice, i, layout.doubled);
        break;
      case ColumnKind::Channel:
        SetOnce(layout.channel, i, ofNets);
        break;
      default:
        break;
    }
    if (columns[i].unknown) layout.unknown.push_back(i);
  }
  layout.places = PlaceColumns(columns);
  if (layout.IsNetOnEachLine()) {
    layout.placesGoOn = layout.places.back() + 1 == columns.size();
  } else {
    SideFinder sides(columns, layout);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      sides.Add(i);
      if (columns[i].kind == ColumnKind::Pins && !layout.pinsOfOne) layout.pinsOfOne = i;
    }
    sides.Finish();
  }
  if (!layout.doubled && !layout.IsFromTo()) layout.doubled = ofNets;
  return layout;
}

}  // namespace kxbench::documents
