#pragma once

#include <charconv>
#include <cmath>
#include <string>

/// Words for expected traces, as the fakes log them. Each yields whole lines, so they are joined with +.

namespace shorttest::testkit {

inline std::string Bus(int address, int value) {
  return "bus " + std::to_string(address) + " 0 " + std::to_string(value) + "\n";
}

inline std::string ErrorQuery() { return "error?\n"; }
inline std::string ClearError() { return "clear\n"; }

/// An error is asked for, found, and its text taken and given back.
inline std::string ErrorTaken() { return "error?\ntext\nfree\n"; }

inline int BusAddress(int channel, int line) { return 128 + 2 * ((channel - 1) / 48) + line; }
inline int BusRelay(int channel) { return (channel - 1) % 48; }

inline std::string Connect(int channel, int line) {
  return Bus(BusAddress(channel, line), 128 + BusRelay(channel)) + ErrorQuery();
}

inline std::string Release(int channel, int line) {
  return Bus(BusAddress(channel, line), BusRelay(channel)) + ErrorQuery() + "wait 1000 us\n";
}

inline std::string PrepareAfterReset(int cards) {
  std::string calls;
  for (int card = 0; card < cards; ++card) {
    const int line0 = 128 + 2 * card;
    const int line1 = 129 + 2 * card;
    calls += Bus(line0, 64) + Bus(line0, 176) + Bus(line0, 178);
    calls += Bus(line1, 64) + Bus(line1, 177) + Bus(line1, 179) + ErrorQuery();
  }
  return calls;
}

inline std::string PrepareWithoutReset(int cards) {
  std::string calls;
  for (int card = 0; card < cards; ++card) {
    const int line0 = 128 + 2 * card;
    const int line1 = 129 + 2 * card;
    calls += Bus(line0, 176) + Bus(line0, 178) + Bus(line1, 177) + Bus(line1, 179) + ErrorQuery();
  }
  return calls;
}

inline std::string ReleaseAll(int cards) {
  std::string calls;
  for (int card = 0; card < cards; ++card) calls += Bus(128 + 2 * card, 64) + Bus(129 + 2 * card, 64);
  return calls;
}

/// Card and relay as the driver counts them, from 0.
inline std::string TerminationOn(int card, int relay) {
  return "relay " + std::to_string(card) + " " + std::to_string(relay) + " 1\n" + ErrorQuery();
}
inline std::string TerminationOff(int card, int relay) {
  return "relay " + std::to_string(card) + " " + std::to_string(relay) + " 0\n";
}

/// A whole resistance measurement of this many readings.
inline std::string Resistance(int range, int readings) {
  std::string calls;
  for (int i = 0; i < readings; ++i) calls += "read 10 " + std::to_string(range) + " 2\n";
  return calls + ErrorQuery();
}

/// A reading below the settling tolerance is believed at once; any other takes a second one.
inline std::string LowResistance(int range = 1) { return Resistance(range, 1); }
inline std::string HighResistance(int range = 1) { return Resistance(range, 2); }

inline std::string Voltage() { return "read 8 2 20\n" + ErrorQuery(); }

/// A position as text that tells any two doubles apart.
inline std::string ExactText(double value) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, value);
  return {text, end.ptr};
}

/// A call of the progress function handed to a procedure.
inline std::string Progress(double position) { return "progress " + ExactText(position) + "\n"; }

/// The check's progress on a dialog whose bar has this range.
inline constexpr int FineBar = 1'000'000;
inline std::string Bar(double position, int maximum = FineBar) {
  return "messages\nbar " + std::to_string(std::lrint(position * maximum)) + "\n";
}
/// The check's progress when the user has cancelled.
inline std::string Stopped() { return "messages\n"; }

}  // namespace shorttest::testkit
