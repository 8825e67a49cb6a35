#include "bench/documents/XmlText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <string_view>

#include "bench/documents/NameText.h"
#include "bench/documents/TextPlaces.h"
#include "bench/documents/WiringDocument.h"
#include "text/SystemText.h"
#include "text/TextEncoding.h"
#include "text/Utf8.h"

namespace kxbench::documents {

namespace {

constexpr std::string_view XmlBlanks = " \t\r\n";

struct DeclaredEncoding {
  std::string name;  // in small letters
  std::string_view written;
  std::size_t offset = 0;
};

DeclaredEncoding EncodingIn(std::string_view text) {
  constexpr std::string_view Key = "encoding";
  if (!text.starts_with("<?xml")) return {};
  const std::string_view declaration = text.substr(0, text.find("?>"));
  std::size_t at = declaration.find(Key);
  if (at == std::string_view::npos) return {};
  at = declaration.find_first_not_of(XmlBlanks, at + Key.size());
  if (at == std::string_view::npos || declaration[at] != '=') return {};
  at = declaration.find_first_not_of(XmlBlanks, at + 1);
  if (at == std::string_view::npos || (declaration[at] != '"' && declaration[at] != '\'')) return {};
  const std::size_t end = declaration.find(declaration[at], at + 1);
  if (end == std::string_view::npos) return {};
  DeclaredEncoding encoding{{}, declaration.substr(at + 1, end - at - 1), at + 1};
  for (const char c : encoding.written) {
    encoding.name += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  return encoding;
}

bool IsUnicode(std::string_view encoding) {
  static constexpr auto Names = std::to_array<std::string_view>({"utf-8", "utf8", "utf-16", "utf16"});
  return std::find(Names.begin(), Names.end(), encoding) != Names.end();
}

bool IsRead(std::string_view encoding) {
  static constexpr auto Names = std::to_array<std::string_view>(
      {"iso-8859-1", "iso_8859-1", "latin1", "windows-1252", "cp1252", "us-ascii", "ascii"});
  return encoding.empty() || IsUnicode(encoding) ||
         std::find(Names.begin(), Names.end(), encoding) != Names.end();
}

/// A place before which all is UTF-8, or ASCII at least.
Place PlaceIn(const std::string& fileName, std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const auto [line, column] = TextPlaces(before).At(before, offset);
  return {fileName, line, column};
}

std::size_t FirstThatIsNoUtf8(std::string_view text) {
  std::size_t at = 0;
  while (const std::size_t size = shorttest::Utf8CharacterSize(text.substr(at))) at += size;
  return at;
}

}  // namespace

std::string XmlToUtf8(const std::string& fileName, std::string bytes) {
  if (bytes.starts_with(std::string_view("<\0", 2)) || bytes.starts_with(std::string_view("\0<", 2))) {
    throw DocumentError({fileName, 1, 1}, "there is a NUL byte: this is no text, or UTF-16 without its mark");
  }
  if (bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE")) {
    bytes = shorttest::FileTextToUtf8(bytes);
  }
  const bool marked = bytes.starts_with(shorttest::Utf8ByteOrderMark);
  if (marked) bytes.erase(0, shorttest::Utf8ByteOrderMark.size());

  const DeclaredEncoding encoding = EncodingIn(bytes);
  if (!IsRead(encoding.name)) {
    throw DocumentError(PlaceIn(fileName, bytes, encoding.offset),
                        "the encoding " + ShownText(encoding.written) +
                            " is not read: only UTF-8, UTF-16, ISO-8859-1, Windows-1252 and US-ASCII are");
  }
  if (shorttest::IsUtf8(bytes)) return bytes;
  if (marked || IsUnicode(encoding.name)) {
    const bool utf16 = !marked && encoding.name.find("16") != std::string::npos;
    throw DocumentError(
        PlaceIn(fileName, bytes, FirstThatIsNoUtf8(bytes)),
        std::string("this is not ") + (utf16 ? "UTF-16" : "UTF-8") + ", which the file says it is");
  }
  return shorttest::Windows1252ToUtf8(bytes);
}

}  // namespace kxbench::documents
