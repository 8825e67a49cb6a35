#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// The text (UTF-8) in the system's 8-bit encoding: UTF-8 itself on Linux, the ANSI code page on Windows.
std::string ToSystemEncoding(const std::string& utf8);

/// An environment variable as UTF-8; no value when it is not set or empty.
std::optional<std::string> EnvironmentVariable(const std::string& name);

/// The path that a UTF-8 file name stands for.
std::filesystem::path PathFromUtf8(std::string_view name);

/// The name of a path as UTF-8.
std::string Utf8FromPath(const std::filesystem::path& path);

}  // namespace simulator
