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

/// One of the two sides of a comparison.
struct ComparedSide {
  std::string name;          ///< the file, as the user named it
  documents::Wiring wiring;  ///< of a document without a map: numbered from 1 in its own order
  bool hasChannels = true;
  bool isExpectation = false;
  std::int64_t unknownPairs = 0;              ///< of an expectation: neither connected nor open
  std::map<std::int32_t, std::string> names;  ///< of channels; those without may be missing
};

/// What one side says of a channel, or of a pair, and the other does not.
struct OneSided {
  std::vector<std::string> a;
  std::vector<std::string> b;
  bool Any() const { return !a.empty() || !b.empty(); }
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
  OneSided onlySingle;  ///< known to one side alone and connected to nothing there: no difference
  std::int64_t unknownA = 0;
  std::int64_t unknownB = 0;

  bool Equal() const {
    return faults.findings.empty() && !suspended.Any() && !excluded.Any() && !only.Any() &&
           unknownA == unknownB;
  }
};

/// Compares channel by channel where both sides have channels, else pin by pin. Suspended channels of either
/// side are left out of the nets of both. A pin or channel that one side does not know is a difference where
/// the other connects it, or where both are expectations, which then test different channels; a pin that a
/// document merely lists is none.
WiringComparison Compare(const ComparedSide& a, const ComparedSide& b);

/// The comparison to read, and as one JSON object and a line end; docs/documents.md describes it.
std::string ComparisonReport(const WiringComparison& comparison);
std::string ComparisonJson(const WiringComparison& comparison);

}  // namespace kxbench::comparison
