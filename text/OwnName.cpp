#include "text/OwnName.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace shorttest {
namespace {

using Text = std::filesystem::path::string_type;
using Unit = Text::value_type;

constexpr std::string_view Digits = "0123456789abcdef";
constexpr std::size_t DigitCount = 8;
constexpr std::size_t LongestName = 255;  // on the usual file systems of either system

std::string_view Ending(OwnFile kind) { return kind == OwnFile::New ? ".new~" : ".old~"; }

// Whether a name may not be cut before this unit: it goes on with a character, of UTF-8 or of UTF-16.
bool Continues(Unit unit) {
  if constexpr (sizeof(Unit) == 1) {
    return (static_cast<unsigned char>(unit) & 0xC0U) == 0x80U;
  } else {
    return (static_cast<unsigned>(unit) & 0xFC00U) == 0xDC00U;
  }
}

// What comes before the digits.
Text Stem(const std::filesystem::path& target) {
  Text name = target.filename().native();
  std::size_t size = LongestName - 1 - DigitCount - Ending(OwnFile::New).size();
  if (name.size() > size) {
    while (size > 0 && Continues(name[size])) --size;
    name.resize(size);
  }
  return name + Unit('.');
}

}  // namespace

std::filesystem::path OwnName(const std::filesystem::path& target, OwnFile kind, std::uint32_t number) {
  Text name = Stem(target);
  for (int shift = 28; shift >= 0; shift -= 4) name += static_cast<Unit>(Digits[(number >> shift) & 0xFU]);
  for (const char c : Ending(kind)) name += static_cast<Unit>(c);
  return name;
}

bool IsOwnName(const std::filesystem::path& path, const std::filesystem::path& target, OwnFile kind) {
  const Text name = path.filename().native();
  const Text stem = Stem(target);
  const std::string_view ending = Ending(kind);
  if (name.size() != stem.size() + DigitCount + ending.size() || !name.starts_with(stem)) return false;
  const auto digits = name.begin() + static_cast<std::ptrdiff_t>(stem.size());
  const auto isDigit = [](Unit unit) {
    return std::any_of(Digits.begin(), Digits.end(), [unit](char c) { return static_cast<Unit>(c) == unit; });
  };
  return std::all_of(digits, digits + DigitCount, isDigit) &&
         std::equal(ending.begin(), ending.end(), digits + DigitCount,
                    [](char c, Unit unit) { return static_cast<Unit>(c) == unit; });
}

}  // namespace shorttest
