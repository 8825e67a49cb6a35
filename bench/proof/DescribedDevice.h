#pragma once

#include <filesystem>

#include "bench/proof/DeviceModel.h"

namespace kxbench::proof {

/// The device in the device description `path`, with at least `channels` channels: its wires, resistors and
/// insulation, and the contact resistance. Of the tester nothing else counts: a proof's tester is a sound
/// one. Throws std::runtime_error for a description that cannot be read or that describes a charged device.
DeviceModel DescribedDevice(const std::filesystem::path& path, std::size_t channels);

}  // namespace kxbench::proof
