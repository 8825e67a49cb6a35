#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

#include "text/FileHandle.h"

namespace shorttest {
namespace {

std::error_code LastError() { return {errno, std::generic_category()}; }

int Descriptor(FileHandle::Native handle) { return static_cast<int>(handle); }

int OpenFile(const char* path, FileHandle::Mode mode) {
  constexpr mode_t Everybody = 0666;
  constexpr mode_t Owner = 0600;
  switch (mode) {
    case FileHandle::Mode::Read:
      return open(path, O_RDONLY | O_CLOEXEC);
    case FileHandle::Mode::ReadWrite:
      return open(path, O_RDWR | O_CLOEXEC);
    case FileHandle::Mode::Append:
      return open(path, O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC, Everybody);
    case FileHandle::Mode::CreateNew:
      return open(path, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, Everybody);
    case FileHandle::Mode::CreatePrivately:
      break;
  }
  return open(path, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, Owner);
}

}  // namespace

FileHandle::FileHandle(const std::filesystem::path& path, Mode mode, std::error_code& error)
    : handle_(OpenFile(path.c_str(), mode)) {
  if (handle_ < 0) error = LastError();
}

FileHandle::~FileHandle() {
  if (handle_ >= 0) close(Descriptor(handle_));
}

FileHandle::operator bool() const { return handle_ >= 0; }

std::size_t FileHandle::Read(char* buffer, std::size_t size, std::error_code& error) {
  for (;;) {
    const ssize_t count = read(Descriptor(handle_), buffer, size);
    if (count >= 0) return static_cast<std::size_t>(count);
    if (errno == EINTR) continue;
    error = LastError();
    return 0;
  }
}

std::error_code FileHandle::Overwrite(std::string_view content) {
  const auto size = static_cast<off_t>(content.size());
  for (off_t position = 0; !content.empty();) {
    const ssize_t count = pwrite(Descriptor(handle_), content.data(), content.size(), position);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return LastError();
    content.remove_prefix(static_cast<std::size_t>(count));
    position += count;
  }
  if (ftruncate(Descriptor(handle_), size) != 0 || fsync(Descriptor(handle_)) != 0) return LastError();
  return {};
}

std::uintmax_t FileHandle::Size(std::error_code& error) const {
  struct stat status = {};
  if (fstat(Descriptor(handle_), &status) == 0) return static_cast<std::uintmax_t>(status.st_size);
  error = LastError();
  return 0;
}

std::size_t FileHandle::ReadAt(std::uintmax_t position, char* buffer, std::size_t size,
                               std::error_code& error) const {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count =
        pread(Descriptor(handle_), buffer + done, size - done, static_cast<off_t>(position + done));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) error = LastError();
    if (count <= 0) break;
    done += static_cast<std::size_t>(count);
  }
  return done;
}

std::error_code FileHandle::CutOff(std::uintmax_t size) {
  return ftruncate(Descriptor(handle_), static_cast<off_t>(size)) == 0 ? std::error_code() : LastError();
}

std::error_code FileHandle::Append(std::string_view content) {
  std::error_code error;
  const std::uintmax_t before = Size(error);
  if (error) return error;
  ssize_t count = -1;
  do {
    count = write(Descriptor(handle_), content.data(), content.size());
  } while (count < 0 && errno == EINTR);
  if (count < 0) return LastError();
  if (static_cast<std::size_t>(count) < content.size()) {
    error = std::make_error_code(std::errc::no_space_on_device);
  } else if (fsync(Descriptor(handle_)) != 0 && errno != EINVAL) {  // a pipe has no disk
    error = LastError();
  }
  if (error) CutOff(before);
  return error;
}

std::error_code FileHandle::SetPermissions(std::filesystem::perms permissions) {
  return fchmod(Descriptor(handle_), static_cast<mode_t>(permissions)) == 0 ? std::error_code() : LastError();
}

bool FileHandle::Lock(bool exclusively) {
  using std::chrono::steady_clock;
  constexpr std::chrono::seconds Longest(5);
  const auto start = steady_clock::now();
  while (flock(Descriptor(handle_), (exclusively ? LOCK_EX : LOCK_SH) | LOCK_NB) != 0) {
    if (errno != EWOULDBLOCK && errno != EINTR) return true;
    if (steady_clock::now() - start > Longest) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

std::error_code RenameOver(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  return error;
}

void FlushFolder(const std::filesystem::path& folder) {
  const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
}

bool IsMarkedReadOnly(const std::filesystem::path&) { return false; }

bool RefusesAnotherFile(std::error_code error) {
  for (const std::errc refusal :
       {std::errc::permission_denied, std::errc::operation_not_permitted, std::errc::read_only_file_system,
        std::errc::device_or_resource_busy, std::errc::text_file_busy, std::errc::filename_too_long}) {
    if (error == refusal) return true;
  }
  return false;
}

}  // namespace shorttest
