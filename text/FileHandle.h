#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace shorttest {

/// An open file of the system, for the files of this room. Closed by its destructor.
class FileHandle {
 public:
  enum class Mode : std::uint8_t {
    Read,
    ReadWrite,  ///< of a file that exists
    Append,     ///< reads and appends; made when there is none
    CreateNew,  ///< fails with errc::file_exists when there is anything of that name, be it a link to nowhere
    CreatePrivately  ///< the same, for its owner alone
  };

  /// Check with operator bool, then see `error`.
  FileHandle(const std::filesystem::path& path, Mode mode, std::error_code& error);
  ~FileHandle();
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;

  explicit operator bool() const;

  /// Reads on from where the last read ended; 0 bytes at the end of the file.
  std::size_t Read(char* buffer, std::size_t size, std::error_code& error);

  /// Makes `content` the file's whole content and waits until it is on the disk.
  std::error_code Overwrite(std::string_view content);

  /// The file's size in bytes.
  std::uintmax_t Size(std::error_code& error) const;

  /// Reads from `position` on; fewer bytes than `size` at the end of the file alone.
  std::size_t ReadAt(std::uintmax_t position, char* buffer, std::size_t size, std::error_code& error) const;

  /// Cuts the file off after `size` bytes.
  std::error_code CutOff(std::uintmax_t size);

  /// Writes `content` at the file's end in one call of the system and waits until it is on the disk. What was
  /// written of it when that fails is cut off again. REQUIRES: opened with Append.
  std::error_code Append(std::string_view content);

  /// Gives the file the permissions of another; on systems with rights of another kind it has them already.
  std::error_code SetPermissions(std::filesystem::perms permissions);

  /// Waits, for some seconds at most, until no other handle of this class holds the lock, or none holds it
  /// exclusively. False when it is still held. True also where the file system knows no locks. The lock goes
  /// with the handle.
  bool Lock(bool exclusively);

  /// The system's own name of the handle.
  using Native = std::intptr_t;

 private:
  Native handle_;
};

/// Puts the file `from` in the place of `to`, in one step. A refusal because another program holds `to` open
/// is waited out for a moment.
std::error_code RenameOver(const std::filesystem::path& from, const std::filesystem::path& to);

/// Waits until the names in the folder are on the disk, as far as the system can tell.
void FlushFolder(const std::filesystem::path& folder);

/// Whether the file carries a mark that forbids writing it, in addition to the rights that opening it needs.
bool IsMarkedReadOnly(const std::filesystem::path& path);

/// Whether the error says that this folder allows no second file, or that this file may not be replaced by
/// another: writing the file itself may still be possible.
bool RefusesAnotherFile(std::error_code error);

}  // namespace shorttest
