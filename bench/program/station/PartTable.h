#pragma once

#include <optional>
#include <string>

#include "bench/program/host/Project.h"
#include "text/IniText.h"

namespace kxbench {

/// The parts of a project and their expectation files: section "Parts" of the project's ini file, the part's
/// code as key, the file's name, from the project's folder on, as value.
class PartTable {
 public:
  /// Reads the ini file once; without one there are no parts.
  explicit PartTable(const Project& project);

  /// The expectation file (UTF-8) of the part with this code; none when it is no part's.
  std::optional<std::string> ExpectationOf(const std::string& code) const;

 private:
  std::string folder_;
  shorttest::IniText ini_;
};

}  // namespace kxbench
