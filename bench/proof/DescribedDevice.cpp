#include "bench/proof/DescribedDevice.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "simulator/DescriptionReader.h"

namespace kxbench::proof {

DeviceModel DescribedDevice(const std::filesystem::path& path, std::size_t channels) {
  const simulator::DeviceDescription description = simulator::ReadDeviceDescription(path);
  if (!description.capacitors.empty()) {
    throw std::runtime_error("the device is charged: a proof needs a good one");
  }
  DeviceModel device;
  device.channels = std::max<std::size_t>(channels, simulator::MaxChannels);
  device.nodes = device.channels + static_cast<std::size_t>(description.innerNodes);
  device.contactOhm = description.contactOhm;
  const auto nodeOf = [&](simulator::Point point) {
    const auto node = static_cast<std::size_t>(point);
    return point < simulator::MaxChannels ? node : node - simulator::MaxChannels + device.channels;
  };
  for (const simulator::Resistor& one : description.resistors) {
    device.resistors.push_back({nodeOf(one.a), nodeOf(one.b), one.ohm});
  }
  if (std::isinf(description.leakageOhm)) return device;
  const std::size_t housing = device.nodes++;
  for (std::size_t channel = 0; channel < simulator::MaxChannels; ++channel) {
    device.resistors.push_back({channel, housing, description.leakageOhm});
  }
  return device;
}

}  // namespace kxbench::proof
