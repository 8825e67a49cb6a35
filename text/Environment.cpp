#include "text/Environment.h"

#ifdef _WIN32
#include <windows.h>

#include "text/WideText.h"
#else
#include <cstdlib>
#endif

namespace shorttest {

#ifdef _WIN32

std::optional<std::string> EnvironmentVariable(const std::string& name) {
  const std::wstring wideName = WideText(name, CP_UTF8);
  std::wstring value(GetEnvironmentVariableW(wideName.c_str(), nullptr, 0), L'\0');
  if (value.empty()) return std::nullopt;
  value.resize(GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size())));
  if (value.empty()) return std::nullopt;
  return NarrowText(value, CP_UTF8);
}

#else

std::optional<std::string> EnvironmentVariable(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value != nullptr && *value != '\0' ? std::optional<std::string>(value) : std::nullopt;
}

#endif

}  // namespace shorttest
