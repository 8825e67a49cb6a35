#pragma once

#include <optional>
#include <string>

namespace kxbench {

/// A failure's text, with advice when it says that the simulated tester has no device and no --device was
/// given.
std::string WithDeviceHint(const std::string& failure, const std::optional<std::string>& device);

}  // namespace kxbench
