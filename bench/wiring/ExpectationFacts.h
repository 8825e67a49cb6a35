#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "bench/wiring/ChannelNets.h"

namespace kxbench::wiring {

/// Channels that a tester can have: 64 cards of 48.
inline constexpr std::int32_t MostChannels = 3072;

/// What an expectation file holds, and how far it can be trusted. The plug-in reads any file as it stands, so
/// that a damaged one expects less than it should; whoever checks with a file looks at these first.
struct ExpectationFacts {
  /// Why nothing can be checked with the file; empty when it can. One clause, without the file's name.
  std::string refusal;

  /// Why less may be checked than was meant; a clause each. Empty for a refused file.
  std::vector<std::string> doubts;

  /// Why the file must not be built upon: the refusal, or what shows that part of it is lost or damaged.
  /// Empty for a whole file.
  std::string damage;

  // What follows is as the plug-in reads it, and empty for a refused file.

  std::int32_t firstChannel = 0;
  std::int32_t lastChannel = 0;
  ChannelNets nets;
  std::int64_t pairs = 0;  ///< of different channels, in use or not
  std::int64_t connectedPairs = 0;
  std::int64_t unknownPairs = 0;
  std::int64_t strangeCells = 0;                                     ///< that hold no state
  std::vector<std::pair<std::int32_t, std::int32_t>> excludedPairs;  ///< the lower channel first

  double lowerThreshold_ohm = 0;
  double upperThreshold_ohm = 0;
  std::int32_t voltageControl = 0;    ///< 0 none, 1 measured, 2 discharged too
  std::int32_t dischargeWait_ms = 0;  ///< longest
  std::int32_t terminationCard = 0;   ///< from 1; 0 or below: none
  std::int32_t terminationRelay = 0;  ///< from 1; 0 or below: none
  std::int32_t mostErrors = 0;
};

/// Looks at the file `utf8Path` (relative names are taken against the current directory). Throws
/// std::system_error when it cannot be opened or read; no content makes it throw.
ExpectationFacts FactsOf(const std::string& utf8Path);

}  // namespace kxbench::wiring
