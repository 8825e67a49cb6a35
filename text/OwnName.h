#pragma once

#include <cstdint>
#include <filesystem>

namespace shorttest {

/// Names for the files that saving needs beside a file: the file's own name, eight hexadecimal digits, and
/// what the file is there for. Of a long name as much is taken as leaves room for the rest.
enum class OwnFile : std::uint8_t {
  New,  ///< "kabel.dat.01234567.new~": the new content, until it takes the file's place
  Old   ///< "kabel.dat.01234567.old~": the old content, while the file itself is written
};

/// The name, without a folder, with `number` as its digits.
std::filesystem::path OwnName(const std::filesystem::path& target, OwnFile kind, std::uint32_t number);

/// Whether the last part of `path` is such a name for the file `target`.
bool IsOwnName(const std::filesystem::path& path, const std::filesystem::path& target, OwnFile kind);

}  // namespace shorttest
