#include "bench/wiring/NamesFile.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "text/IniText.h"
#include "text/SystemText.h"
#include "text/Utf8.h"

namespace kxbench::wiring {

namespace {

/// The UTF-8 text of each character of Windows-1252, and its byte.
std::map<std::string, char, std::less<>> BytesOfWindows1252() {
  std::map<std::string, char, std::less<>> bytes;
  for (int code = 0; code < 256; ++code) {
    const char byte = static_cast<char>(code);
    bytes.emplace(shorttest::Windows1252ToUtf8({&byte, 1}), byte);
  }
  return bytes;
}

std::string InWindows1252(const std::string& name) {
  static const std::map<std::string, char, std::less<>> bytes = BytesOfWindows1252();
  std::string text;
  for (std::string_view rest = name; !rest.empty();) {
    const std::size_t size = std::max<std::size_t>(shorttest::Utf8CharacterSize(rest), 1);
    const auto byte = bytes.find(rest.substr(0, size));
    if (byte == bytes.end()) {
      throw std::invalid_argument("it is in Windows-1252, which does not have the name " + name);
    }
    text += byte->second;
    rest.remove_prefix(size);
  }
  return text;
}

/// An ini text gives a value back without the quotes around it.
std::string Protected(const std::string& name) {
  const bool quoted =
      name.size() >= 2 && name.front() == name.back() && (name.front() == '"' || name.front() == '\'');
  return quoted ? "\"" + name + "\"" : name;
}

}  // namespace

std::string WithChannelNames(const std::string& oldContent,
                             const std::map<std::int32_t, std::string>& names) {
  if (oldContent.starts_with("\xFF\xFE") || oldContent.starts_with("\xFE\xFF")) {
    throw std::invalid_argument("it is in UTF-16: save it as UTF-8 first");
  }
  const bool utf8 = shorttest::IsUtf8(oldContent);
  shorttest::IniText ini(oldContent);
  for (const auto& [channel, name] : names) {
    const std::string key = "Relais" + std::to_string(channel);
    const std::string value = Protected(utf8 ? name : InWindows1252(name));
    if (ini.Find("Scanner", key) != value) ini.WriteString("Scanner", key, value);
  }
  return ini.Content();
}

}  // namespace kxbench::wiring
