#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <system_error>

#include "bench/program/system/DynamicLibrary.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/Guard.h"
#include "bench/program/system/System.h"

namespace kxbench {

namespace {

std::string Reason(DWORD error) {
  // The system does not tell which library it missed.
  if (error == ERROR_MOD_NOT_FOUND) return "a library that it needs is missing";
  return std::system_category().message(static_cast<int>(error));
}

}  // namespace

DynamicLibrary::DynamicLibrary(const std::string& what, const std::filesystem::path& file, Unload unload)
    : file_(std::filesystem::absolute(file)), unload_(unload) {
  const std::string name = Utf8FromPath(file_);
  std::error_code error;
  if (!std::filesystem::exists(file_, error))
    throw Failure("cannot load " + what + " " + name + ": no such file");

  // Errors come back to us; no message box of the system's.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  handle_ = LoadLibraryExW(file_.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (handle_ == nullptr) throw Failure("cannot load " + what + " " + name + ": " + Reason(GetLastError()));
  TellGuardOfDriver();
}

DynamicLibrary::~DynamicLibrary() {
  if (unload_ == Unload::AtDestruction) FreeLibrary(static_cast<HMODULE>(handle_));
}

DynamicLibrary::Address DynamicLibrary::FindAddress(const char* name) const {
  return reinterpret_cast<Address>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

}  // namespace kxbench
