#include "bench/program/system/SaveProbe.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"

namespace kxbench {

namespace {

std::string StreamCause() { return errno == 0 ? "unknown cause" : std::generic_category().message(errno); }

}  // namespace

void RequireSavable(const std::string& file) {
  namespace fs = std::filesystem;
  const fs::path path = fs::absolute(PathFromUtf8(file));
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (fs::is_directory(status)) throw Failure(file + " cannot be saved: this is a folder");
  errno = 0;
  if (fs::exists(status)) {
    if (!fs::is_regular_file(status)) throw Failure(file + " cannot be saved: this is no file");
    const std::fstream opened(path, std::ios::binary | std::ios::in | std::ios::out);
    if (!opened) throw Failure(file + " cannot be saved: " + StreamCause());
    return;
  }
  if (!fs::is_directory(path.parent_path(), error)) {
    throw Failure(file + " cannot be saved: there is no folder " + Utf8FromPath(path.parent_path()));
  }
  fs::path probe = path;
  probe += ".try~";
  errno = 0;
  if (!std::ofstream(probe, std::ios::binary | std::ios::app)) {
    throw Failure(file + " cannot be saved: " + StreamCause());
  }
  fs::remove(probe, error);
}

bool AreOneFile(const std::string& a, const std::string& b) {
  const std::filesystem::path first = std::filesystem::absolute(PathFromUtf8(a));
  const std::filesystem::path second = std::filesystem::absolute(PathFromUtf8(b));
  std::error_code error;
  return first.lexically_normal() == second.lexically_normal() ||
         std::filesystem::equivalent(first, second, error);
}

}  // namespace kxbench
