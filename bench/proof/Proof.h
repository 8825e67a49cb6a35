#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "bench/proof/DeviceModel.h"
#include "bench/proof/FaultPlan.h"
#include "bench/proof/Verdict.h"
#include "bench/wiring/ChannelNames.h"
#include "bench/wiring/ExpectationFacts.h"

namespace kxbench::proof {

/// A fault with what its check ended with.
struct ProvedFault {
  ProofFault fault;
  std::optional<Verdict> verdict;  ///< none: not simulated, because the proof was cancelled
};

/// How far a net may get worse before a check finds it, Ohm.
struct NetSensitivity {
  diagnosis::Net net;
  std::optional<double> largestJoint;        ///< of one contact; none for a single channel
  std::optional<double> smallestInsulation;  ///< to another net; none where a check never finds it
};

/// Thresholds that would find more, and that the good device still passes with a margin.
struct ThresholdAdvice {
  double margin = 0;               ///< factor between the good device and each threshold
  std::optional<double> lowerOhm;  ///< none: the one in force is low enough
  std::optional<double> upperOhm;  ///< none: the one in force is high enough
  bool upperBounded = false;       ///< the good device's insulation bounds it; else this program does
  std::size_t moreFound = 0;       ///< of the faults that escape now
};

/// A fault whose check through the plug-in's library ended otherwise.
struct PluginDifference {
  ProofFault fault;
  std::string simulated;  ///< records, joined by "; "
  std::string measured;
};

/// The counts of one class.
struct ClassCount {
  FaultClass kind = FaultClass::Open;
  std::size_t total = 0;
  std::size_t simulated = 0;
  std::size_t found = 0;
  std::size_t escaped = 0;
  std::size_t misnamed = 0;               ///< found, but the records do not name the right channels
  std::map<Naming, std::size_t> namings;  ///< of those found: what the diagnosis makes of the records
};

/// Everything that a proof found out, and what it was made with.
struct Proof {
  std::string file;    ///< as the user gave it, UTF-8
  std::string sha256;  ///< of that file
  std::string date;    ///< UTC: "2026-11-22T01:15:00Z"
  std::string programVersion;
  std::string device;  ///< the description of the good device; empty for the ideal one
  double netOhm = UsualNetOhm;
  std::uint64_t seed = 0;
  std::size_t largestSample = LargestSample;
  bool testerFaults = false;
  wiring::ExpectationFacts facts;
  bool complete = false;

  std::vector<std::string> goodFindings;  ///< records of the good device: none when it passes
  double goodSeconds = 0;                 ///< that the waits of its check take
  std::map<FaultClass, std::size_t> totals;
  std::vector<ProvedFault> faults;
  std::size_t capacitors = 0;           ///< simulated
  std::vector<ProofFault> falseAlarms;  ///< capacitors that the check reports all the same
  std::vector<NetSensitivity> sensitivity;
  std::vector<EscapeReason> accepted;
  std::optional<ThresholdAdvice> advice;            ///< where it was asked for
  std::size_t throughPlugin = 0;                    ///< faults checked through the plug-in's library, too
  std::vector<PluginDifference> pluginDifferences;  ///< of those

  /// The classes, in the order of the report; the tester's only when it was asked for.
  std::vector<ClassCount> Classes() const;

  /// Escapes whose reason is not accepted.
  std::size_t OpenEscapes() const;

  /// Whether nothing escapes but what is accepted, the good device passes, the plug-in's library agrees, and
  /// nothing is left to do.
  bool Holds() const;

  /// Seconds that all checks simulated take on a real tester at least: the sum of their waits.
  double RealSeconds() const;
};

/// What the faults of a class are, for an auditor: one sentence without a full stop.
std::string ClassDefinition(FaultClass kind, const wiring::ExpectationFacts& facts);

/// What a proof does not cover, a sentence each.
std::vector<std::string> NotCovered();

/// For a whole report in the table of a browser, or in a program of one's own.
std::string ProofJson(const Proof& proof);
std::string ProofCsv(const Proof& proof);
std::string ProofHtml(const Proof& proof, const wiring::ChannelNames& names);

}  // namespace kxbench::proof
