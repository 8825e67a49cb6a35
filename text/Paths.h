#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace shorttest {

/// The path that a UTF-8 file name stands for.
std::filesystem::path PathFromUtf8(std::string_view name);

/// The path as UTF-8 text, for messages and for names that are handed on.
std::string Utf8FromPath(const std::filesystem::path& path);

/// The file name (UTF-8) as an absolute path; relative names are taken against the current directory.
std::filesystem::path AbsolutePath(const std::string& fileName);

}  // namespace shorttest
