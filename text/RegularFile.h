#pragma once

#include <filesystem>
#include <string>

#include "text/FileError.h"
#include "text/FileHandle.h"

namespace shorttest {

/// What kinds of file `step` may meet.
enum class FileKinds : std::uint8_t {
  Regular,  ///< files that have a size and an end
  Any       ///< also devices and pipes, but no folders
};

/// Whether there is a file. Throws FileError for anything of another kind, and for what cannot be looked at.
bool FileExists(FileError::Step step, const std::filesystem::path& path,
                FileKinds kinds = FileKinds::Regular);

/// What is left to read of the file, which may grow meanwhile. Throws FileError, or FileTooLarge when more
/// than `mostBytes` come.
std::string ReadToTheEnd(FileHandle& file, const std::filesystem::path& path, std::uintmax_t mostBytes);

}  // namespace shorttest
