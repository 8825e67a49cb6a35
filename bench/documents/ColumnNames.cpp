#include "bench/documents/ColumnNames.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace kxbench::documents {

namespace {

enum class HeaderWord {
  Unknown,
  From,
  To,
  WeakFrom,  ///< says a side only beside another word: "Pin A"
  WeakTo,
  Connector,
  Pin,
  Pins,
  Net,
  Signal,
  Wire,
  Splice,
  Channel,
  Other,
};

struct KnownWord {
  std::string_view text;
  HeaderWord meaning;
};

// With ae, oe, ue and ss for German letters.
constexpr auto KnownWords = std::to_array<KnownWord>({
    {"from", HeaderWord::From},
    {"von", HeaderWord::From},
    {"source", HeaderWord::From},
    {"src", HeaderWord::From},
    {"quelle", HeaderWord::From},
    {"quell", HeaderWord::From},
    {"start", HeaderWord::From},
    {"anfang", HeaderWord::From},
    {"origin", HeaderWord::From},
    {"to", HeaderWord::To},
    {"nach", HeaderWord::To},
    {"zu", HeaderWord::To},
    {"destination", HeaderWord::To},
    {"dest", HeaderWord::To},
    {"dst", HeaderWord::To},
    {"target", HeaderWord::To},
    {"ziel", HeaderWord::To},
    {"end", HeaderWord::To},
    {"ende", HeaderWord::To},
    {"a", HeaderWord::WeakFrom},
    {"1", HeaderWord::WeakFrom},
    {"left", HeaderWord::WeakFrom},
    {"links", HeaderWord::WeakFrom},
    {"b", HeaderWord::WeakTo},
    {"2", HeaderWord::WeakTo},
    {"right", HeaderWord::WeakTo},
    {"rechts", HeaderWord::WeakTo},
    {"connector", HeaderWord::Connector},
    {"conn", HeaderWord::Connector},
    {"stecker", HeaderWord::Connector},
    {"steckverbinder", HeaderWord::Connector},
    {"steckverbindung", HeaderWord::Connector},
    {"steckerbezeichnung", HeaderWord::Connector},
    {"plug", HeaderWord::Connector},
    {"socket", HeaderWord::Connector},
    {"buchse", HeaderWord::Connector},
    {"kupplung", HeaderWord::Connector},
    {"device", HeaderWord::Connector},
    {"geraet", HeaderWord::Connector},
    {"component", HeaderWord::Connector},
    {"bauteil", HeaderWord::Connector},
    {"komponente", HeaderWord::Connector},
    {"housing", HeaderWord::Connector},
    {"gehaeuse", HeaderWord::Connector},
    {"designator", HeaderWord::Connector},
    {"refdes", HeaderWord::Connector},
    {"jack", HeaderWord::Connector},
    {"pin", HeaderWord::Pin},
    {"contact", HeaderWord::Pin},
    {"kontakt", HeaderWord::Pin},
    {"cavity", HeaderWord::Pin},
    {"kammer", HeaderWord::Pin},
    {"klemme", HeaderWord::Pin},
    {"terminal", HeaderWord::Pin},
    {"anschluss", HeaderWord::Pin},
    {"pol", HeaderWord::Pin},
    {"pinnummer", HeaderWord::Pin},
    {"pins", HeaderWord::Pins},
    {"contacts", HeaderWord::Pins},
    {"kontakte", HeaderWord::Pins},
    {"klemmen", HeaderWord::Pins},
    {"anschluesse", HeaderWord::Pins},
    {"nodes", HeaderWord::Pins},
    {"knoten", HeaderWord::Pins},
    {"members", HeaderWord::Pins},
    {"net", HeaderWord::Net},
    {"netz", HeaderWord::Net},
    {"netname", HeaderWord::Net},
    {"netzname", HeaderWord::Net},
    {"potential", HeaderWord::Net},
    {"potenzial", HeaderWord::Net},
    {"signal", HeaderWord::Signal},
    {"signalname", HeaderWord::Signal},
    {"circuit", HeaderWord::Signal},
    {"stromkreis", HeaderWord::Signal},
    {"function", HeaderWord::Signal},
    {"funktion", HeaderWord::Signal},
    {"wire", HeaderWord::Wire},
    {"ader", HeaderWord::Wire},
    {"leitung", HeaderWord::Wire},
    {"draht", HeaderWord::Wire},
    {"kabel", HeaderWord::Wire},
    {"cable", HeaderWord::Wire},
    {"leiter", HeaderWord::Wire},
    {"conductor", HeaderWord::Wire},
    {"splice", HeaderWord::Splice},
    {"spleiss", HeaderWord::Splice},
    {"channel", HeaderWord::Channel},
    {"kanal", HeaderWord::Channel},
    {"relais", HeaderWord::Channel},
    {"relay", HeaderWord::Channel},
    {"color", HeaderWord::Other},
    {"colour", HeaderWord::Other},
    {"farbe", HeaderWord::Other},
    {"length", HeaderWord::Other},
    {"laenge", HeaderWord::Other},
    {"gauge", HeaderWord::Other},
    {"querschnitt", HeaderWord::Other},
    {"awg", HeaderWord::Other},
    {"section", HeaderWord::Other},
    {"type", HeaderWord::Other},
    {"typ", HeaderWord::Other},
    {"part", HeaderWord::Other},
    {"teilenummer", HeaderWord::Other},
    {"artikel", HeaderWord::Other},
    {"artikelnummer", HeaderWord::Other},
    {"material", HeaderWord::Other},
    {"note", HeaderWord::Other},
    {"notes", HeaderWord::Other},
    {"bemerkung", HeaderWord::Other},
    {"kommentar", HeaderWord::Other},
    {"comment", HeaderWord::Other},
    {"remark", HeaderWord::Other},
    {"description", HeaderWord::Other},
    {"beschreibung", HeaderWord::Other},
    {"seal", HeaderWord::Other},
    {"dichtung", HeaderWord::Other},
    {"gender", HeaderWord::Other},
    {"manufacturer", HeaderWord::Other},
    {"hersteller", HeaderWord::Other},
    {"mm", HeaderWord::Other},
    {"mm²", HeaderWord::Other},
    {"count", HeaderWord::Other},
    {"anzahl", HeaderWord::Other},
});

HeaderWord Known(std::string_view word) {
  static const auto words = [] {
    std::unordered_map<std::string_view, HeaderWord> byText;
    for (const KnownWord& known : KnownWords) byText.emplace(known.text, known.meaning);
    return byText;
  }();
  const auto found = words.find(word);
  return found == words.end() ? HeaderWord::Unknown : found->second;
}

bool IsSide(HeaderWord word) {
  return word == HeaderWord::From || word == HeaderWord::To || word == HeaderWord::WeakFrom ||
         word == HeaderWord::WeakTo;
}

struct Letters {
  std::string_view written;
  std::string_view meant;
};

constexpr auto GermanLetters = std::to_array<Letters>(
    {{"ä", "ae"}, {"ö", "oe"}, {"ü", "ue"}, {"Ä", "ae"}, {"Ö", "oe"}, {"Ü", "ue"}, {"ß", "ss"}});

bool IsCapital(char c) { return c >= 'A' && c <= 'Z'; }
bool IsSmall(char c) { return c >= 'a' && c <= 'z'; }
bool IsNumeral(char c) { return c >= '0' && c <= '9'; }

/// The words of a header in small letters: parted by what is no letter, where small letters are followed by
/// a capital, and between letters and digits.
std::vector<std::string> WordsOf(std::string_view header) {
  std::vector<std::string> words(1);
  char before = ' ';
  while (!header.empty()) {
    const char c = header.front();
    const bool ascii = static_cast<unsigned char>(c) < 0x80U;
    const auto* const german =
        ascii ? GermanLetters.end()
              : std::find_if(GermanLetters.begin(), GermanLetters.end(),
                             [&](const Letters& l) { return header.starts_with(l.written); });
    if (german != GermanLetters.end()) {
      words.back() += german->meant;
      header.remove_prefix(german->written.size());
      before = 'a';
      continue;
    }
    const bool letter = IsCapital(c) || IsSmall(c) || IsNumeral(c) || !ascii;
    const bool parts =
        !letter || (IsSmall(before) && IsCapital(c)) || (before != ' ' && IsNumeral(before) != IsNumeral(c));
    if (parts && !words.back().empty()) words.emplace_back();
    if (letter) words.back() += IsCapital(c) ? static_cast<char>(c - 'A' + 'a') : c;
    before = letter ? c : ' ';
    header.remove_prefix(1);
  }
  if (words.back().empty()) words.pop_back();
  return words;
}

/// The meanings of a word, which may be put together as German does: "zielpin", "steckera".
std::vector<HeaderWord> MeaningsOf(const std::string& word) {
  const HeaderWord whole = Known(word);
  if (whole != HeaderWord::Unknown) return {whole};
  for (std::size_t end = 1; end < word.size(); ++end) {
    const HeaderWord first = Known(std::string_view(word).substr(0, end));
    if (first == HeaderWord::Unknown) continue;
    const HeaderWord second = Known(std::string_view(word).substr(end));
    if (second == HeaderWord::Unknown) continue;
    const bool one =
        IsSide(first) != IsSide(second) && first != HeaderWord::WeakFrom && first != HeaderWord::WeakTo;
    if (one) return {first, second};
  }
  return {};
}

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
    const bool blank = columns[i].blank && !places.empty();
    if (columns[i].kind == ColumnKind::Pins) pins += 3;
    if (columns[i].kind == ColumnKind::Pin) ++pins;
    if (columns[i].kind == ColumnKind::Pins || columns[i].kind == ColumnKind::Pin || blank)
      places.push_back(i);
  }
  return pins > 2 ? places : std::vector<std::size_t>();
}

}  // namespace

