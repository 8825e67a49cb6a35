#include "text/RegularFile.h"

#include <array>
#include <cstddef>

namespace shorttest {

namespace fs = std::filesystem;

bool FileExists(FileError::Step step, const fs::path& path, FileKinds kinds) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::none) throw FileError(step, path, error);
  if (fs::is_directory(status)) throw FileError(step, path, std::make_error_code(std::errc::is_a_directory));
  if (fs::exists(status) && !fs::is_regular_file(status) && kinds == FileKinds::Regular) {
    throw FileError(step, path, std::make_error_code(std::errc::not_supported));
  }
  return fs::exists(status);
}

std::string ReadToTheEnd(FileHandle& file, const fs::path& path, std::uintmax_t mostBytes) {
  std::string content;
  std::array<char, 65536> block{};
  for (;;) {
    std::error_code error;
    const std::size_t count = file.Read(block.data(), block.size(), error);
    if (error) throw FileError(FileError::Step::Read, path, error);
    if (count == 0) return content;
    if (count > mostBytes - content.size()) throw FileTooLarge(path, 0, mostBytes);
    content.append(block.data(), count);
  }
}

}  // namespace shorttest
