#include "text/FileError.h"

#include "text/Paths.h"

namespace shorttest {
namespace {

std::string FailureText(FileError::Step step, const std::filesystem::path& path) {
  const char* const what = step == FileError::Step::Open   ? "open"
                           : step == FileError::Step::Read ? "read"
                                                           : "write";
  return std::string("cannot ") + what + " '" + Utf8FromPath(path) + "'";
}

std::string SizeText(std::uintmax_t size, std::uintmax_t limit) {
  return (size > 0 ? "it holds " + std::to_string(size) + " bytes, more than the "
                   : std::string("it holds more than the ")) +
         std::to_string(limit) + (size > 0 ? "" : " bytes") + " that are possible";
}

}  // namespace

FileError::FileError(Step step, const std::filesystem::path& path, std::error_code cause)
    : FileError(step, cause, FailureText(step, path)) {}

FileTooLarge::FileTooLarge(const std::filesystem::path& path, std::uintmax_t size, std::uintmax_t limit)
    : FileError(Step::Read, std::make_error_code(std::errc::file_too_large),
                FailureText(Step::Read, path) + ": " + SizeText(size, limit)),
      size_(size),
      limit_(limit) {}

std::string FileTooLarge::Reason() const { return SizeText(size_, limit_); }

FileDamaged::FileDamaged(const std::filesystem::path& path, const std::filesystem::path& copy,
                         std::error_code cause)
    : FileError(
          Step::Write, cause,
          FailureText(Step::Write, path) + ", whose old content is kept in '" + Utf8FromPath(copy) + "'") {}

}  // namespace shorttest
