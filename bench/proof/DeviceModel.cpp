#include "bench/proof/DeviceModel.h"

#include <cmath>
#include <limits>
#include <stdexcept>

#include "bench/proof/NumberWords.h"
#include "bench/wiring/ChannelNets.h"
#include "simulator/DescriptionLimits.h"
#include "simulator/TesterLayout.h"

namespace kxbench::proof {

namespace {

void AddNet(const TShortTestData& expectation, const diagnosis::Net& net, double netOhm,
            DeviceModel& device) {
  std::vector<Channel> spliced = {net.front()};
  for (std::size_t i = 1; i < net.size(); ++i) {
    const double known = expectation.GetR(net.front() - expectation.von, net[i] - expectation.von);
    if (known >= 0) {
      device.resistors.push_back({DeviceModel::NodeOf(net.front()), DeviceModel::NodeOf(net[i]), known});
    } else {
      spliced.push_back(net[i]);
    }
  }
  if (spliced.size() == 2) {
    device.resistors.push_back(
        {DeviceModel::NodeOf(spliced.front()), DeviceModel::NodeOf(spliced.back()), netOhm});
  } else if (spliced.size() > 2) {
    const std::size_t splice = device.nodes++;
    for (const Channel channel : spliced) {
      device.resistors.push_back({DeviceModel::NodeOf(channel), splice, netOhm / 2});
    }
  }
}

/// Calls `change` for each end of a resistor that is `node`.
template <typename Change>
void ForEndsAt(std::size_t node, std::vector<ModelResistor>& resistors, Change change) {
  for (ModelResistor& resistor : resistors) {
    if (resistor.a == node) change(resistor.a);
    if (resistor.b == node) change(resistor.b);
  }
}

void Exchange(std::size_t a, std::size_t b, DeviceModel& device) {
  const std::size_t between = device.nodes;  // no node has this number
  ForEndsAt(a, device.resistors, [&](std::size_t& end) { end = between; });
  ForEndsAt(b, device.resistors, [&](std::size_t& end) { end = a; });
  ForEndsAt(between, device.resistors, [&](std::size_t& end) { end = b; });
}

void Insert(std::size_t node, double ohm, DeviceModel& device) {
  const std::size_t joint = device.nodes++;
  ForEndsAt(node, device.resistors, [&](std::size_t& end) { end = joint; });
  device.resistors.push_back({node, joint, ohm});
}

std::string PointName(const DeviceModel& device, std::size_t node) {
  return node < device.channels ? std::to_string(node + 1) : "n" + std::to_string(node - device.channels);
}

}  // namespace

DeviceModel IdealDevice(const TShortTestData& expectation, double netOhm) {
  DeviceModel device;
  device.channels = static_cast<std::size_t>(expectation.AnzahlKarten()) * CardChannels;
  device.nodes = device.channels;
  for (const diagnosis::Net& net : wiring::NetsOf(expectation).nets) AddNet(expectation, net, netOhm, device);
  return device;
}

DeviceModel WithFault(const DeviceModel& device, const ProofFault& fault) {
  DeviceModel faulty = device;
  const std::size_t first = DeviceModel::NodeOf(fault.channels.front());
  const std::size_t last = DeviceModel::NodeOf(fault.channels.back());
  switch (fault.kind) {
    case FaultClass::Open:
      std::erase_if(faulty.resistors, [&](const ModelResistor& r) { return r.a == first || r.b == first; });
      break;
    case FaultClass::Short:
    case FaultClass::ResistiveShort:
      faulty.resistors.push_back({first, last, fault.ohm});
      break;
    case FaultClass::Swapped:
    case FaultClass::Misplaced:
      Exchange(first, last, faulty);
      break;
    case FaultClass::HighResistance:
      Insert(first, fault.ohm, faulty);
      break;
    case FaultClass::Voltage:
      faulty.sources.push_back({first, fault.volts,
                                fault.tauSeconds.value_or(std::numeric_limits<double>::infinity()),
                                SourceOhm});
      break;
    case FaultClass::Tester:
      faulty.stuck.push_back({first, fault.line, fault.staysClosed});
      break;
  }
  return faulty;
}

std::string DescriptionOf(const DeviceModel& device) {
  if (device.channels > simulator::MaxChannels) {
    throw std::length_error("a device description knows the channels 1 to " +
                            std::to_string(simulator::MaxChannels));
  }
  if (device.nodes - device.channels > simulator::MaxInnerNodes) {
    throw std::length_error("a device description knows " + std::to_string(simulator::MaxInnerNodes) +
                            " inner nodes");
  }
  std::string text = "cards " + std::to_string(device.channels / CardChannels) + "\n";
  if (device.contactOhm > 0) text += "contact-resistance " + ExactNumber(device.contactOhm) + "\n";
  for (std::size_t node = device.channels; node < device.nodes; ++node) {
    text += "node " + PointName(device, node) + "\n";
  }
  for (const ModelResistor& one : device.resistors) {
    text += "wire " + PointName(device, one.a) + " " + PointName(device, one.b) + " " + ExactNumber(one.ohm) +
            "\n";
  }
  for (const ModelSource& one : device.sources) {
    text += "charge " + PointName(device, one.node) + " " + ExactNumber(one.volts) + " tau " +
            (std::isinf(one.tauSeconds) ? "never" : ExactNumber(one.tauSeconds)) + " series " +
            ExactNumber(one.seriesOhm) + "\n";
  }
  for (const StuckContact& one : device.stuck) {
    text += (one.closed ? "stuck-closed " : "stuck-open ") + std::to_string(one.node + 1) + " " +
            std::to_string(one.line) + "\n";
  }
  return text;
}

}  // namespace kxbench::proof
