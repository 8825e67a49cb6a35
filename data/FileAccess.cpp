#include "data/FileAccess.h"

#include <cerrno>
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

// The new content beside the file; gone again unless it was put in the file's place.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& target) : path_(target) { path_ += ".new~"; }
  ~TemporaryFile() {
    std::error_code ignored;
    if (!placed_) fs::remove(path_, ignored);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  void Write(const std::string& content) const {
    errno = 0;
    std::ofstream file(path_, std::ios::binary | std::ios::trunc);
    if (!file) Fail("write", path_, LastStreamError());
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
  fs::path path_;
  bool placed_ = false;
};

// A file that must not be written must not be replaced either, although its directory would allow it.
void RequireWritable(const fs::path& path) {
  const fs::file_status status = fs::status(path);
  if (!fs::exists(status)) return;
  if (fs::is_directory(status)) Fail("write", path, std::make_error_code(std::errc::is_a_directory));
  if (!fs::is_regular_file(status)) Fail("write", path, std::make_error_code(std::errc::not_supported));
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
  std::error_code error;
  if (fs::is_directory(path, error)) Fail("read", path, std::make_error_code(std::errc::is_a_directory));
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) Fail("open", path, LastStreamError());
  std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (file.bad()) Fail("read", path, LastStreamError());
  return content;
}

void ReplaceWholeFile(const fs::path& path, const std::string& content) {
  const fs::path target = fs::is_symlink(fs::symlink_status(path)) ? fs::weakly_canonical(path) : path;
  RequireWritable(target);
  TemporaryFile temporary(target);
  temporary.Write(content);
  temporary.PutInPlaceOf(target);
}

}  // namespace shorttest
