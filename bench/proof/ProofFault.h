#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/diagnosis/Nets.h"

namespace kxbench::proof {

using diagnosis::Channel;

/// What can be wrong with a device or, the last, with the tester; in the order of the report.
enum class FaultClass {
  Open,            ///< a contact is off its net
  Short,           ///< two nets are connected, with hardly any resistance
  ResistiveShort,  ///< the same with a resistance just below the upper threshold
  Swapped,         ///< two contacts of different nets are exchanged
  Misplaced,       ///< a contact's wire lies on an unused channel
  HighResistance,  ///< a contact has a resistance above the lower threshold
  Voltage,         ///< a net carries a voltage
  Tester,          ///< a relay never closes or never opens
};

inline constexpr FaultClass AllClasses[] = {
    FaultClass::Open,      FaultClass::Short,          FaultClass::ResistiveShort, FaultClass::Swapped,
    FaultClass::Misplaced, FaultClass::HighResistance, FaultClass::Voltage,        FaultClass::Tester};

/// The word for a class in programs' output: "open", "resistive-short".
std::string ClassWord(FaultClass kind);

/// One fault of a device that is good otherwise.
struct ProofFault {
  FaultClass kind = FaultClass::Open;

  /// Channel numbers. Open, HighResistance: the contact. Shorts: a contact of each net, the lower net's
  /// first. Swapped: the two contacts. Misplaced: the contact, then the unused channel. Voltage: a contact of
  /// the net. Tester: the relay's channel.
  std::vector<Channel> channels;

  double ohm = 0;                    ///< shorts and HighResistance
  double volts = 0;                  ///< Voltage
  std::optional<double> tauSeconds;  ///< Voltage: of a capacitor; none for a source that stays
  int line = 0;                      ///< Tester: 0 or 1
  bool staysClosed = false;          ///< Tester: the relay never opens; else it never closes

  bool operator==(const ProofFault&) const = default;
};

/// The fault as one line of words that FaultFromWords reads back exactly, for another process.
std::string FaultWords(const ProofFault& fault);

/// Reads it back; no value when the text is none.
std::optional<ProofFault> FaultFromWords(std::string_view words);

}  // namespace kxbench::proof
