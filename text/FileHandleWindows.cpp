#include <windows.h>

#include <algorithm>

#include "text/FileHandle.h"

namespace shorttest {
namespace {

constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// How often, and after what pauses, something is tried that another program hinders for a moment.
constexpr int Tries = 100;
constexpr DWORD PauseMs = 10;

std::error_code LastError() { return {static_cast<int>(GetLastError()), std::system_category()}; }

HANDLE Win32Handle(FileHandle::Native handle) { return reinterpret_cast<HANDLE>(handle); }

HANDLE OpenFileW(const wchar_t* path, FileHandle::Mode mode) {
  if (mode == FileHandle::Mode::Append) {
    return CreateFileW(path, GENERIC_READ | GENERIC_WRITE, ShareAll, nullptr, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
  }
  const bool creates = mode == FileHandle::Mode::CreateNew || mode == FileHandle::Mode::CreatePrivately;
  const DWORD access = mode == FileHandle::Mode::Read ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
  return CreateFileW(path, access, ShareAll, nullptr, creates ? CREATE_NEW : OPEN_EXISTING,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool IsHeldOpen(DWORD error) {
  return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
         error == ERROR_USER_MAPPED_FILE;
}

}  // namespace

FileHandle::FileHandle(const std::filesystem::path& path, Mode mode, std::error_code& error)
    : handle_(reinterpret_cast<Native>(OpenFileW(path.c_str(), mode))) {
  if (!*this) error = LastError();
}

FileHandle::~FileHandle() {
  if (*this) CloseHandle(Win32Handle(handle_));
}

FileHandle::operator bool() const { return Win32Handle(handle_) != INVALID_HANDLE_VALUE; }

std::size_t FileHandle::Read(char* buffer, std::size_t size, std::error_code& error) {
  DWORD count = 0;
  if (ReadFile(Win32Handle(handle_), buffer, static_cast<DWORD>(size), &count, nullptr) == 0) {
    // The end of a pipe.
    if (GetLastError() != ERROR_BROKEN_PIPE) error = LastError();
    return 0;
  }
  return count;
}

std::error_code FileHandle::Overwrite(std::string_view content) {
  constexpr std::size_t MostAtOnce = std::size_t{1} << 20U;
  if (SetFilePointerEx(Win32Handle(handle_), LARGE_INTEGER{}, nullptr, FILE_BEGIN) == 0) return LastError();
  while (!content.empty()) {
    DWORD count = 0;
    const auto size = static_cast<DWORD>(std::min(content.size(), MostAtOnce));
    if (WriteFile(Win32Handle(handle_), content.data(), size, &count, nullptr) == 0) return LastError();
    content.remove_prefix(count);
  }
  if (SetEndOfFile(Win32Handle(handle_)) == 0 || FlushFileBuffers(Win32Handle(handle_)) == 0)
    return LastError();
  return {};
}

std::uintmax_t FileHandle::Size(std::error_code& error) const {
  LARGE_INTEGER size{};
  if (GetFileSizeEx(Win32Handle(handle_), &size) != 0) return static_cast<std::uintmax_t>(size.QuadPart);
  error = LastError();
  return 0;
}

std::size_t FileHandle::ReadAt(std::uintmax_t position, char* buffer, std::size_t size,
                               std::error_code& error) const {
  std::size_t done = 0;
  while (done < size) {
    OVERLAPPED place{};
    const std::uintmax_t from = position + done;
    place.Offset = static_cast<DWORD>(from & 0xffffffffU);
    place.OffsetHigh = static_cast<DWORD>(from >> 32U);
    DWORD count = 0;
    if (ReadFile(Win32Handle(handle_), buffer + done, static_cast<DWORD>(size - done), &count, &place) == 0) {
      if (GetLastError() != ERROR_HANDLE_EOF) error = LastError();
      break;
    }
    if (count == 0) break;
    done += count;
  }
  return done;
}

std::error_code FileHandle::CutOff(std::uintmax_t size) {
  LARGE_INTEGER position{};
  position.QuadPart = static_cast<LONGLONG>(size);
  if (SetFilePointerEx(Win32Handle(handle_), position, nullptr, FILE_BEGIN) == 0) return LastError();
  return SetEndOfFile(Win32Handle(handle_)) != 0 ? std::error_code() : LastError();
}

std::error_code FileHandle::Append(std::string_view content) {
  std::error_code error;
  const std::uintmax_t before = Size(error);
  if (error) return error;
  OVERLAPPED end{};  // both all ones: wherever the file ends at that moment
  end.Offset = 0xffffffffU;
  end.OffsetHigh = 0xffffffffU;
  DWORD count = 0;
  const bool written = WriteFile(Win32Handle(handle_), content.data(), static_cast<DWORD>(content.size()),
                                 &count, &end) != 0 &&
                       count == content.size();
  if (written && FlushFileBuffers(Win32Handle(handle_)) != 0) return {};
  error = LastError();
  CutOff(before);
  return error ? error : std::make_error_code(std::errc::no_space_on_device);
}

std::error_code FileHandle::SetPermissions(std::filesystem::perms) { return {}; }

bool FileHandle::Lock(bool exclusively) {
  // A byte far past the end of any file: locks bind readers here, and others must not be kept from reading.
  OVERLAPPED place{};
  place.OffsetHigh = 0x40000000;
  const DWORD flags = LOCKFILE_FAIL_IMMEDIATELY | (exclusively ? LOCKFILE_EXCLUSIVE_LOCK : 0U);
  for (int i = 0; i < 5 * Tries; ++i) {
    if (LockFileEx(Win32Handle(handle_), flags, 0, 1, 0, &place) != 0) return true;
    const DWORD error = GetLastError();
    if (error != ERROR_LOCK_VIOLATION && error != ERROR_IO_PENDING) return true;
    Sleep(PauseMs);
  }
  return false;
}

std::error_code RenameOver(const std::filesystem::path& from, const std::filesystem::path& to) {
  for (int i = 1;; ++i) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0)
      return {};
    if (!IsHeldOpen(GetLastError()) || i == Tries) return LastError();
    Sleep(PauseMs);
  }
}

void FlushFolder(const std::filesystem::path&) {}  // the system journals its folders

// Asked for by name: a system that emulates this one may let its super-user write all the same.
bool IsMarkedReadOnly(const std::filesystem::path& path) {
  return (GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_READONLY) != 0;
}

bool RefusesAnotherFile(std::error_code error) {
  return error.category() == std::system_category() &&
         (IsHeldOpen(static_cast<DWORD>(error.value())) || error.value() == ERROR_WRITE_PROTECT ||
          error.value() == ERROR_FILENAME_EXCED_RANGE || error.value() == ERROR_UNABLE_TO_MOVE_REPLACEMENT);
}

}  // namespace shorttest
