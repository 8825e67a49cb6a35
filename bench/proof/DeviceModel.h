#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "bench/proof/ProofFault.h"
#include "plugin/data/ShorttestData.h"

namespace kxbench::proof {

/// Channels of a relay card.
inline constexpr std::size_t CardChannels = 48;

/// A resistor between two nodes of a DeviceModel.
struct ModelResistor {
  std::size_t a;
  std::size_t b;
  double ohm;  ///< 0 or more
};

/// A charge of one node against the tester's ground: volts * exp(-t / tauSeconds).
struct ModelSource {
  std::size_t node;
  double volts;
  double tauSeconds;  ///< infinite for a source that stays
  double seriesOhm;   ///< above 0
};

/// A channel's relay whose contact does not follow its coil.
struct StuckContact {
  std::size_t node;  ///< the channel's
  int line;
  bool closed;
};

/// A device as the simulated tester of a proof has it connected, on as many cards as its channels need.
/// Nodes 0 to `channels` - 1 are the channels 1 to `channels` of the tester, the others lie within the
/// device.
struct DeviceModel {
  std::size_t channels = 0;
  std::size_t nodes = 0;
  std::vector<ModelResistor> resistors;
  std::vector<ModelSource> sources;
  std::vector<StuckContact> stuck;
  double contactOhm = 0;  ///< of each closed relay

  static std::size_t NodeOf(Channel channel) { return static_cast<std::size_t>(channel) - 1; }
};

/// Resistance between any two contacts of a net of the ideal device, Ohm, where the expectation knows none:
/// that of a usual wire of a device description.
inline constexpr double UsualNetOhm = 0.1;

/// Series resistance of a voltage's source, Ohm.
inline constexpr double SourceOhm = 0.1;

/// The device that the expectation describes: each net meets in a splice, `netOhm` between any two of its
/// contacts; a resistance that `expectation` knows between a net's first contact and another is a wire.
DeviceModel IdealDevice(const TShortTestData& expectation, double netOhm = UsualNetOhm);

/// The device with the fault. REQUIRES: its channels are among the model's.
DeviceModel WithFault(const DeviceModel& device, const ProofFault& fault);

/// The device in the language of docs/device-description.md. Throws std::length_error for one of more
/// channels or inner nodes than that knows.
std::string DescriptionOf(const DeviceModel& device);

}  // namespace kxbench::proof
