#include "bench/program/check/RecordedNets.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "bench/program/check/RecordedFindings.h"
#include "bench/program/system/Failure.h"

namespace kxbench {

namespace {

using diagnosis::Channel;
using diagnosis::Net;
using diagnosis::Nets;
using Pair = std::pair<Channel, Channel>;

/// Ways to join broken nets beyond which no more are tried.
constexpr std::size_t MostWays = 4096;

/// Joins the nets of `nets` that share a channel with `channels`.
void Join(const Net& channels, Nets& nets) {
  Net joined;
  for (Net& net : nets) {
    if (std::find_first_of(net.begin(), net.end(), channels.begin(), channels.end()) == net.end()) continue;
    joined.insert(joined.end(), net.begin(), net.end());
    net.clear();
  }
  std::erase_if(nets, [](const Net& net) { return net.empty(); });
  std::sort(joined.begin(), joined.end());
  nets.push_back(std::move(joined));
}

/// The pairs that a check has found open. One that ended at its limit has not told of the rest: of a channel
/// of which it has told, the pairs not reached are taken for open, too.
class OpenPairs {
 public:
  OpenPairs(const RecordedFindings& findings, const wiring::ExpectationFacts& facts)
      : unsaid_(facts.excludedPairs.begin(), facts.excludedPairs.end()) {
    for (const RecordedBreak& one : findings.breaks) told_.insert({one.lower, one.higher});
    if (findings.aborted && findings.shorts.empty() && !told_.empty()) last_ = *told_.rbegin();
  }

  bool Holds(Channel lower, Channel higher) const {
    if (told_.contains({lower, higher}) || unsaid_.contains({lower, higher})) return true;
    return last_ && lower == last_->first && higher > last_->second;
  }

