#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"

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

std::optional<std::filesystem::path> LoadedLibrary(const std::string& fileName) {
  void* const library = dlopen(fileName.c_str(), RTLD_LAZY | RTLD_NOLOAD);
  if (library == nullptr) return std::nullopt;
  const link_map* map = nullptr;
  const bool known = dlinfo(library, RTLD_DI_LINKMAP, &map) == 0;
  std::optional<std::filesystem::path> file;
  if (known) file = map->l_name;
  dlclose(library);
  return file;
}

std::string ComputerName() {
  std::array<char, 256> name{};
  return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "";
}

void SetEnvironment(const std::string& name, const std::string& value) {
  if (setenv(name.c_str(), value.c_str(), 1) != 0) throw Failure("cannot set the variable " + name);
}

/// Libraries carry their own run path here.
void AddLibraryFolders(const std::filesystem::path&, const std::filesystem::path&) {}

int WriteToOutput(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

bool OutputShowsColours() {
  const char* refused = std::getenv("NO_COLOR");
  const char* kind = std::getenv("TERM");
  const bool dumb = kind == nullptr || std::string(kind) == "dumb";
  return isatty(STDOUT_FILENO) == 1 && (refused == nullptr || *refused == '\0') && !dumb;
}

void OpenStandardStreams() {
  // Each opened the wrong way round: results that are written must not vanish as if somebody had read them.
  // The system gives out the lowest number that is free, so the order counts.
  constexpr std::array<int, 3> ways = {O_WRONLY, O_RDONLY, O_RDONLY};
  for (int stream = 0; stream < 3; ++stream) {
    if (fcntl(stream, F_GETFD) < 0) open("/dev/null", ways.at(static_cast<std::size_t>(stream)));
  }
}

void PrepareConsole() {}

std::string LibraryFileName(const std::string& name, LibraryPrefix prefix) {
  return (prefix == LibraryPrefix::Lib ? "lib" : "") + name + ".so";
}

}  // namespace kxbench
