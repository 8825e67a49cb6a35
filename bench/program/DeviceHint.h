#pragma once

#include <optional>
#include <string>

namespace kxbench {

/// A failure's text; where it says that the simulated tester has no device and no --device was given, with
/// what helps.
std::string WithDeviceHint(const std::string& failure, const std::optional<std::string>& device);

}  // namespace kxbench
