#include "text/LineFile.h"

#include <algorithm>
#include <system_error>

#include "text/FileHandle.h"
#include "text/Paths.h"

namespace shorttest {
namespace {

using Step = FileError::Step;

constexpr std::size_t TailBytes = 4096;

/// The file, locked; the lock goes with it.
class LockedLineFile {
 public:
  explicit LockedLineFile(const std::filesystem::path& path)
      : path_(path), file_(path, FileHandle::Mode::Append, error_) {
    if (!file_) throw FileError(Step::Open, path_, error_);
    if (!file_.Lock(true))
      throw FileError(Step::Open, path_, std::make_error_code(std::errc::no_lock_available));
    size_ = file_.Size(error_);
    Require(Step::Read, error_);
  }

  std::uintmax_t Size() const { return size_; }

  /// What stands after the last line feed. Throws when that cannot be the beginning of a line.
  std::string Unfinished(std::string_view start) {
    std::string tail;
    while (tail.size() < size_ && tail.find('\n') == std::string::npos) {
      const auto count = static_cast<std::size_t>(std::min<std::uintmax_t>(TailBytes, size_ - tail.size()));
      std::string block(count, '\0');
      file_.ReadAt(size_ - tail.size() - count, block.data(), count, error_);
      Require(Step::Read, error_);
      tail.insert(0, block);
    }
    const std::size_t end = tail.rfind('\n');
    if (end != std::string::npos) tail.erase(0, end + 1);
    const std::size_t common = std::min(tail.size(), start.size());
    if (tail.compare(0, common, start, 0, common) != 0) {
      throw ForeignLines(path_);
    }
    return tail;
  }

  void CutOff(std::size_t tail) { Require(Step::Write, file_.CutOff(size_ - tail)); }
  void Append(std::string_view text) { Require(Step::Write, file_.Append(text)); }

 private:
  void Require(Step step, std::error_code error) const {
    if (error) throw FileError(step, path_, error);
  }

  std::filesystem::path path_;
  std::error_code error_;
  FileHandle file_;
  std::uintmax_t size_ = 0;
};

}  // namespace

ForeignLines::ForeignLines(const std::filesystem::path& path)
    : FileError(
          Step::Write, std::make_error_code(std::errc::invalid_argument),
          Utf8FromPath(path) + " cannot be appended to: its last line has no end and is of another kind") {}

std::string AppendLine(const std::filesystem::path& path, std::string_view line, std::string_view start) {
  LockedLineFile file(path);
  std::string torn = file.Unfinished(start);
  if (!torn.empty()) {
    std::filesystem::path aside = path;
    aside += ".torn";
    LockedLineFile(aside).Append(torn + "\n");
    file.CutOff(torn.size());
  }
  file.Append(std::string(line) + "\n");
  return torn;
}

void RequireLineFile(const std::filesystem::path& path, std::string_view start) {
  LockedLineFile(path).Unfinished(start);
}

}  // namespace shorttest
