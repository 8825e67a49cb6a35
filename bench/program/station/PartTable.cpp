#include "bench/program/station/PartTable.h"

#include <exception>

#include "bench/program/system/System.h"
#include "text/FileAccess.h"
#include "text/TextEncoding.h"

namespace kxbench {

namespace {

std::string IniTextOf(const Project& project) {
  try {
    return shorttest::FileTextToUtf8(shorttest::ReadWholeFile(PathFromUtf8(project.IniFile())));
  } catch (const std::exception&) {
    return "";
  }
}

}  // namespace

PartTable::PartTable(const Project& project) : folder_(project.path), ini_(IniTextOf(project)) {}

std::optional<std::string> PartTable::ExpectationOf(const std::string& code) const {
  if (code.empty()) return std::nullopt;
  const std::optional<std::string> file = ini_.Find("Parts", code);
  if (!file || file->empty()) return std::nullopt;
  return Utf8FromPath(PathFromUtf8(folder_) / PathFromUtf8(*file));
}

}  // namespace kxbench
