// ReplaceWholeFile: a new file in the old one's place or, where that cannot be, the old file written with
// care.

#include <chrono>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>

#include "text/FileAccess.h"
#include "text/FileHandle.h"
#include "text/OwnName.h"
#include "text/RegularFile.h"

namespace shorttest {
namespace {

namespace fs = std::filesystem;
using Step = FileError::Step;

// Where a chain of links ends, whether or not something is there.
fs::path FollowLinks(fs::path path) {
  constexpr int MostLinks = 40;  // as many as the systems follow themselves
  std::error_code error;
  for (int n = 0; fs::is_symlink(fs::symlink_status(path, error)); ++n) {
    if (n == MostLinks) {
      throw FileError(Step::Write, path, std::make_error_code(std::errc::too_many_symbolic_link_levels));
    }
    path = path.parent_path() / fs::read_symlink(path);
  }
  return path;
}

// A file that must not be written must not be replaced either, although its folder would allow it.
void RequireWritable(const fs::path& path) {
  std::error_code error;
  if (IsMarkedReadOnly(path)) error = std::make_error_code(std::errc::permission_denied);
  if (!error && FileHandle(path, FileHandle::Mode::ReadWrite, error)) return;
  throw FileError(Step::Write, path, error);
}

// A new file of a name of its own in a folder; gone again with this object unless it was renamed or kept.
class NewFile {
 public:
  NewFile(const fs::path& folder, const fs::path& target, OwnFile kind, FileHandle::Mode mode) {
    // That names are taken is next to impossible; whoever takes them all on purpose causes an error.
    constexpr int MostTries = 20;
    for (int i = 0; i < MostTries && !created_; ++i) {
      path_ = folder / OwnName(target, kind, std::random_device()());
      error_.clear();
      file_.emplace(path_, mode, error_);
      created_ = static_cast<bool>(*file_);
      if (error_ != std::errc::file_exists) break;
    }
    removes_ = created_;
  }
  ~NewFile() {
    file_.reset();
    std::error_code ignored;
    if (removes_) fs::remove(path_, ignored);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// Why there is no file; no error when there is one.
  std::error_code Error() const { return error_; }
  const fs::path& Path() const { return path_; }
  FileHandle& File() { return *file_; }

  void Keep() { removes_ = false; }

  std::error_code PutInPlaceOf(const fs::path& target) {
    file_.reset();  // some systems do not rename what is open
    const std::error_code error = RenameOver(path_, target);
    if (!error) removes_ = false;
    return error;
  }

 private:
  std::optional<FileHandle> file_;
  fs::path path_;
  std::error_code error_;
  bool created_ = false;
  bool removes_ = false;
};

// A copy of the old content beside the file or, where the folder allows none, among the temporary files.
class OldCopy {
 public:
  OldCopy(const fs::path& target, const std::string& content) {
    std::error_code error = Write(target.parent_path(), target, content);
    if (!error) return;
    std::error_code none;
    const fs::path temporary = fs::temp_directory_path(none);
    if (!none) error = Write(temporary, target, content);
    if (error) throw FileError(Step::Write, target, error);
  }

  void Keep() { file_->Keep(); }
  const fs::path& Path() const { return file_->Path(); }

 private:
  std::error_code Write(const fs::path& folder, const fs::path& target, const std::string& content) {
    file_.emplace(folder, target, OwnFile::Old, FileHandle::Mode::CreatePrivately);
    if (const std::error_code error = file_->Error()) return error;
    const std::error_code error = file_->File().Overwrite(content);
    if (!error) FlushFolder(folder);
    return error;
  }

  std::optional<NewFile> file_;
};

void WriteInPlace(const fs::path& target, const std::string& content) {
  std::error_code error;
  FileHandle file(target, FileHandle::Mode::ReadWrite, error);
  if (!file) throw FileError(Step::Write, target, error);
  if (!file.Lock(true)) {
    throw FileError(Step::Write, target, std::make_error_code(std::errc::device_or_resource_busy));
  }
  const std::string old = ReadToTheEnd(file, target, std::numeric_limits<std::uintmax_t>::max());
  OldCopy copy(target, old);
  error = file.Overwrite(content);
  if (!error) return;
  if (!file.Overwrite(old)) throw FileError(Step::Write, target, error);
  copy.Keep();
  throw FileDamaged(target, copy.Path(), error);
}

// The error that keeps a new file out of the old one's place. Throws FileError when it could not be written.
std::error_code WriteNewFile(const fs::path& target, bool exists, const std::string& content) {
  NewFile fresh(target.parent_path(), target, OwnFile::New,
                exists ? FileHandle::Mode::CreatePrivately : FileHandle::Mode::CreateNew);
  if (fresh.Error()) return fresh.Error();
  std::error_code error = fresh.File().Overwrite(content);
  if (error) throw FileError(Step::Write, target, error);
  // Before it is in its place: nobody is to find it with other permissions there.
  if (exists) {
    const fs::file_status old = fs::status(target, error);
    if (!error) error = fresh.File().SetPermissions(old.permissions());
  }
  return error ? error : fresh.PutInPlaceOf(target);
}

// What savers have left that were killed. No save takes so long; the age is what the file system's clock
// says.
void RemoveRemains(const fs::path& target) {
  constexpr std::chrono::hours LongestSave(1);
  std::error_code error;
  const fs::file_time_type now = fs::last_write_time(target, error);
  if (error) return;
  fs::directory_iterator entry(target.parent_path(), error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    if (!IsOwnName(entry->path(), target, OwnFile::New)) continue;
    std::error_code gone;
    if (!fs::is_regular_file(entry->symlink_status(gone))) continue;
    const fs::file_time_type written = fs::last_write_time(entry->path(), gone);
    if (!gone && now - written > LongestSave) fs::remove(entry->path(), gone);
  }
}

bool HasSeveralNames(const fs::path& path) {
  std::error_code error;
  const std::uintmax_t names = fs::hard_link_count(path, error);
  return !error && names > 1;
}

}  // namespace

void ReplaceWholeFile(const fs::path& path, const std::string& content) {
  const fs::path target = FollowLinks(fs::absolute(path));
  const bool exists = FileExists(Step::Write, target);
  if (exists) RequireWritable(target);
  if (exists && HasSeveralNames(target)) {
    WriteInPlace(target, content);
  } else if (const std::error_code error = WriteNewFile(target, exists, content)) {
    if (!exists || !RefusesAnotherFile(error)) throw FileError(Step::Write, target, error);
    WriteInPlace(target, content);
  } else {
    FlushFolder(target.parent_path());
  }
  RemoveRemains(target);
}

}  // namespace shorttest
