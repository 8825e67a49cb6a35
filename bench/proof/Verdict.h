#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kxbench::proof {

/// Why a check does not find a fault.
enum class EscapeReason : std::uint8_t {
  Excluded,           ///< the pair is excluded
  Unknown,            ///< the expectation does not say whether the pair is connected
  Suspended,          ///< a channel is suspended
  NotInExpectation,   ///< a channel is not in the expectation's range
  Threshold,          ///< the fault's resistance lies on the wrong side of a threshold
  ErrorLimit,         ///< MAX ERROR ends the check before, or lets no finding through
  VoltageControlOff,  ///< voltages are not measured
  Limits,             ///< the procedure itself cannot see it
};

inline constexpr EscapeReason AllReasons[] = {EscapeReason::Excluded,          EscapeReason::Unknown,
                                              EscapeReason::Suspended,         EscapeReason::NotInExpectation,
                                              EscapeReason::Threshold,         EscapeReason::ErrorLimit,
                                              EscapeReason::VoltageControlOff, EscapeReason::Limits};

/// "excluded", "voltage-control-off".
std::string ReasonWord(EscapeReason reason);

/// No value for any other text.
std::optional<EscapeReason> ReasonFromWord(std::string_view word);

/// A rule of docs/limits.md: the name of its place there. Null for none.
using LimitName = const char*;
inline constexpr LimitName PositiveFirstLimit = "positive-on-first";
inline constexpr LimitName NegativeLimit = "negative-voltage";
inline constexpr LimitName FarEndLimit = "far-end-short";
inline constexpr LimitName NeverClosesLimit = "never-closes";
inline constexpr LimitName NeverOpensLimit = "never-opens";
inline constexpr LimitName DevicesLimit = "defects-of-the-device";

/// Why a fault escapes, found out by changing one thing after the other until it is found.
struct Escape {
  EscapeReason reason = EscapeReason::Limits;
  std::optional<double> ohm;  ///< Threshold: the fault's resistance at which it would just be found
  std::string limit;          ///< Limits: the name of the rule's place in docs/limits.md

  bool operator==(const Escape&) const = default;
};

/// What would close it: one clause, without a full stop.
std::string RemedyFor(const Escape& escape);

/// How the diagnosis of a finding's records names the fault.
enum class Naming : std::uint8_t { Exactly, AmongEquals, Wrongly, NotAsked };

/// "exactly", "among equals".
std::string NamingText(Naming naming);

/// What the check of one fault ended with.
struct Verdict {
  bool found = false;
  bool namesChannels = false;  ///< found: the records name the fault's channels
  Naming naming = Naming::NotAsked;
  double seconds = 0;            ///< that the waits of this check take on a real tester
  std::optional<Escape> escape;  ///< not found, with the reason where one was asked for
};

/// The verdict as one line of words, for another process; read back, no value when it is none.
std::string VerdictWords(const Verdict& verdict);
std::optional<Verdict> VerdictFromWords(const std::string& words);

}  // namespace kxbench::proof
