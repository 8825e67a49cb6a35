#include "simulator/SystemText.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <cstdlib>
#endif

namespace simulator {

#ifdef _WIN32

namespace {

std::wstring ToWide(const std::string& utf8) {
  const int size = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(size), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(), size);
  return wide;
}

std::string FromWide(const std::wstring& wide, UINT codePage) {
  const int length = static_cast<int>(wide.size());
  const int size = WideCharToMultiByte(codePage, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(codePage, 0, wide.data(), length, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

}  // namespace

std::string ToSystemEncoding(const std::string& utf8) { return FromWide(ToWide(utf8), CP_ACP); }

std::optional<std::string> EnvironmentVariable(const std::string& name) {
  const std::wstring wideName = ToWide(name);
  std::wstring value(GetEnvironmentVariableW(wideName.c_str(), nullptr, 0), L'\0');
  if (value.empty()) return std::nullopt;
  value.resize(GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size())));
  if (value.empty()) return std::nullopt;
  return FromWide(value, CP_UTF8);
}

#else

std::string ToSystemEncoding(const std::string& utf8) { return utf8; }

std::optional<std::string> EnvironmentVariable(const std::string& name) {
  const char* value = std::getenv(name.c_str());
  return value != nullptr && *value != '\0' ? std::optional<std::string>(value) : std::nullopt;
}

#endif

std::filesystem::path PathFromUtf8(std::string_view name) {
  return std::filesystem::path(std::u8string(name.begin(), name.end()));
}

std::string Utf8FromPath(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return std::string(name.begin(), name.end());
}

}  // namespace simulator
