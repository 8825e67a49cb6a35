#include "text/Paths.h"

namespace shorttest {

std::filesystem::path PathFromUtf8(std::string_view name) {
  return std::filesystem::path(std::u8string(name.begin(), name.end()));
}

std::string Utf8FromPath(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

std::filesystem::path AbsolutePath(const std::string& fileName) {
  return std::filesystem::absolute(PathFromUtf8(fileName));
}

}  // namespace shorttest
