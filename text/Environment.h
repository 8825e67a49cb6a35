#pragma once

#include <optional>
#include <string>

namespace shorttest {

/// A variable of this process's environment as UTF-8; no value when it is not set or empty.
std::optional<std::string> EnvironmentVariable(const std::string& name);

}  // namespace shorttest
