#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

/// A new folder with a blank and an umlaut in its name; gone with its content when the object goes.
class ScratchFolder {
 public:
  ScratchFolder()
      : path_(std::filesystem::temp_directory_path() /
              (L"Prüfling " + std::to_wstring(GetCurrentProcessId()) + L"-" +
               std::to_wstring(GetTickCount64()))) {
    std::filesystem::create_directory(path_);
  }
  ~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  /// A name in the folder.
  std::filesystem::path operator/(const std::wstring& name) const { return path_ / name; }

  /// The files in the folder.
  std::size_t Count() const {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(path_)) ++count;
    return count;
  }

 private:
  std::filesystem::path path_;
};

inline std::string Utf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}
