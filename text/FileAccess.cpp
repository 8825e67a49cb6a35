#include "text/FileAccess.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <fstream>
#include <system_error>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace shorttest {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string& what, const fs::path& path, std::error_code cause) {
  throw std::system_error(cause, "cannot " + what + " '" + PathText(path) + "'");
}

// What the stream library left in errno; it promises nothing, so never "success".
std::error_code LastStreamError() {
  return errno != 0 ? std::error_code(errno, std::generic_category())
                    : std::make_error_code(std::errc::io_error);
}

#ifdef _WIN32

std::error_code FlushToDisk(const fs::path& path) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return {static_cast<int>(GetLastError()), std::system_category()};
  const BOOL flushed = FlushFileBuffers(file);
  const std::error_code result(flushed ? 0 : static_cast<int>(GetLastError()), std::system_category());
  CloseHandle(file);
  return result;
}

void FlushDirectory(const fs::path&) {}  // the system journals its directories

#else

std::error_code FlushToDisk(const fs::path& path) {
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return {errno, std::generic_category()};
  const std::error_code result(fsync(file) == 0 ? 0 : errno, std::generic_category());
  close(file);
  return result;
}

// Best effort: some file systems cannot flush a directory, and the content is safe already.
void FlushDirectory(const fs::path& directory) { static_cast<void>(FlushToDisk(directory)); }

#endif

// Whether there is a file to `what`; anything but a file or nothing is an error. Only a file has a whole
// content: a device can be endless, and a pipe waits for ever.
bool FileExists(const std::string& what, const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::none) Fail(what, path, error);
  if (fs::is_directory(status)) Fail(what, path, std::make_error_code(std::errc::is_a_directory));
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    Fail(what, path, std::make_error_code(std::errc::not_supported));
  }
  return fs::exists(status);
}

// The new content beside the file; gone again unless it was put in the file's place.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& target) : path_(target) { path_ += ".new~"; }
  ~TemporaryFile() {
    std::error_code ignored;
    if (created_ && !placed_) fs::remove(path_, ignored);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  void Write(const std::string& content) {
    RemoveRemains();
    errno = 0;
    std::ofstream file(path_, std::ios::binary | std::ios::trunc);
    if (!file) Fail("write", path_, LastStreamError());
    created_ = true;
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    if (!file) Fail("write", path_, LastStreamError());
    if (const std::error_code error = FlushToDisk(path_)) Fail("write", path_, error);
  }

  void PutInPlaceOf(const fs::path& target) {
    std::error_code error;
    const fs::file_status old = fs::status(target, error);
    if (fs::exists(old)) fs::permissions(path_, old.permissions(), error);
    fs::rename(path_, target, error);
    if (error) Fail("replace", target, error);
    placed_ = true;
    FlushDirectory(target.parent_path());
  }

 private:
  // What a killed save has left, or a link that somebody has put there.
  void RemoveRemains() const {
    static_cast<void>(FileExists("write", path_));
    std::error_code error;
    fs::remove(path_, error);
    if (error) Fail("write", path_, error);
  }

  fs::path path_;
  bool created_ = false;
  bool placed_ = false;
};

// Where a chain of links ends, whether or not something is there.
fs::path FollowLinks(fs::path path) {
  constexpr int MostLinks = 40;  // as many as the systems follow themselves
  std::error_code error;
  for (int n = 0; fs::is_symlink(fs::symlink_status(path, error)); ++n) {
    if (n == MostLinks) Fail("write", path, std::make_error_code(std::errc::too_many_symbolic_link_levels));
    path = path.parent_path() / fs::read_symlink(path);
  }
  return path;
}

// A file that must not be written must not be replaced either, although its directory would allow it.
void RequireWritable(const fs::path& path) {
  if (!FileExists("write", path)) return;
#ifdef _WIN32
  // Asked for by name: a system that emulates this one may let its super-user write all the same.
  if ((GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_READONLY) != 0) {
    Fail("write", path, std::make_error_code(std::errc::permission_denied));
  }
#endif
  errno = 0;
  const std::fstream file(path, std::ios::binary | std::ios::in | std::ios::out);
  if (!file) Fail("write", path, LastStreamError());
}

}  // namespace

fs::path AbsolutePath(const std::string& fileName) {
  return fs::absolute(fs::path(std::u8string(fileName.begin(), fileName.end())));
}

std::string PathText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

std::string ReadWholeFile(const fs::path& path) {
  if (!FileExists("open", path)) {
    Fail("open", path, std::make_error_code(std::errc::no_such_file_or_directory));
  }
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) Fail("open", path, LastStreamError());
  std::string content;
  std::array<char, 16384> block{};
  while (file.read(block.data(), block.size()) || file.gcount() > 0) {
    content.append(block.data(), static_cast<std::size_t>(file.gcount()));
  }
  if (file.bad()) Fail("read", path, LastStreamError());
  return content;
}

void ReplaceWholeFile(const fs::path& path, const std::string& content) {
  const fs::path target = FollowLinks(path);
  RequireWritable(target);
  TemporaryFile temporary(target);
  temporary.Write(content);
  temporary.PutInPlaceOf(target);
}

}  // namespace shorttest
