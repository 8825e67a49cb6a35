#include "benchmarks/Devices.h"

#include <cstddef>

namespace devices {
namespace {

template <typename NetOf>
Nets Make(std::int32_t channels, NetOf netOf) {
  Nets nets;
  for (std::int32_t i = 0; i < channels; ++i) nets.push_back(netOf(i));
  return nets;
}

}  // namespace

Nets Cable(std::int32_t channels) {
  return Make(channels, [=](std::int32_t i) { return i % (channels / 2); });
}

Nets OneNet(std::int32_t channels) {
  return Make(channels, [](std::int32_t) { return 0; });
}

Nets TwoNets(std::int32_t channels) {
  return Make(channels, [=](std::int32_t i) { return i / (channels / 2); });
}

TShortTestData Expectation(const Nets& nets) {
  const auto channels = static_cast<std::int32_t>(nets.size());
  TShortTestData data(1, channels);
  for (std::int32_t i = 0; i < channels; ++i) {
    for (std::int32_t j = 0; j < i; ++j) {
      const bool connected = nets[static_cast<std::size_t>(i)] == nets[static_cast<std::size_t>(j)];
      data.SetC(i, j, connected ? CellState::Connected : CellState::NotConnected, NoResistance);
    }
  }
  return data;
}

}  // namespace devices