ColumnMeaning MeaningOf(std::string_view header) {
  const std::vector<std::string> words = WordsOf(header);
  if (words.empty()) return {ColumnKind::Unused, ColumnSide::None, true};
  std::vector<HeaderWord> meanings;
  for (const std::string& word : words) {
    for (const HeaderWord meaning : MeaningsOf(word)) meanings.push_back(meaning);
  }
  const auto has = [&](HeaderWord a, HeaderWord b) {
    return std::any_of(meanings.begin(), meanings.end(),
                       [&](HeaderWord word) { return word == a || word == b; });
  };
  const bool from = has(HeaderWord::From, HeaderWord::WeakFrom);
  const bool to = has(HeaderWord::To, HeaderWord::WeakTo);
  ColumnMeaning meaning;
  meaning.kind = KindOf(meanings);
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
  }
  layout.places = PlaceColumns(columns);
  if (layout.IsNetOnEachLine()) {
    layout.placesGoOn = layout.places.back() + 1 == columns.size();
  } else {
    SideFinder sides(columns, layout);
    for (std::size_t i = 0; i < columns.size(); ++i) sides.Add(i);
    sides.Finish();
  }
  if (!layout.doubled && !layout.IsFromTo()) layout.doubled = ofNets;
  return layout;
}

}  // namespace kxbench::documents
