#include <unistd.h>

#include <cstdlib>
#include <string>
#include <system_error>

#include "bench/program/Failure.h"
#include "bench/program/System.h"

namespace kxbench {

std::vector<std::string> Utf8Arguments(int argc, char** argv) {
  return argc < 1 ? std::vector<std::string>() : std::vector<std::string>(argv + 1, argv + argc);
}

std::filesystem::path ProgramFolder() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) throw Failure("cannot find the program's own folder: " + error.message());
  return program.parent_path();
}

void SetEnvironment(const std::string& name, const std::string& value) {
  if (setenv(name.c_str(), value.c_str(), 1) != 0) throw Failure("cannot set the variable " + name);
}

/// Libraries carry their own run path here.
void AddLibraryFolders(const std::filesystem::path&, const std::filesystem::path&) {}

bool OutputShowsColours() {
  const char* refused = std::getenv("NO_COLOR");
  const char* kind = std::getenv("TERM");
  const bool dumb = kind == nullptr || std::string(kind) == "dumb";
  return isatty(STDOUT_FILENO) == 1 && (refused == nullptr || *refused == '\0') && !dumb;
}

void PrepareConsole() {}

std::string LibraryFileName(const std::string& name, LibraryPrefix prefix) {
  return (prefix == LibraryPrefix::Lib ? "lib" : "") + name + ".so";
}

}  // namespace kxbench
