#pragma once

#include <string>

#include "bench/results/Result.h"

namespace kxbench::results {

/// A device with one wire broken, and two nets expected.
inline Result BrokenWire() {
  Result result;
  result.id = "0f8b8c1e-2f4d-4c3a-9a53-2b1f0d6c7e11";
  result.started = std::chrono::sys_days(std::chrono::year(2026) / 11 / 22) + std::chrono::hours(8);
  result.seconds = 1.5;
  result.verdict = Verdict::Fail;
  result.serial = "SN-1";
  result.part = "4711";
  result.operatorName = "Eva";
  result.station = "bench 3";
  result.expectation = "adapter.dat";
  result.expectationSha256 = std::string(64, 'a');
  result.programVersion = "1.0";
  result.records = {{"fehlende Verbindung zwischen 1 und 3|0|-1|Ohm|10|0|",
                     "fehlende Verbindung zwischen 1 und 3", -1.0, 0.0, 10.0, "Ohm", true},
                    {"Verbindungstest|2|1||2||", "Verbindungstest", 1.0, 2.0, 2.0, "", true},
                    {"Kurzschlusstest|0|0||0||", "Kurzschlusstest", 0.0, 0.0, 0.0, "", false}};
  result.nets = {{{1, 3}, "1 (A-1), 3 (B-1)", {"fehlende Verbindung zwischen 1 und 3"}},
                 {{2, 4}, "2, 4", {}}};
  result.diagnosed = true;
  result.faults = {{"open", {3}, "open: 3 (B-1) has come off"}};
  return result;
}

/// The same, found good.
inline Result GoodDevice() {
  Result result = BrokenWire();
  result.verdict = Verdict::Pass;
  result.records = {{"Kurzschlusstest|0|0||0||", "Kurzschlusstest", 0.0, 0.0, 0.0, "", false}};
  for (ExpectedNet& net : result.nets) net.findings.clear();
  result.diagnosed = false;
  result.faults.clear();
  return result;
}

/// The error of a check whose tester was missing.
inline Result MissingTester() {
  Result result = GoodDevice();
  result.verdict = Verdict::Error;
  result.records.clear();
  result.error = "card 1 does not answer";
  return result;
}

/// What must not reach a page or a cell as it is.
inline constexpr char Hostile[] = "</td><script>alert(1)</script>\"'&\x01\x1b[31m\xff \xEF\xBF\xBF end";

/// A result of which every text is hostile.
inline Result HostileResult() {
  Result result = BrokenWire();
  for (std::string* text : {&result.serial, &result.part, &result.operatorName, &result.station,
                            &result.expectation, &result.programVersion, &result.pluginVersion,
                            &result.driver, &result.driverGeneration, &result.cards, &result.error}) {
    *text = Hostile;
  }
  for (ResultRecord& record : result.records) record.line = record.text = record.unit = Hostile;
  for (ExpectedNet& net : result.nets) {
    net.label = Hostile;
    net.findings = {Hostile};
  }
  for (ResultFault& fault : result.faults) fault.text = fault.kind = Hostile;
  return result;
}

}  // namespace kxbench::results
