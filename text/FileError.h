#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <system_error>

namespace shorttest {

/// A file that cannot be opened, read or written. The text names the file and the cause in English.
class FileError : public std::system_error {
 public:
  enum class Step : std::uint8_t { Open, Read, Write };

  FileError(Step step, const std::filesystem::path& path, std::error_code cause);

  /// What could not be done.
  Step FailedStep() const noexcept { return step_; }

 protected:
  FileError(Step step, std::error_code cause, const std::string& text)
      : std::system_error(cause, text), step_(step) {}

 private:
  Step step_;
};

/// A file that holds more than its reader takes. No more than that was read of it.
class FileTooLarge : public FileError {
 public:
  /// `size` in bytes; 0 for what has no size, such as a pipe.
  FileTooLarge(const std::filesystem::path& path, std::uintmax_t size, std::uintmax_t limit);

  std::uintmax_t Size() const noexcept { return size_; }
  std::uintmax_t Limit() const noexcept { return limit_; }

  /// "it holds 16777217 bytes, more than the 16777216 that are possible"
  std::string Reason() const;

 private:
  std::uintmax_t size_;
  std::uintmax_t limit_;
};

/// A file that could neither be written nor be given its old content back, which the file `copy` holds.
class FileDamaged : public FileError {
 public:
  FileDamaged(const std::filesystem::path& path, const std::filesystem::path& copy, std::error_code cause);
};

}  // namespace shorttest
