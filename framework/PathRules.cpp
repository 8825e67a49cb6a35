#include "framework/PathRules.h"

#include <algorithm>

#include "framework/AsciiCase.h"

namespace kx {

namespace {

bool IsSeparator(char c, const PathRules& rules) {
  return c == '/' || (rules.backslashSeparates && c == '\\');
}

/// `path` with one kind of separator and, where case does not count, in lower case; byte for byte as long.
std::string Folded(std::string_view path, const PathRules& rules) {
  std::string folded(path);
  for (std::size_t i = 0; i < folded.size(); ++i) {
    if (IsSeparator(folded[i], rules)) folded[i] = '/';
    if (!rules.ignoreCase) continue;
    folded[i] = AsciiLower(folded[i]);
    // U+00C0 to U+00DE are the bytes C3 80 to C3 9E; their small letters follow 0x20 later, but for U+00D7,
    // the multiplication sign.
    const auto byte = static_cast<unsigned char>(folded[i]);
    const bool latin1 = i > 0 && static_cast<unsigned char>(folded[i - 1]) == 0xC3U;
    if (latin1 && byte >= 0x80U && byte <= 0x9EU && byte != 0x97U)
      folded[i] = static_cast<char>(byte + 0x20U);
  }
  return folded;
}

bool ClimbsOut(std::string_view folded) {
  for (std::size_t begin = 0; begin <= folded.size();) {
    const std::size_t end = std::min(folded.find('/', begin), folded.size());
    if (folded.substr(begin, end - begin) == "..") return true;
    begin = end + 1;
  }
  return false;
}

}  // namespace

std::optional<std::string> PathBelow(std::string_view folder, std::string_view path, const PathRules& rules) {
  if (folder.empty() || path.size() <= folder.size()) return std::nullopt;
  const std::string foldedPath = Folded(path, rules);
  const std::string foldedFolder = Folded(folder, rules);
  if (foldedFolder.back() != '/' || !foldedPath.starts_with(foldedFolder)) return std::nullopt;
  if (ClimbsOut(std::string_view(foldedPath).substr(folder.size()))) return std::nullopt;
  return std::string(path.substr(folder.size()));
}

}  // namespace kx
