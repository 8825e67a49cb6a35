#include "bench/program/host/DeviceHint.h"

namespace kxbench {

std::string WithDeviceHint(const std::string& failure, const std::optional<std::string>& device) {
  // The simulated tester knows its variable alone; the option is ours.
  const bool missing = failure.find("BRENMOR_DEVICE is not set") != std::string::npos;
  return missing && !device ? failure + "; --device FILE gives it" : failure;
}

}  // namespace kxbench
