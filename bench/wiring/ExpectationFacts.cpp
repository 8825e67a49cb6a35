#include "bench/wiring/ExpectationFacts.h"

#include <algorithm>

#include "plugin/data/ExpectationInspection.h"

namespace kxbench::wiring {

namespace {

using shorttest::ExpectationInspection;

bool Has(const std::vector<std::string>& names, const char* name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

std::string Counted(std::int64_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string KeyFault(const ExpectationInspection& seen, const char* key) {
  if (Has(seen.missingKeys, key)) return "no expectation: there is no " + std::string(key);
  return "no expectation: " + std::string(key) + " is no whole number";
}

std::string RangeText(const ExpectationInspection& seen) {
  return "the channels " + std::to_string(seen.von) + " to " + std::to_string(seen.bis);
}

std::string RefusalOf(const ExpectationInspection& seen) {
  if (!seen.startReadable) return KeyFault(seen, "START");
  if (!seen.endReadable) return KeyFault(seen, "ENDE");
  if (!seen.hasBlock) return "no expectation: there is no data block [DATEN]";
  if (seen.von > seen.bis) return RangeText(seen) + " are none: nothing is expected";
  if (seen.von < 1 || seen.bis > MostChannels) {
    return RangeText(seen) + " are not within 1 to " + std::to_string(MostChannels);
  }
  if (seen.bis - seen.von >= TShortTestData::MaxChannels) {
    return RangeText(seen) + " are more than " + std::to_string(TShortTestData::MaxChannels);
  }
  return "";
}

std::string UnreadableText(const std::string& key) {
  return key + " cannot be read: its default counts (is its decimal separator the one set here?)";
}

std::vector<std::string> DoubtsOf(const ExpectationInspection& seen, std::int64_t pairs) {
  std::vector<std::string> doubts;
  if (seen.strangeCells > 0) {
    doubts.push_back(Counted(seen.strangeCells, "cell is no state", "cells are no state") +
                     " (damaged file?)");
  }
  if (seen.unknownPairs > 0) {
    doubts.push_back(std::to_string(seen.unknownPairs) + " of " + Counted(pairs, "pair is", "pairs are") +
                     " unknown: neither connected nor open is expected");
  }
  if (seen.connectedPairs == 0) doubts.emplace_back("no connection is expected");
  for (const std::string& key : seen.unreadableKeys) doubts.push_back(UnreadableText(key));
  return doubts;
}

/// Whether channel index `i` was suspended by a damaged cell alone: suspending a channel marks its pairs,
/// too. (A range that is widened later brings pairs that are not.)
bool IsSuspendedByDamage(const TShortTestData& data, std::int32_t i) {
  if (data.Get(i, i) != CellState::Suspended || data.Highconnections() == 0) return false;
  bool marked = false;
  for (std::int32_t j = 0; j <= data.Highconnections(); ++j) {
    if (data.Get(i, j) == CellState::Connected) return true;
    marked = marked || data.Get(i, j) == CellState::NotTestable;
  }
  return !marked;
}

std::string DamageOf(const ExpectationInspection& seen, const TShortTestData& data) {
  const std::int32_t rows = seen.bis - seen.von + 1;
  if (seen.wholeRows < rows) {
    return "the data block has " + std::to_string(seen.wholeRows) + " whole lines of " + std::to_string(rows);
  }
  if (seen.strangeCells > 0) return Counted(seen.strangeCells, "cell is no state", "cells are no state");
  if (!seen.missingKeys.empty()) return "there is no " + seen.missingKeys.front();
  if (!seen.unreadableKeys.empty()) return UnreadableText(seen.unreadableKeys.front());
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    if (IsSuspendedByDamage(data, i)) {
      return "channel " + std::to_string(data.von + i) + " is suspended, but not its pairs";
    }
  }
  return "";
}

void Describe(const TShortTestData& data, ExpectationFacts& facts) {
  facts.firstChannel = data.von;
  facts.lastChannel = data.bis;
  facts.nets = NetsOf(data);
  for (std::int32_t i = 0; i <= data.Highconnections(); ++i) {
    for (std::int32_t j = i + 1; j <= data.Highconnections(); ++j) {
      if (data.Get(i, j) == CellState::ExcludedPair)
        facts.excludedPairs.emplace_back(data.von + i, data.von + j);
    }
  }
  facts.lowerThreshold_ohm = data.Schwelle;
  facts.upperThreshold_ohm = data.Schwelle2;
  facts.voltageControl = data.U_Control;
  facts.dischargeWait_ms = data.Timeout;
  facts.terminationCard = data.LastRelaisKarte;
  facts.terminationRelay = data.LastRelais;
  facts.mostErrors = data.MaxError;
}

}  // namespace

ExpectationFacts FactsOf(const std::string& utf8Path) {
  const ExpectationInspection seen = shorttest::InspectExpectationFile(utf8Path);
  ExpectationFacts facts;
  facts.refusal = RefusalOf(seen);
  facts.damage = facts.refusal;
  if (!facts.refusal.empty()) return facts;

  const TShortTestData data(utf8Path);
  const std::int64_t channels = std::int64_t{data.Highconnections()} + 1;
  facts.pairs = channels * (channels - 1) / 2;
  facts.connectedPairs = seen.connectedPairs;
  facts.unknownPairs = seen.unknownPairs;
  facts.strangeCells = seen.strangeCells;
  facts.doubts = DoubtsOf(seen, facts.pairs);
  facts.damage = DamageOf(seen, data);
  Describe(data, facts);
  return facts;
}

}  // namespace kxbench::wiring
