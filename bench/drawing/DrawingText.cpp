#include "bench/drawing/DrawingText.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "text/Utf8.h"

namespace kxbench::drawing {

namespace {

/// Bold letters are this much wider.
constexpr double Bold = 1.13;

constexpr std::string_view Ellipsis = "…";

/// Letters by their width in DejaVu Sans, in hundredths of an em, rounded up.
int AsciiWidth(char32_t letter) {
  if (letter < U' ') return 0;
  if (std::u32string_view(U"ijl'|").find(letter) != std::u32string_view::npos) return 34;
  if (std::u32string_view(U" ,.:;/\\Ift!()[]-r").find(letter) != std::u32string_view::npos) return 42;
  if (std::u32string_view(U"mwMWGOQ@%&").find(letter) != std::u32string_view::npos) return 100;
  if (std::u32string_view(U"+<=>~#").find(letter) != std::u32string_view::npos) return 84;
  if (letter >= U'A' && letter <= U'Z') return 78;
  return 64;
}

/// Combining marks and joiners, which stand on the letter in front of them.
bool IsMark(char32_t letter) {
  return (letter >= 0x300 && letter <= 0x36F) || (letter >= 0x200B && letter <= 0x200F) ||
         (letter >= 0x20D0 && letter <= 0x20FF) || (letter >= 0xFE00 && letter <= 0xFE0F) ||
         (letter >= 0x1F3FB && letter <= 0x1F3FF);
}

/// What would have the rest of a line read from right to left.
bool TurnsText(char32_t letter) {
  return (letter >= 0x202A && letter <= 0x202E) || (letter >= 0x2066 && letter <= 0x2069);
}

int LetterWidth(char32_t letter) {
  if (letter < 0x80) return AsciiWidth(letter);
  if (IsMark(letter)) return 0;
  if (letter < 0x250) return 80;  // Latin with accents
  return letter < 0x2E80 ? 102 : 106;
}

char32_t Decoded(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  if (character.size() == 1) return first;
  char32_t letter = first & (0xFFU >> (character.size() + 1));
  for (const char byte : character.substr(1))
    letter = letter << 6U | (static_cast<unsigned char>(byte) & 0x3FU);
  return letter;
}

/// The next letter of a text and its bytes, which are taken off the text; U+FFFD for a byte that is none.
struct Letter {
  explicit Letter(std::string_view& text) {
    const std::size_t size = shorttest::Utf8CharacterSize(text);
    bytes = text.substr(0, size == 0 ? 1 : size);
    code = size == 0 ? 0xFFFD : Decoded(bytes);
    text.remove_prefix(bytes.size());
  }

  std::string_view bytes;
  char32_t code;
};

}  // namespace

double TextWidth(std::string_view utf8) {
  int width = 0;
  while (!utf8.empty()) width += LetterWidth(Letter(utf8).code);
  return width / 100.0;
}

double BoldTextWidth(std::string_view utf8) { return Bold * TextWidth(utf8); }

std::string Shortened(const std::string& utf8, double ems) {
  if (TextWidth(utf8) <= ems) return utf8;
  const double room = ems - TextWidth(Ellipsis);
  std::string text;
  std::string letterWithMarks;
  double width = 0;
  for (std::string_view rest = utf8; !rest.empty();) {
    const Letter letter(rest);
    if (!IsMark(letter.code)) {
      text += letterWithMarks;
      letterWithMarks.clear();
      width += LetterWidth(letter.code) / 100.0;
      if (width > room) break;
    }
    letterWithMarks += letter.bytes;
  }
  return text + std::string(Ellipsis);
}

std::string ShortenedInside(const std::string& utf8, double ems) {
  if (TextWidth(utf8) <= ems) return utf8;
  std::string begin = Shortened(utf8, ems / 2);
  // The longest end that fits, from the first letter on that is no mark.
  for (std::string_view rest = utf8; !rest.empty();) {
    const std::string_view end = rest;
    const Letter letter(rest);
    if (!IsMark(letter.code) && TextWidth(end) + TextWidth(begin) <= ems) return begin + std::string(end);
  }
  return begin;
}

std::string ShortenedApart(const std::string& name, const std::vector<std::string>& names, double ems) {
  // Whether nothing else could be meant: no other name has the same beginning and end.
  const auto unique = [&](const std::string& text) {
    const std::size_t cut = text.find(Ellipsis);
    if (cut == std::string::npos) return true;
    const std::string begin = text.substr(0, cut);
    const std::string end = text.substr(cut + Ellipsis.size());
    return std::none_of(names.begin(), names.end(), [&](const std::string& other) {
      return other != name && other.starts_with(begin) && other.ends_with(end);
    });
  };
  std::string beginning = Shortened(name, ems);
  if (beginning == name || unique(beginning)) return beginning;
  for (double room = ems; room < TextWidth(name); room += 2) {
    std::string inside = ShortenedInside(name, room);
    if (unique(inside)) return inside;
  }
  return name;
}

std::vector<std::string> Wrapped(const std::string& utf8, double ems) {
  std::vector<std::string> lines;
  std::string line;
  for (std::size_t begin = 0; begin < utf8.size();) {
    const std::size_t end = std::min(utf8.find(' ', begin), utf8.size());
    const std::string word = utf8.substr(begin, end - begin);
    begin = end + 1;
    if (word.empty()) continue;
    std::string longer = line.empty() ? "" : line + ' ';
    longer += word;
    if (!line.empty() && TextWidth(longer) > ems) {
      lines.push_back(line);
      longer = word;
    }
    line = Shortened(longer, ems);
  }
  if (!line.empty()) lines.push_back(line);
  return lines;
}

std::string XmlText(std::string_view text) {
  std::string xml;
  xml.reserve(text.size());
  while (!text.empty()) {
    const Letter letter(text);
    const bool control = letter.code < 0x20 || (letter.code >= 0x7F && letter.code < 0xA0);
    if (control) {
      xml += ' ';
    } else if (TurnsText(letter.code) || (letter.code >= 0xFFFD && letter.code <= 0xFFFF)) {
      xml += "\uFFFD";
    } else if (letter.code == '&') {
      xml += "&amp;";
    } else if (letter.code == '<') {
      xml += "&lt;";
    } else if (letter.code == '>') {
      xml += "&gt;";
    } else if (letter.code == '"') {
      xml += "&quot;";
    } else if (letter.code == '\'') {
      xml += "&#39;";
    } else {
      xml += letter.bytes;
    }
  }
  return xml;
}

std::string Coordinate(double value) {
  const auto hundredths = static_cast<std::int64_t>(std::llround(value * 100));
  const std::int64_t size = hundredths < 0 ? -hundredths : hundredths;
  std::string text = (hundredths < 0 ? "-" : "") + std::to_string(size / 100);
  if (size % 100 == 0) return text;
  text += '.';
  text += static_cast<char>('0' + size % 100 / 10);
  if (size % 10 != 0) text += static_cast<char>('0' + size % 10);
  return text;
}

}  // namespace kxbench::drawing
