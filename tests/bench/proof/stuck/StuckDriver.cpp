#include <array>
#include <bitset>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <limits>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>

#include "contracts/BrenmorHWDevice.h"

/// A driver of a tester with defects, without any physics but what is connected with what. STUCK_TESTER says
/// in words how it is: "cards 1 2 4" (that answer), "open CHANNEL LINE", "closed CHANNEL LINE" (a relay that
/// never closes, never opens), "wire A B", "volts CHANNEL VOLTS"; a semicolon ends each. When it is unloaded
/// it writes the number of relays whose coils are on into the file STUCK_LOG.

namespace {

constexpr std::size_t Cards = 5;
constexpr std::size_t ChannelsPerCard = 48;
constexpr std::size_t Channels = Cards * ChannelsPerCard;
constexpr std::size_t Lines = 2;
constexpr std::int32_t FirstAddress = 128;
constexpr std::int32_t ResetLine = 64;
constexpr std::int32_t CloseBit = 128;

constexpr double PathOhm = 0.37;
constexpr double OffsetVolts = 0.018;
constexpr double Overload = 9.9e9;  // whatever the range

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

class StuckTester {
 public:
  StuckTester() {
    std::istringstream statements(Variable("STUCK_TESTER"));
    for (std::string statement; std::getline(statements, statement, ';');) Understand(statement);
  }

  ~StuckTester() {
    std::size_t on = 0;
    for (const auto& line : coils_) on += line.count();
    std::ofstream(Variable("STUCK_LOG"), std::ios::app | std::ios::binary) << "closed " << on << "\n";
  }

  /// `card` from 0.
  bool HasCard(std::size_t card) const { return cards_.contains(card); }

  void Write(std::int32_t address, std::int32_t value) {
    const auto place = static_cast<std::size_t>(address - FirstAddress);
    if (!HasCard(place / Lines)) return Fail("no such card");
    if (value == ResetLine) {
      coils_.at(place).reset();
    } else {
      coils_.at(place).set(static_cast<std::size_t>(value % ResetLine), value >= CloseBit);
    }
  }

  void Fail(const std::string& text) { error_ = error_.empty() ? text : error_; }

  double Ohm() {
    return Join() ? PathOhm + (++reading_ % 3) * 0.01 : std::numeric_limits<double>::infinity();
  }

  double Volts() {
    if (Join()) return OffsetVolts;
    return OffsetVolts + VoltsOn(0) - VoltsOn(1);
  }

  std::string error_;

 private:
  // Nodes: the two lines, each card's pieces of them, the channels. All from 0.
  static constexpr std::size_t PieceNode(std::size_t card, std::size_t line) {
    return Lines + Lines * card + line;
  }
  static constexpr std::size_t ChannelNode(std::size_t channel) { return Lines + Lines * Cards + channel; }
  static constexpr std::size_t Nodes = Lines + Lines * Cards + Channels;

  void Understand(const std::string& statement) {
    std::istringstream words(statement);
    std::string word;
    words >> word;
    if (word == "cards") {
      cards_.clear();
      for (std::size_t card = 0; words >> card;) cards_.insert(card - 1);
      return;
    }
    std::size_t channel = 0;
    words >> channel;
    --channel;
    if (word == "volts") {
      words >> volts_[channel];
      return;
    }
    std::size_t second = 0;
    words >> second;
    if (word == "open") open_.insert({channel, second});
    if (word == "closed") closed_.insert({channel, second});
    if (word == "wire") wires_.insert({channel, second - 1});
  }

  std::size_t NetOf(std::size_t node) const {
    while (net_.at(node) != node) node = net_.at(node);
    return node;
  }
  void Connect(std::size_t a, std::size_t b) { net_.at(NetOf(a)) = NetOf(b); }

  bool IsClosed(std::size_t channel, std::size_t line) const {
    if (open_.contains({channel, line})) return false;
    const std::size_t place = Lines * (channel / ChannelsPerCard) + line;
    return closed_.contains({channel, line}) || coils_.at(place).test(channel % ChannelsPerCard);
  }

  /// Finds out what is one net; returns whether the two lines are.
  bool Join() {
    for (std::size_t node = 0; node < Nodes; ++node) net_.at(node) = node;
    for (const auto& [a, b] : wires_) Connect(ChannelNode(a), ChannelNode(b));
    for (const std::size_t card : cards_) {
      for (std::size_t line = 0; line < Lines; ++line) {
        const auto& coils = coils_.at(Lines * card + line);
        if (coils.test(48 + line) && coils.test(50 + line)) Connect(PieceNode(card, line), line);
      }
    }
    for (std::size_t channel = 0; channel < Channels; ++channel) {
      for (std::size_t line = 0; line < Lines; ++line) {
        if (!IsClosed(channel, line)) continue;
        Connect(ChannelNode(channel), PieceNode(channel / ChannelsPerCard, line));
      }
    }
    return NetOf(0) == NetOf(1);
  }

  double VoltsOn(std::size_t line) const {
    for (const auto& [channel, volts] : volts_) {
      if (NetOf(ChannelNode(channel)) == NetOf(line)) return volts;
    }
    return 0;
  }

  using Relay = std::pair<std::size_t, std::size_t>;  // channel, line

  std::set<std::size_t> cards_ = {0, 1};
  std::set<Relay> open_;
  std::set<Relay> closed_;
  std::set<std::pair<std::size_t, std::size_t>> wires_;
  std::map<std::size_t, double> volts_;
  std::array<std::bitset<64>, Lines * Cards> coils_{};
  std::array<std::size_t, Nodes> net_{};
  int reading_ = 0;
};

StuckTester tester;

}  // namespace

std::int32_t brenmor_bus_write(std::int32_t address, std::int32_t, std::int32_t value) {
  tester.Write(address, value);
  return 0;
}

std::int32_t brenmor_relay_set(std::int32_t, std::int32_t, std::int32_t) {
  tester.Fail("no terminating resistor");
  return 0;
}

std::int32_t brenmor_msu_write_relay(std::int32_t relay, std::int32_t) {
  if (tester.HasCard(static_cast<std::size_t>(relay - 1) / ChannelsPerCard)) return 1;
  tester.Fail("no answer");
  return 0;
}

double brenmor_adx_read(std::int32_t function, std::int32_t range, std::int32_t) {
  if (function == 8) return tester.Volts();
  constexpr std::array<double, 7> Unit = {1, 1, 1e3, 1e3, 1e3, 1e6, 1e6};
  const double ohm = tester.Ohm();
  return std::isfinite(ohm) ? ohm / Unit.at(static_cast<std::size_t>(range)) : Overload;
}

std::int32_t brenmor_adx_hw_generation() { return 2; }

std::int32_t brenmor_bus_get_error() { return tester.error_.empty() ? 0 : 1; }

char* brenmor_bus_get_error_msg() {
  char* const text = static_cast<char*>(std::malloc(tester.error_.size() + 1));
  if (text != nullptr) std::memcpy(text, tester.error_.c_str(), tester.error_.size() + 1);
  return text;
}

void brenmor_free_mem(void* memory) { std::free(memory); }

void brenmor_bus_delete_error() { tester.error_.clear(); }
