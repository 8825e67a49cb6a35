#include "text/FileAccess.h"

#include "text/FileHandle.h"
#include "text/RegularFile.h"

namespace shorttest {

std::string ReadWholeFile(const std::filesystem::path& path, std::uintmax_t mostBytes, ReadFrom from) {
  using Step = FileError::Step;
  if (!FileExists(Step::Open, path, from == ReadFrom::Files ? FileKinds::Regular : FileKinds::Any)) {
    throw FileError(Step::Open, path, std::make_error_code(std::errc::no_such_file_or_directory));
  }
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (!error && size > mostBytes) throw FileTooLarge(path, size, mostBytes);
  error.clear();
  FileHandle file(path, FileHandle::Mode::Read, error);
  if (!file) throw FileError(Step::Open, path, error);
  // Not while it is written in place. A lock that lasts is no reason not to read.
  if (from == ReadFrom::Files) file.Lock(false);
  return ReadToTheEnd(file, path, mostBytes);
}

}  // namespace shorttest
