#pragma once

#include <string>
#include <vector>

#include "bench/program/check/DeviceDiagnosis.h"
#include "bench/program/host/Record.h"

namespace kxbench {

/// The diagnosis of what the records of a check show, without a device. What they do not show is among the
/// gaps: a check that ended at its limit of findings, or at a voltage, has not measured the rest; a record of
/// a short circuit names a whole net, not the part of a broken one that is shorted. Throws Failure when the
/// records do not belong to the expectation.
DeviceDiagnosis DiagnosisOfRecords(const std::vector<Record>& records, const wiring::ExpectationFacts& facts,
                                   diagnosis::Observation observation);

/// The records in a text, a line each. Lines without a '|' are skipped.
std::vector<Record> RecordsIn(const std::string& text);

}  // namespace kxbench