 private:
  std::set<Pair> told_;
  std::set<Pair> unsaid_;
  std::optional<Pair> last_;
};

Nets PiecesOf(const Net& net, const OpenPairs& open) {
  Nets pieces;
  for (const Channel channel : net) pieces.push_back({channel});
  for (std::size_t i = 0; i < net.size(); ++i) {
    for (std::size_t j = i + 1; j < net.size(); ++j) {
      if (!open.Holds(net[i], net[j])) Join({net[i], net[j]}, pieces);
    }
  }
  return diagnosis::Ordered(std::move(pieces));
}

const Net& NetWith(Channel channel, const Nets& nets) {
  const auto net = std::find_if(nets.begin(), nets.end(), [&](const Net& candidate) {
    return std::find(candidate.begin(), candidate.end(), channel) != candidate.end();
  });
  if (net == nets.end()) {
    throw Failure("--records: they tell of channel " + std::to_string(channel) +
                  ", which the expectation does not have in use");
  }
  return *net;
}

/// What of a record's net may be connected with the others: of a whole net all of it, of a broken one any
/// pieces that a record was sent for so often.
std::vector<Net> JoinsOf(const RecordedShort& recorded, const Nets& pieces, bool complete) {
  Nets own;
  for (const Net& piece : pieces) {
    if (std::binary_search(recorded.net.begin(), recorded.net.end(), piece.front())) own.push_back(piece);
  }
  constexpr std::size_t MostPieces = 10;
  std::vector<Net> joins;
  for (std::size_t chosen = 1; chosen < (std::size_t{1} << std::min(own.size(), MostPieces)); ++chosen) {
    Net channels = recorded.others;
    std::size_t senders = 0;
    for (std::size_t i = 0; i < own.size() && i < MostPieces; ++i) {
      if ((chosen >> i & 1U) == 0) continue;
      channels.push_back(own[i].front());
      senders += static_cast<std::size_t>(std::count_if(
          own[i].begin(), own[i].end(), [&](Channel c) { return c < recorded.others.front(); }));
    }
    if (senders == recorded.times || (!complete && senders > recorded.times)) joins.push_back(channels);
  }
  return joins;
}

/// A net, and the others that it is connected with.
using ShortCircuit = std::pair<Net, Net>;

/// The records of short circuits that a check would send for these nets, by the channel that they are sent
/// for: a check takes one channel after another.
std::map<Channel, ShortCircuit> ShortsOf(const Nets& expected, const Nets& measured) {
  std::map<Channel, ShortCircuit> shorts;
  for (const Net& net : measured) {
    for (const Channel channel : net) {
      const Net& own = NetWith(channel, expected);
      Net others;
      std::set_difference(net.begin(), net.end(), own.begin(), own.end(), std::back_inserter(others));
      if (!others.empty() && channel < others.front()) shorts[channel] = {own, others};
    }
  }
  return shorts;
}

bool SendsTheseShorts(const std::map<Channel, ShortCircuit>& shorts,
                      const std::vector<RecordedShort>& recorded) {
  std::map<ShortCircuit, std::size_t> sent;
  for (const auto& [channel, one] : shorts) ++sent[one];
  std::map<ShortCircuit, std::size_t> wanted;
  for (const RecordedShort& one : recorded) wanted[{one.net, one.others}] = one.times;
  return sent == wanted;
}

/// Whether each is sent for the first time in the order in which they were recorded.
bool SendsThemInThisOrder(const std::map<Channel, ShortCircuit>& shorts,
                          const std::vector<RecordedShort>& recorded) {
  std::vector<ShortCircuit> firsts;
  for (const auto& [channel, one] : shorts) {
    if (std::find(firsts.begin(), firsts.end(), one) == firsts.end()) firsts.push_back(one);
  }
  return std::equal(firsts.begin(), firsts.end(), recorded.begin(), recorded.end(),
                    [](const ShortCircuit& first, const RecordedShort& one) {
                      return first.first == one.net && first.second == one.others;
                    });
}

/// Every device that would have sent these short circuits; the first alone where the records are not
/// complete, so that nothing can be ruled out.
std::set<Nets> Devices(const Nets& expected, const Nets& pieces, const std::vector<RecordedShort>& shorts,
                       bool complete) {
  std::set<Nets> ways = {pieces};
  for (const RecordedShort& one : shorts) {
    std::set<Nets> next;
    for (const Nets& way : ways) {
      for (const Net& join : JoinsOf(one, pieces, complete)) {
        Nets joined = way;
        Join(join, joined);
        next.insert(diagnosis::Ordered(std::move(joined)));
        if (next.size() >= MostWays || !complete) break;
      }
    }
    ways = std::move(next);
  }
  if (!complete) return ways;
  std::erase_if(ways, [&](const Nets& way) { return !SendsTheseShorts(ShortsOf(expected, way), shorts); });
  // Records that somebody has sorted still tell the nets, if not always which of several.
  std::set<Nets> inOrder = ways;
  std::erase_if(inOrder,
                [&](const Nets& way) { return !SendsThemInThisOrder(ShortsOf(expected, way), shorts); });
  return inOrder.empty() ? ways : inOrder;
}

std::vector<std::string> GapsOf(const RecordedFindings& findings, const Nets& pieces) {
  std::vector<std::string> gaps;
  if (!findings.finished) gaps.emplace_back("the records of this check are not complete");
  if (findings.aborted) gaps.emplace_back("what the check would have found after its limit of findings");
  for (const RecordedBreak& one : findings.breaks) {
    const Net& piece = NetWith(one.lower, pieces);
    if (std::find(piece.begin(), piece.end(), one.higher) == piece.end()) continue;
    gaps.push_back("why " + std::to_string(one.lower) + " and " + std::to_string(one.higher) +
                   " are reported as open: both are connected with others of their net");
  }
  return gaps;
}

}  // namespace

DeviceDiagnosis DiagnosisOfRecords(const std::vector<Record>& records, const wiring::ExpectationFacts& facts,
                                   diagnosis::Observation observation) {
  const RecordedFindings findings = FindingsIn(records);
  if (!findings.voltages.empty()) {
    DeviceDiagnosis result;
    for (const RecordedVoltage& one : findings.voltages) {
      result.voltages.push_back(diagnosis::VoltageFault(one.channel, one.volts));
    }
    result.faults.expected = diagnosis::Ordered(std::move(observation.expected));
    return result;
  }
  observation.expected = diagnosis::Ordered(std::move(observation.expected));
  const OpenPairs open(findings, facts);
  Nets pieces;
  for (const Net& net : observation.expected) {
    const Nets own = PiecesOf(net, open);
    pieces.insert(pieces.end(), own.begin(), own.end());
  }
  for (const RecordedBreak& one : findings.breaks) {
    if (NetWith(one.lower, observation.expected) != NetWith(one.higher, observation.expected)) {
      throw Failure("--records: they tell of " + std::to_string(one.lower) + " and " +
                    std::to_string(one.higher) + ", which the expectation does not have connected");
    }
    observation.resistances.push_back({one.lower, one.higher, one.ohm.value_or(0), std::nullopt});
    if (!one.ohm) observation.resistances.pop_back();
  }
  for (const RecordedShort& one : findings.shorts) {
    if (!one.ohm) continue;
    for (const Channel a : one.net) {
      for (const Channel b : one.others) observation.resistances.push_back({a, b, *one.ohm, std::nullopt});
    }
  }
  const bool complete = findings.finished && !findings.aborted;
  const std::set<Nets> devices =
      Devices(observation.expected, diagnosis::Ordered(pieces), findings.shorts, complete);
  if (devices.empty()) throw Failure("--records: no device of this expectation would send these records");
  observation.measured = *devices.begin();
  DeviceDiagnosis result;
  result.faults = diagnosis::Diagnose(observation);
  result.gaps = GapsOf(findings, pieces);
  if (devices.size() > 1) {
    result.gaps.push_back("which of " + std::to_string(devices.size()) +
                          " devices it is that would all send these records; the first is named, measure "
                          "the device to tell");
  }
  result.checkFailed = !findings.breaks.empty() || !findings.shorts.empty();
  return result;
}

std::vector<Record> RecordsIn(const std::string& text) {
  std::vector<Record> records;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    std::string line = text.substr(begin, end - begin);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.find('|') != std::string::npos) records.push_back(ParseRecord(line));
    begin = end + 1;
  }
  return records;
}

}  // namespace kxbench
