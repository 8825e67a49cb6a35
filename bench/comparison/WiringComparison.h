#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bench/diagnosis/Diagnosis.h"
#include "bench/diagnosis/FaultText.h"
#include "bench/documents/Wiring.h"

namespace kxbench::comparison {

/// Of channels, the lower first, ascending.
using ChannelPairs = std::vector<std::pair<std::int32_t, std::int32_t>>;

/// One of the two sides of a comparison.
struct ComparedSide {
  std::string name;          ///< the file, as the user named it
  documents::Wiring wiring;  ///< of a document without a map: numbered from 1 in its own order
  bool hasChannels = true;
  bool isExpectation = false;
  ChannelPairs unknownPairs;                  ///< of an expectation: neither connected nor open nor excluded
  ChannelPairs contradictoryPairs;            ///< of an expectation: open, though its connections join them
  std::map<std::int32_t, std::string> names;  ///< of channels; those without may be missing
};

/// What one side says of a channel, or of a pair, and the other does not.
struct OneSided {
  std::vector<std::string> a;
  std::vector<std::string> b;
  bool Any() const { return !a.empty() || !b.empty(); }
};

/// Numbers of pairs that one side tests less than the other, or cannot have meant.
struct PairCounts {
  std::size_t a = 0;
  std::size_t b = 0;
  bool Any() const { return a > 0 || b > 0; }
};

/// How a harness A, the sample, differs from B, what it should be.
struct WiringComparison {
  std::string a;
  std::string b;
  bool byChannel = true;        ///< else pin by pin
  diagnosis::Diagnosis faults;  ///< expected: B, measured: A; in `label`'s channels
  std::map<std::int32_t, std::string> labels;
  std::map<std::int32_t, std::string> shortLabels;
  OneSided suspended;  ///< tested by the other side alone
  OneSided excluded;   ///< pairs that are not tested to be open
  OneSided only;  ///< known to one side alone, and what is connected there or tested by both expectations
  OneSided onlySingle;       ///< known to one side alone and connected to nothing there: no difference
  PairCounts unknown;        ///< unknown to one side alone
  PairCounts contradictory;  ///< contradictory on one side alone

  bool Equal() const {
    return faults.findings.empty() && !suspended.Any() && !excluded.Any() && !only.Any() && !unknown.Any() &&
           !contradictory.Any();
  }
};

/// Compares channel by channel where both sides have channels, else pin by pin: by PinText, as pin 3.3 of
/// connector X1 and pin 3 of connector X1.3 cannot be told apart in the name of a channel. Suspended channels
/// of either side are left out of the nets of both. A pin or channel that one side does not know is a
/// difference where the other connects it, or where both are expectations, which then test different
/// channels; a pin that a document merely lists is none.
WiringComparison Compare(const ComparedSide& a, const ComparedSide& b);

/// The comparison to read, and as one JSON object and a line end; docs/documents.md describes it.
std::string ComparisonReport(const WiringComparison& comparison);
std::string ComparisonJson(const WiringComparison& comparison);

}  // namespace kxbench::comparison
