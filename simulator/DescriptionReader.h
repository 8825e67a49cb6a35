#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "simulator/DescriptionWords.h"
#include "simulator/DeviceDescription.h"

namespace simulator {

/// Reads the device description in the file `path`, and those it includes. The language is described in
/// docs/device-description.md. Throws DescriptionError naming file, line, column and cause; for a file that
/// cannot be read, the file and the cause.
DeviceDescription ReadDeviceDescription(const std::filesystem::path& path);

/// Same for a text (UTF-8), which mistakes call `name`. Files that it includes are taken against the current
/// directory.
DeviceDescription ParseDeviceDescription(std::string_view text, const std::string& name);

}  // namespace simulator
