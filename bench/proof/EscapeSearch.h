#pragma once

#include <functional>
#include <optional>

#include "bench/proof/DeviceModel.h"
#include "bench/proof/ProofFault.h"
#include "bench/proof/Verdict.h"
#include "plugin/data/ShorttestData.h"

namespace kxbench::proof {

/// Whether a check of the device with the expectation has a finding that the good device has not.
using Finds = std::function<bool(const TShortTestData& expectation, const DeviceModel& device)>;

/// Why the check with `expectation` does not find `fault` in `device`. One thing after the other is changed,
/// in the expectation or in the fault, and the check is run again: what makes it find the fault is the
/// reason. Where only several changes together do, the reason is the first that cannot be left out. REQUIRES:
/// `finds` gives false for both as they are.
Escape ReasonOf(const ProofFault& fault, const TShortTestData& expectation, const DeviceModel& device,
                const Finds& finds);

/// The resistance at which `found` changes, Ohm, to a thousandth of it: the highest at which it is true when
/// `belowIsFound`, else the lowest. No value when it does not change between `low` and `high`.
/// REQUIRES: 0 < low < high.
std::optional<double> TurningPoint(double low, double high, bool belowIsFound,
                                   const std::function<bool(double ohm)>& found);

/// By how much a joint's resistance may grow before a check finds it; none when it never does.
std::optional<double> LargestJoint(Channel contact, const TShortTestData& expectation,
                                   const DeviceModel& device, const Finds& finds);

/// How low the insulation between two channels may sink before a check finds it; none when it never does.
std::optional<double> SmallestInsulation(Channel a, Channel b, const TShortTestData& expectation,
                                         const DeviceModel& device, const Finds& finds);

}  // namespace kxbench::proof
