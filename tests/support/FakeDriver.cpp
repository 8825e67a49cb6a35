#include "tests/support/FakeDriver.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <queue>

#include "contracts/BrenmorHWDevice.h"

namespace shorttest::testkit {
namespace {

constexpr int FirstAddress = 128;
constexpr int RelaysPerCard = 48;

FakeDriver* active = nullptr;

std::string Line(const char* name, std::initializer_list<std::int32_t> arguments) {
  std::string line = name;
  for (const std::int32_t argument : arguments) line += " " + std::to_string(argument);
  return line;
}

int AddressOf(int channel, int line) { return FirstAddress + (channel - 1) / RelaysPerCard * 2 + line; }

}  // namespace

FakeDriver::FakeDriver(CallLog& log) : log_(log), before_(active) { active = this; }

FakeDriver::~FakeDriver() {
  active = before_;
  for (void* text : texts_) std::free(text);
}

FakeDriver& FakeDriver::Active() {
  if (active == nullptr) {
    std::fputs("a driver function was called while no FakeDriver was there\n", stderr);
    std::abort();
  }
  return *active;
}

void FakeDriver::Wire(int channelA, int channelB, double ohm) {
  wires_[channelA][channelB] = ohm;
  wires_[channelB][channelA] = ohm;
}

void FakeDriver::Unwire(int channelA, int channelB) {
  wires_[channelA].erase(channelB);
  wires_[channelB].erase(channelA);
}

void FakeDriver::NextReadings(const std::vector<double>& readings) {
  nextReadings_.assign(readings.rbegin(), readings.rend());
}

void FakeDriver::FailAt(int k, const std::string& text, Fault fault) {
  failAt_ = k;
  failOn_ = false;
  fault_ = fault;
  faultText_ = text;
  failableCalls_ = 0;
}

void FakeDriver::FailFrom(int k, const std::string& text, Fault fault) {
  FailAt(k, text, fault);
  failOn_ = true;
}

// Counts a failable call. True when it must not do its work.
bool FakeDriver::Fails() {
  ++failableCalls_;
  const bool fails = failAt_ != 0 && (failOn_ ? failableCalls_ >= failAt_ : failableCalls_ == failAt_);
  if (fails) error_ = faultText_;
  return fails && fault_ == Fault::Dropped;
}

bool FakeDriver::Closed(int channel, int line) const {
  const auto found = closed_.find(AddressOf(channel, line));
  return found != closed_.end() && found->second.count((channel - 1) % RelaysPerCard) != 0;
}

bool FakeDriver::AuxiliaryClosed(int card, int line, int relay) const {
  const auto found = closed_.find(FirstAddress + 2 * card + line);
  return found != closed_.end() && found->second.count(relay) != 0;
}

bool FakeDriver::AllRelaysOpen() const {
  for (const auto& [address, relays] : closed_) {
    if (!relays.empty()) return false;
  }
  return true;
}

std::set<int> FakeDriver::ChannelsOn(int line) const {
  std::set<int> channels;
  for (const auto& [address, relays] : closed_) {
    if ((address - FirstAddress) % 2 != line) continue;
    for (const int relay : relays) {
      if (relay < RelaysPerCard) channels.insert((address - FirstAddress) / 2 * RelaysPerCard + relay + 1);
    }
  }
  return channels;
}

double FakeDriver::ResistanceOhm() const {
  const std::set<int> targets = ChannelsOn(1);
  using Reached = std::pair<double, int>;
  std::priority_queue<Reached, std::vector<Reached>, std::greater<>> queue;
  std::set<int> done;
  for (const int channel : ChannelsOn(0)) queue.push({0.0, channel});
  while (!queue.empty()) {
    const auto [ohm, channel] = queue.top();
    queue.pop();
    if (targets.count(channel) != 0) return ohm;
    if (!done.insert(channel).second) continue;
    if (const auto found = wires_.find(channel); found != wires_.end()) {
      for (const auto& [neighbour, wire] : found->second) queue.push({ohm + wire, neighbour});
    }
  }
  return openOhm_;
}

// The largest potential on the line; it loses its share by being measured.
double FakeDriver::PotentialOfLine(int line) {
  double volts = 0.0;
  for (const int channel : ChannelsOn(line)) {
    const auto found = potentials_.find(channel);
    if (found == potentials_.end()) continue;
    if (std::fabs(found->second.volts) > std::fabs(volts)) volts = found->second.volts;
    found->second.volts *= found->second.decay;
  }
  return volts;
}

double FakeDriver::Voltage() {
  const double line0 = PotentialOfLine(0);
  return line0 - PotentialOfLine(1);
}

std::int32_t FakeDriver::BusWrite(std::int32_t address, std::int32_t reserved, std::int32_t value) {
  log_.Add(Line("bus", {address, reserved, value}));
  if (Fails()) return 0;
  std::set<int>& relays = closed_[address];
  if (value == 64) {
    relays.clear();
  } else if ((value & 128) != 0) {
    relays.insert(value & 63);
  } else {
    relays.erase(value & 63);
  }
  return 0;
}

std::int32_t FakeDriver::RelaySet(std::int32_t card, std::int32_t relay, std::int32_t state) {
  log_.Add(Line("relay", {card, relay, state}));
  if (Fails()) return 0;
  if (state != 0) {
    singleRelays_.insert({card, relay});
  } else {
    singleRelays_.erase({card, relay});
  }
  return 0;
}

std::int32_t FakeDriver::Probe(std::int32_t relay, std::int32_t mode) {
  log_.Add(Line("probe", {relay, mode}));
  if (Fails()) return 0;
  if ((relay - 1) / RelaysPerCard < cards_) return 1;
  if (missingCardError_) error_ = missingCardError_;
  return 0;
}

double FakeDriver::Read(std::int32_t function, std::int32_t range, std::int32_t setting) {
  if (beforeReading_) beforeReading_();
  log_.Add(Line("read", {function, range, setting}));
  ++readings_;
  if (Fails()) return 0.0;
  if (allReadings_) return allReadings_(readings_);
  if (!nextReadings_.empty()) {
    const double reading = nextReadings_.back();
    nextReadings_.pop_back();
    return reading;
  }
  if (function == 8) return Voltage();
  return ResistanceOhm() / (range == 1 ? 1.0 : range <= 4 ? 1e3 : 1e6);
}

std::int32_t FakeDriver::ReadGeneration() {
  log_.Add("generation");
  return generation_;
}

std::int32_t FakeDriver::GetError() {
  log_.Add("error?");
  return error_ ? 7 : 0;
}

char* FakeDriver::GetErrorText() {
  log_.Add("text");
  if (nullText_) return nullptr;
  const std::string text = error_.value_or("");
  auto* const copy = static_cast<char*>(std::malloc(text.size() + 1));
  if (copy == nullptr) std::abort();
  std::memcpy(copy, text.c_str(), text.size() + 1);
  texts_.insert(copy);
  return copy;
}

void FakeDriver::Free(void* memory) {
  log_.Add("free");
  if (texts_.erase(memory) == 0) {
    ++foreignFrees_;
    return;
  }
  std::free(memory);
}

void FakeDriver::DeleteError() {
  log_.Add("clear");
  error_.reset();
}

}  // namespace shorttest::testkit

using shorttest::testkit::FakeDriver;

std::int32_t brenmor_bus_write(std::int32_t address, std::int32_t reserved, std::int32_t value) {
  return FakeDriver::Active().BusWrite(address, reserved, value);
}
std::int32_t brenmor_relay_set(std::int32_t card, std::int32_t relay, std::int32_t state) {
  return FakeDriver::Active().RelaySet(card, relay, state);
}
std::int32_t brenmor_msu_write_relay(std::int32_t relay, std::int32_t mode) {
  return FakeDriver::Active().Probe(relay, mode);
}
double brenmor_adx_read(std::int32_t function, std::int32_t range, std::int32_t setting) {
  return FakeDriver::Active().Read(function, range, setting);
}
std::int32_t brenmor_adx_hw_generation() { return FakeDriver::Active().ReadGeneration(); }
std::int32_t brenmor_bus_get_error() { return FakeDriver::Active().GetError(); }
char* brenmor_bus_get_error_msg() { return FakeDriver::Active().GetErrorText(); }
void brenmor_free_mem(void* memory) { FakeDriver::Active().Free(memory); }
void brenmor_bus_delete_error() { FakeDriver::Active().DeleteError(); }
