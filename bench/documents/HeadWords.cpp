#include "bench/documents/HeadWords.h"

#include <algorithm>
#include <array>
#include <string>
#include <unordered_map>

namespace kxbench::documents {

namespace {

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
    {"module", HeaderWord::Connector},
    {"modul", HeaderWord::Connector},
    {"steckername", HeaderWord::Connector},
    {"pin", HeaderWord::Pin},
    {"contact", HeaderWord::Pin},
    {"kontakt", HeaderWord::Pin},
    {"cavity", HeaderWord::Pin},
    {"kammer", HeaderWord::Pin},
    {"klemme", HeaderWord::Pin},
    {"terminal", HeaderWord::Pin},
    {"anschluss", HeaderWord::Pin},
    {"pol", HeaderWord::Pin},
    {"place", HeaderWord::Pin},
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

struct Letters {
  std::string_view written;
  std::string_view meant;
  bool capital = false;
};

constexpr auto GermanLetters = std::to_array<Letters>({{"ä", "ae"},
                                                       {"ö", "oe"},
                                                       {"ü", "ue"},
                                                       {"Ä", "ae", true},
                                                       {"Ö", "oe", true},
                                                       {"Ü", "ue", true},
                                                       {"ß", "ss"}});

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
      before = german->capital ? 'A' : 'a';
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

}  // namespace

bool IsSide(HeaderWord word) {
  return word == HeaderWord::From || word == HeaderWord::To || word == HeaderWord::WeakFrom ||
         word == HeaderWord::WeakTo;
}

HeadWords WordsOfHead(std::string_view head) {
  const std::vector<std::string> words = WordsOf(head);
  HeadWords found;
  found.count = words.size();
  for (const std::string& word : words) {
    const std::vector<HeaderWord> meanings = MeaningsOf(word);
    if (!meanings.empty()) ++found.known;
    found.meanings.insert(found.meanings.end(), meanings.begin(), meanings.end());
  }
  return found;
}

}  // namespace kxbench::documents
