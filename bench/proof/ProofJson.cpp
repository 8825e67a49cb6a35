#include <nlohmann/json.hpp>

#include "bench/proof/Proof.h"

namespace kxbench::proof {

namespace {

using Json = nlohmann::ordered_json;

Json OhmOrNull(const std::optional<double>& ohm) { return ohm ? Json(*ohm) : Json(nullptr); }

Json ClassesOf(const Proof& proof) {
  Json classes = Json::array();
  for (const ClassCount& count : proof.Classes()) {
    Json one;
    one["class"] = ClassWord(count.kind);
    one["total"] = count.total;
    one["simulated"] = count.simulated;
    one["found"] = count.found;
    one["escaped"] = count.escaped;
    one["definition"] = ClassDefinition(count.kind, proof.facts);
    one["channelsMissing"] = count.misnamed;
    for (const Naming naming : {Naming::Exactly, Naming::AmongEquals, Naming::Wrongly}) {
      const auto named = count.namings.find(naming);
      one["named"][NamingText(naming)] = named == count.namings.end() ? 0 : named->second;
    }
    classes.push_back(std::move(one));
  }
  return classes;
}

Json EscapesOf(const Proof& proof) {
  Json escapes = Json::array();
  for (const ProvedFault& one : proof.faults) {
    if (!one.verdict || !one.verdict->escape) continue;
    const Escape& escape = *one.verdict->escape;
    Json entry;
    entry["class"] = ClassWord(one.fault.kind);
    entry["channels"] = one.fault.channels;
    if (one.fault.kind == FaultClass::Voltage) entry["volts"] = one.fault.volts;
    if (one.fault.kind == FaultClass::Tester) {
      entry["line"] = one.fault.line;
      entry["defect"] = one.fault.staysClosed ? "never-opens" : "never-closes";
    }
    entry["reason"] = ReasonWord(escape.reason);
    entry["remedy"] = RemedyFor(escape);
    if (escape.ohm) entry["foundAtOhm"] = *escape.ohm;
    if (!escape.limit.empty()) entry["limit"] = "docs/limits.md#" + escape.limit;
    escapes.push_back(std::move(entry));
  }
  return escapes;
}

Json SensitivityOf(const Proof& proof) {
  Json nets = Json::array();
  for (const NetSensitivity& one : proof.sensitivity) {
    Json net;
    net["net"] = one.net;
    net["largestJointOhm"] = OhmOrNull(one.largestJoint);
    net["smallestInsulationOhm"] = OhmOrNull(one.smallestInsulation);
    nets.push_back(std::move(net));
  }
  return nets;
}

}  // namespace

std::string ProofJson(const Proof& proof) {
  Json document;
  document["format"] = "proof";
  document["version"] = 1;
  document["complete"] = proof.complete;
  document["expectation"]["file"] = proof.file;
  document["expectation"]["sha256"] = proof.sha256;
  document["date"] = proof.date;
  document["program"] = proof.programVersion;
  document["thresholds"]["lowerOhm"] = proof.facts.lowerThreshold_ohm;
  document["thresholds"]["upperOhm"] = proof.facts.upperThreshold_ohm;
  document["seed"] = proof.seed;
  document["goodDevice"]["description"] = proof.device.empty() ? Json(nullptr) : Json(proof.device);
  document["goodDevice"]["netOhm"] = proof.device.empty() ? Json(proof.netOhm) : Json(nullptr);
  document["goodDevice"]["passes"] = proof.goodFindings.empty();
  document["goodDevice"]["findings"] = proof.goodFindings;
  document["classes"] = ClassesOf(proof);
  document["escapes"] = EscapesOf(proof);
  document["capacitors"]["simulated"] = proof.capacitors;
  document["capacitors"]["reported"] = proof.falseAlarms.size();
  document["sensitivity"] = SensitivityOf(proof);
  if (proof.advice) {
    document["suggested"]["margin"] = proof.advice->margin;
    document["suggested"]["lowerOhm"] = OhmOrNull(proof.advice->lowerOhm);
    document["suggested"]["upperOhm"] = OhmOrNull(proof.advice->upperOhm);
    document["suggested"]["moreFound"] = proof.advice->moreFound;
  }
  if (proof.throughPlugin > 0) {
    document["throughPlugin"]["checked"] = proof.throughPlugin;
    document["throughPlugin"]["different"] = proof.pluginDifferences.size();
  }
  document["secondsOnATester"] = proof.RealSeconds();
  document["notCovered"] = NotCovered();
  return document.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace kxbench::proof
