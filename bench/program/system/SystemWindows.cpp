#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <io.h>
#include <windows.h>
// shellapi.h needs windows.h first.
#include <shellapi.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"

namespace kxbench {

std::vector<std::string> Utf8Arguments(int, char**) {
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  if (wide == nullptr) throw Failure("cannot read the command line");
  std::vector<std::string> arguments;
  for (int i = 1; i < count; ++i) arguments.push_back(Utf8FromPath(std::filesystem::path(wide[i])));
  LocalFree(wide);
  return arguments;
}

std::filesystem::path LoadedFile(void* library) {
  std::wstring name(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length =
        GetModuleFileNameW(static_cast<HMODULE>(library), name.data(), static_cast<DWORD>(name.size()));
    if (length == 0) throw Failure("cannot find a file of the program's own");
    if (length < name.size()) {
      name.resize(length);
      return std::filesystem::path(name);
    }
    name.resize(name.size() * 2);
  }
}

std::filesystem::path ProgramFolder() { return LoadedFile(nullptr).parent_path(); }

std::optional<std::filesystem::path> LoadedLibrary(const std::string& fileName) {
  const HMODULE library = GetModuleHandleW(PathFromUtf8(fileName).c_str());
  if (library == nullptr) return std::nullopt;
  return LoadedFile(library);
}

std::string ComputerName() {
  std::wstring name(256, L'\0');
  auto length = static_cast<DWORD>(name.size());
  if (GetComputerNameExW(ComputerNameDnsHostname, name.data(), &length) == 0) return "";
  name.resize(length);
  return Utf8FromPath(std::filesystem::path(name));
}

void SetEnvironment(const std::string& name, const std::string& value) {
  // The C library's call: it changes the system's environment and its own copy, which getenv reads.
  const std::wstring wideName = PathFromUtf8(name).wstring();
  const std::wstring wideValue = PathFromUtf8(value).wstring();
  if (_wputenv_s(wideName.c_str(), wideValue.c_str()) != 0) throw Failure("cannot set the variable " + name);
}

void AddLibraryFolders(const std::filesystem::path& first, const std::filesystem::path& last) {
  // For a library loaded by its whole name the system looks beside that library, no longer beside the
  // program, and along PATH last.
  const wchar_t* before = _wgetenv(L"PATH");
  const std::wstring path =
      first.wstring() + L";" + (before == nullptr ? L"" : before + std::wstring(L";")) + last.wstring();
  if (_wputenv_s(L"PATH", path.c_str()) != 0) throw Failure("cannot set the variable PATH");
}

int WriteToOutput(std::string_view text) {
  // Line by line: the C library gives lines their end, and counts it.
  while (!text.empty()) {
    const std::size_t line = std::min(text.find('\n'), text.size() - 1) + 1;
    std::string written(text.substr(0, line));
    if (written.ends_with("\r\n")) written.erase(line - 2, 1);
    if (_write(1, written.data(), static_cast<unsigned>(written.size())) < 0) return errno;
    text.remove_prefix(line);
  }
  return 0;
}

bool OutputShowsColours() {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  if (GetConsoleMode(output, &mode) == 0 || std::getenv("NO_COLOR") != nullptr) return false;
  return SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

/// A stream is no number here that another file could get.
void OpenStandardStreams() {}

void PrepareConsole() { SetConsoleOutputCP(CP_UTF8); }

std::string LibraryFileName(const std::string& name, LibraryPrefix) { return name + ".dll"; }

}  // namespace kxbench
