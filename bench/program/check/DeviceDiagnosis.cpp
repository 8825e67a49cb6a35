#include "bench/program/check/DeviceDiagnosis.h"

#include <map>
#include <utility>

#include "bench/program/host/DeviceHint.h"
#include "bench/program/system/DynamicLibrary.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"
#include "bench/wiring/Contacts.h"

namespace kxbench {

diagnosis::Observation ExpectedOnly(const wiring::ExpectationFacts& facts,
                                    const wiring::ChannelNames& names) {
  diagnosis::Observation observation;
  observation.expected = facts.nets.nets;
  for (const std::int32_t channel : facts.nets.unconnected) observation.expected.push_back({channel});
  std::map<std::int32_t, std::string> named;
  for (const std::int32_t channel : diagnosis::ChannelsOf(observation.expected)) {
    std::string name = names.Name(channel);
    if (!name.empty()) named.emplace(channel, std::move(name));
  }
  observation.contacts = wiring::ContactsOf(named);
  observation.lowerThresholdOhm = facts.lowerThreshold_ohm;
  return observation;
}

DeviceDiagnosis DiagnosisOf(const MeasureSummary& summary, diagnosis::Observation observation) {
  DeviceDiagnosis result;
  if (!summary.charged.empty()) {
    // As a check says it: the first channel that carries one, of the first two the lower.
    const SuspendedChannel& first = summary.charged.front();
    result.voltages.push_back(diagnosis::VoltageFault(first.channel, first.volts));
    result.faults.expected = diagnosis::Ordered(std::move(observation.expected));
    return result;
  }
  observation.measured = summary.nets;
  for (const std::int32_t channel : summary.unconnected) observation.measured.push_back({channel});
  for (const MeasuredResistance& pair : summary.resistances) {
    observation.resistances.push_back({pair.lower, pair.higher, pair.ohm, std::nullopt});
  }
  result.faults = diagnosis::Diagnose(observation);
  return result;
}

DeviceDiagnosis DiagnosisOfGoodDevice(diagnosis::Observation observation) {
  observation.measured = observation.expected;
  DeviceDiagnosis result;
  result.faults = diagnosis::Diagnose(observation);
  return result;
}

MeasureSummary MeasureThroughModule(const CommonOptions& common, const std::string& file,
                                    const std::function<void()>& measured) {
  const DynamicLibrary module("the learn module",
                              ProgramFolder() / LibraryFileName("kxlearn", LibraryPrefix::Lib));
  const auto measure = module.Find<KxMeasure>(KxMeasureName);
  if (measure == nullptr) {
    throw Failure(Utf8FromPath(module.File()) + " cannot measure: it does not export " + KxMeasureName);
  }
  MeasureSummary summary;
  measure(file, summary);
  if (summary.end == MeasureEnd::Failed) {
    throw Failure("diagnose " + file + ": " + WithDeviceHint(summary.failure, common.device));
  }
  measured();
  return summary;
}

}  // namespace kxbench
