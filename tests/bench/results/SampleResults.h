#pragma once

#include <string>

#include "bench/results/Result.h"

/// A check that passed, as a station sees it.
inline kxbench::results::Result PassedCheck(const std::string& serial, int minute = 0) {
  using namespace std::chrono;
  kxbench::results::Result result;
  result.id = kxbench::results::NewId();
  result.started = sys_days(year(2026) / 3 / 14) + hours(8) + minutes(minute) + milliseconds(125);
  result.seconds = 2.5;
  result.verdict = kxbench::results::Verdict::Pass;
  result.serial = serial;
  result.part = "W-100";
  result.operatorName = "Jäger";
  result.station = "bench 1";
  result.expectation = "w100.dat";
  result.expectationSha256 = std::string(64, 'a');
  result.programVersion = "0.1.0";
  result.pluginVersion = "ShortTest 1";
  result.driver = "libBrenmorHWDevice.so";
  result.driverGeneration = "2";
  result.cards = "4";
  result.records = {{"Kurzschlusstest|0|0||0||", "Kurzschlusstest", 0.0, std::nullopt, 0.0, "", false}};
  result.diagnosed = true;
  return result;
}

/// One that found a wire open.
inline kxbench::results::Result FailedCheck(const std::string& serial, int minute = 0) {
  kxbench::results::Result result = PassedCheck(serial, minute);
  result.verdict = kxbench::results::Verdict::Fail;
  result.records.push_back(
      {"Verbindung 1-14|1E6|10||Ohm||", "Verbindung 1-14", 1e6, std::nullopt, 10.0, "Ohm", true});
  result.faults = {{"open", {1, 14}, "open: 1 (A1-L) is not connected with 14 (B1-L)"}};
  return result;
}
