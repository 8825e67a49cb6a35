#include "benchmarks/InstantDriver.h"

#include <array>
#include <cstddef>
#include <cstdlib>

#include "contracts/BrenmorHWDevice.h"

namespace {

constexpr std::int32_t ChannelsPerCard = 48;
constexpr std::int32_t LineReset = 64;
constexpr std::int32_t CloseRelay = 128;
constexpr double OpenOhm = 1e9;
constexpr double WireOhm = 0.1;

// Which channels are on which line, and how many nets are on both.
class Relays {
 public:
  explicit Relays(std::vector<int> nets)
      : nets_(std::move(nets)), closed_{Flags(nets_.size()), Flags(nets_.size())} {
    int count = 0;
    for (const int net : nets_) count = net >= count ? net + 1 : count;
    onLine_ = {std::vector<int>(static_cast<std::size_t>(count)),
               std::vector<int>(static_cast<std::size_t>(count))};
  }

  void Write(std::int32_t address, std::int32_t value) {
    const auto line = static_cast<std::size_t>(address % 2);
    const std::int32_t firstOfCard = (address - 128) / 2 * ChannelsPerCard;
    if (value == LineReset) {
      for (std::int32_t i = 0; i < ChannelsPerCard; ++i) Switch(firstOfCard + i, line, false);
      return;
    }
    const std::int32_t relay = value & (LineReset - 1);
    if (relay >= ChannelsPerCard) return;
    const bool close = (value & CloseRelay) != 0;
    if (!close) ++releases_;
    Switch(firstOfCard + relay, line, close);
  }

  bool Connected() const { return shared_ > 0; }
  std::int64_t Releases() const { return releases_; }
  bool AllOpen() const { return closedCount_ == 0; }

 private:
  using Flags = std::vector<bool>;

  void Switch(std::int32_t channelIndex, std::size_t line, bool close) {
    const auto channel = static_cast<std::size_t>(channelIndex);
    if (channel >= nets_.size() || closed_[line][channel] == close) return;
    closed_[line][channel] = close;
    closedCount_ += close ? 1 : -1;
    const auto net = static_cast<std::size_t>(nets_[channel]);
    const bool before = onLine_[0][net] > 0 && onLine_[1][net] > 0;
    onLine_[line][net] += close ? 1 : -1;
    const bool after = onLine_[0][net] > 0 && onLine_[1][net] > 0;
    shared_ += static_cast<int>(after) - static_cast<int>(before);
  }

  std::vector<int> nets_;
  std::array<Flags, 2> closed_;
  std::array<std::vector<int>, 2> onLine_;  // by net: channels on the line
  int shared_ = 0;
  int closedCount_ = 0;
  std::int64_t releases_ = 0;
};

std::vector<int> CableOfOneCard() {
  std::vector<int> nets;
  for (int i = 0; i < ChannelsPerCard; ++i) nets.push_back(i % (ChannelsPerCard / 2));
  return nets;
}

Relays& Connected() {
  static Relays relays(CableOfOneCard());
  return relays;
}

}  // namespace

void instant::Connect(const std::vector<int>& nets) { Connected() = Relays(nets); }
std::int64_t instant::Releases() { return Connected().Releases(); }
bool instant::AllOpen() { return Connected().AllOpen(); }

std::int32_t brenmor_bus_write(std::int32_t address, std::int32_t /*reserved*/, std::int32_t value) {
  Connected().Write(address, value);
  return 0;
}

std::int32_t brenmor_relay_set(std::int32_t /*card*/, std::int32_t /*relay*/, std::int32_t /*state*/) {
  return 0;
}

std::int32_t brenmor_msu_write_relay(std::int32_t /*relay*/, std::int32_t /*mode*/) { return 1; }

// Voltages are 0. A resistance is asked for in range 1, where the driver reads Ohm.
double brenmor_adx_read(std::int32_t function, std::int32_t /*range*/, std::int32_t /*setting*/) {
  if (function == 8) return 0.0;
  return Connected().Connected() ? WireOhm : OpenOhm;
}

std::int32_t brenmor_adx_hw_generation() { return 2; }
std::int32_t brenmor_bus_get_error() { return 0; }
char* brenmor_bus_get_error_msg() { return nullptr; }
void brenmor_free_mem(void* memory) { std::free(memory); }
void brenmor_bus_delete_error() {}
