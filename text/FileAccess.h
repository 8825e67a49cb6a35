#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "text/FileError.h"
#include "text/Paths.h"

namespace shorttest {

/// Most bytes of a file that people write: an ini file, a script.
inline constexpr std::uintmax_t MostTextBytes = std::uintmax_t{16} << 20U;

/// What may be read: files alone, which have a size, or also what has none, such as a pipe.
enum class ReadFrom : std::uint8_t { Files, Anything };

/// The file's bytes. Throws FileTooLarge when they are more than `mostBytes`: for a file before anything is
/// read, for anything else once so many were. Throws FileError otherwise.
std::string ReadWholeFile(const std::filesystem::path& path, std::uintmax_t mostBytes = MostTextBytes,
                          ReadFrom from = ReadFrom::Files);

/// Gives the file new content, whole or not at all: the content is written to a new file beside it, flushed
/// to the disk and then put in the old file's place in one step, so that a failure or a power cut at any
/// moment leaves the old file or the new one. Of several programs that save the same file at the same time
/// the last one wins.
///
/// Where the folder allows no second file, or the file may not be replaced by another (another program holds
/// it open, it has several names, its permissions cannot be given to another), the file itself is written,
/// after a copy of its old content was kept beside it or in the system's folder for temporary files. A
/// failure then puts the old content back; the copy is removed once the old or the new content is on the
/// disk.
///
/// Links are followed and permissions are kept. Throws FileError; the old file then has its old content.
void ReplaceWholeFile(const std::filesystem::path& path, const std::string& content);

}  // namespace shorttest
