#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "text/FileError.h"

namespace shorttest {

/// A file of lines that several programs append to at the same time. Whoever appends holds the file's lock,
/// and writes a line in one call.

/// A file whose last line has no end and does not look as if it were of the kind that is to be appended.
class ForeignLines : public FileError {
 public:
  explicit ForeignLines(const std::filesystem::path& path);
};

/// Appends `line`, which holds no line feed, and a line feed to the file `path`; makes the file when there is
/// none. Once it has returned the line is on the disk.
///
/// A last line without its end is what a program left that was killed while it wrote: it is taken out of the
/// file, appended to `path`.torn, and returned; else the result is empty. Such a line begins with `start`, as
/// far as it goes; a file that ends with anything else is somebody else's and stays as it is.
///
/// Throws FileError: the file cannot be opened, locked or written, or it is somebody else's. It is then as it
/// was before.
std::string AppendLine(const std::filesystem::path& path, std::string_view line, std::string_view start);

/// Throws what AppendLine would throw, as far as that can be known before there is a line. Makes the file,
/// empty, when there is none: another program may be appending already, so it stays.
void RequireLineFile(const std::filesystem::path& path, std::string_view start);

}  // namespace shorttest
