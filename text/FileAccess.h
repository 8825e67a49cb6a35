#pragma once

#include <filesystem>
#include <string>

namespace shorttest {

/// The file name (UTF-8) as an absolute path; relative names are taken against the current directory.
std::filesystem::path AbsolutePath(const std::string& fileName);

/// The path as UTF-8 text, for messages.
std::string PathText(const std::filesystem::path& path);

/// The file's bytes. Throws std::system_error naming the file and the cause.
std::string ReadWholeFile(const std::filesystem::path& path);

/// Gives the file new content, whole or not at all: the content is written beside it, flushed to the disk and
/// then put in the old file's place in one step, so that a failure or a power cut at any moment leaves the
/// old file or the new one. Links are followed and permissions are kept. Throws std::system_error naming the
/// file and the cause; the old file is then untouched.
void ReplaceWholeFile(const std::filesystem::path& path, const std::string& content);

}  // namespace shorttest
