#pragma once

#include <filesystem>
#include <string>

namespace kxbench {

/// A shared library loaded at run time.
class DynamicLibrary {
 public:
  enum class Unload {
    AtDestruction,
    Never,  ///< stays in memory until the program ends
  };

  /// Loads the library `file` and those it needs. Throws Failure naming `what` and `file`, and the library
  /// that is missing where the system tells.
  DynamicLibrary(const std::string& what, const std::filesystem::path& file,
                 Unload unload = Unload::AtDestruction);
  ~DynamicLibrary();
  DynamicLibrary(const DynamicLibrary&) = delete;
  DynamicLibrary& operator=(const DynamicLibrary&) = delete;

  /// Address of an exported function; null when there is none of that name.
  template <typename Function>
  Function Find(const char* name) const {
    return reinterpret_cast<Function>(FindAddress(name));
  }

  /// The file loaded, absolute.
  const std::filesystem::path& File() const { return file_; }

 private:
  using Address = void (*)();
  Address FindAddress(const char* name) const;

  std::filesystem::path file_;
  void* handle_ = nullptr;
  Unload unload_;
};

}  // namespace kxbench
