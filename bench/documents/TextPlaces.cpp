#include "bench/documents/TextPlaces.h"

#include <algorithm>

#include "bench/documents/NameText.h"

namespace kxbench::documents {

namespace {

constexpr std::size_t PlacesBlock = 512;

}  // namespace

TextPlaces::TextPlaces(std::string_view utf8) : size_(utf8.size()), starts_{0} {
  for (std::size_t at = utf8.find('\n'); at != std::string_view::npos; at = utf8.find('\n', at + 1)) {
    starts_.push_back(at + 1);
  }
  std::size_t characters = 0;
  charactersBefore_.reserve(utf8.size() / PlacesBlock + 1);
  for (std::size_t at = 0; at <= utf8.size(); at += PlacesBlock) {
    charactersBefore_.push_back(characters);
    characters += CharacterCount(utf8.substr(at, PlacesBlock));
  }
}

TextPlaces::LineAndColumn TextPlaces::At(std::string_view utf8, std::size_t offset) const {
  offset = std::min(offset, size_);
  const auto line = std::upper_bound(starts_.begin(), starts_.end(), offset) - 1;
  return {static_cast<std::size_t>(line - starts_.begin()) + 1,
          CharactersBefore(utf8, offset) - CharactersBefore(utf8, *line) + 1};
}

std::size_t TextPlaces::CharactersBefore(std::string_view utf8, std::size_t offset) const {
  const std::size_t block = offset / PlacesBlock;
  const std::size_t start = block * PlacesBlock;
  return charactersBefore_[block] + CharacterCount(utf8.substr(start, offset - start));
}

}  // namespace kxbench::documents
