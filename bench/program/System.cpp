#include "bench/program/System.h"

namespace kxbench {

std::filesystem::path PathFromUtf8(const std::string& name) {
  return std::filesystem::path(std::u8string(name.begin(), name.end()));
}

std::string Utf8FromPath(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return std::string(text.begin(), text.end());
}

}  // namespace kxbench
