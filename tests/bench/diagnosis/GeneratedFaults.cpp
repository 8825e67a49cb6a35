#include "tests/bench/diagnosis/GeneratedFaults.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>

namespace kxbench::diagnosis::testkit {

namespace {

std::size_t NetIndexOf(Channel channel, const Nets& nets) {
  for (std::size_t i = 0; i < nets.size(); ++i) {
    if (std::find(nets[i].begin(), nets[i].end(), channel) != nets[i].end()) return i;
  }
  return nets.size();
}

bool IsNamed(const Fault& fault, const MadeFault& made) {
  return fault.kind == made.kind &&
         std::find(made.channels.begin(), made.channels.end(), fault.channels) != made.channels.end();
}

bool AreNamed(Explanation explanation, const std::vector<MadeFault>& made) {
  if (explanation.size() != made.size()) return false;
  for (const MadeFault& one : made) {
    const auto named = std::find_if(explanation.begin(), explanation.end(),
                                    [&](const Fault& fault) { return IsNamed(fault, one); });
    if (named == explanation.end()) return false;
    explanation.erase(named);
  }
  return true;
}

/// Applies one fault by its meaning for pairs of channels, not as the module does.
std::map<Channel, Channel> Labels(const Nets& nets) {
  std::map<Channel, Channel> labels;
  for (const Net& net : nets) {
    for (const Channel channel : net) labels[channel] = net.front();
  }
  return labels;
}

void ApplyByLabel(const Fault& fault, std::map<Channel, Channel>& labels, Channel& fresh) {
  if (fault.kind == FaultKind::Open) {
    ++fresh;
    for (const Channel channel : fault.pieces.front()) labels[channel] = fresh;
  } else if (fault.kind == FaultKind::Short) {
    const Channel joined = labels[fault.pieces.front().front()];
    std::set<Channel> old;
    for (const Net& piece : fault.pieces) old.insert(labels[piece.front()]);
    for (auto& [channel, label] : labels) label = old.contains(label) ? joined : label;
  } else {
    const std::map<Channel, Channel> before = labels;
    for (const Move& move : fault.moves) labels[move.from] = ++fresh;
    for (const Move& move : fault.moves) {
      if (move.to) labels[*move.to] = before.at(move.from);
    }
  }
}

bool SamePartition(const std::map<Channel, Channel>& a, const std::map<Channel, Channel>& b) {
  std::map<Channel, Channel> there;
  std::map<Channel, Channel> back;
  for (const auto& [channel, label] : a) {
    const auto other = b.find(channel);
    if (other == b.end()) return false;
    if (there.try_emplace(label, other->second).first->second != other->second) return false;
    if (back.try_emplace(other->second, label).first->second != label) return false;
  }
  return a.size() == b.size();
}

/// A wrong plug also moves wires whose nets stay as they are, so the whole device is compared, as far as the
/// finding goes.
bool Fits(const Explanation& explanation, const Finding& finding, const Nets& device) {
  if (explanation.front().kind == FaultKind::Compound) return explanation.size() == 1;
  std::map<Channel, Channel> labels = Labels(device);
  Channel fresh = 1'000'000;
  for (const Fault& fault : explanation) ApplyByLabel(fault, labels, fresh);
  const std::map<Channel, Channel> measured = Labels(finding.measured);
  std::erase_if(labels, [&](const auto& entry) { return !measured.contains(entry.first); });
  return SamePartition(labels, measured);
}

}  // namespace

std::size_t Below(std::mt19937& random, std::size_t bound) { return random() % bound; }

Nets DrawHarness(std::mt19937& random, Channel channels) {
  std::vector<Channel> left(static_cast<std::size_t>(channels));
  std::iota(left.begin(), left.end(), Channel{1});
  for (std::size_t i = left.size(); i > 1; --i) std::swap(left[i - 1], left[Below(random, i)]);
  constexpr std::size_t sizes[] = {1, 2, 2, 2, 2, 2, 3, 3, 4, 5, 8, 40};
  Nets nets;
  while (!left.empty()) {
    const std::size_t most = std::min(left.size(), sizes[Below(random, std::size(sizes))]);
    const std::size_t size = most == 40 ? 1 + Below(random, most) : most;
    nets.emplace_back(left.end() - static_cast<std::ptrdiff_t>(size), left.end());
    left.resize(left.size() - size);
  }
  return Ordered(nets);
}

MadeFault MakeOpen(const Nets& harness, Channel contact, Nets& nets) {
  MadeFault made{FaultKind::Open, {{contact}}};
  Net left = harness[NetIndexOf(contact, harness)];
  std::erase(left, contact);
  if (left.size() == 1) made.channels.push_back(left);
  std::erase(nets[NetIndexOf(contact, nets)], contact);
  std::erase_if(nets, [](const Net& net) { return net.empty(); });
  nets.push_back({contact});
  return made;
}

MadeFault MakeShort(const Nets& harness, Channel a, Channel b, Nets& nets) {
  Net named = harness[NetIndexOf(a, harness)];
  const Net& other = harness[NetIndexOf(b, harness)];
  named.insert(named.end(), other.begin(), other.end());
  std::sort(named.begin(), named.end());
  const std::size_t netOfA = NetIndexOf(a, nets);
  const std::size_t netOfB = NetIndexOf(b, nets);
  if (netOfA != netOfB) {
    nets[netOfA].insert(nets[netOfA].end(), nets[netOfB].begin(), nets[netOfB].end());
    nets.erase(nets.begin() + static_cast<std::ptrdiff_t>(netOfB));
  }
  return {FaultKind::Short, {named}};
}

MadeFault MakeExchange(const Nets& harness, Channel a, Channel b, Nets& nets) {
  const Net& wireA = harness[NetIndexOf(a, harness)];
  const Net& wireB = harness[NetIndexOf(b, harness)];
  const bool unused = wireA.size() == 1 || wireB.size() == 1;
  MadeFault made{unused ? FaultKind::Misplaced : FaultKind::Swapped, {{std::min(a, b), std::max(a, b)}}};
  // Of two two-ended wires the other ends may have been exchanged as well.
  if (wireA.size() == 2 && wireB.size() == 2) {
    const Channel otherA = wireA[0] == a ? wireA[1] : wireA[0];
    const Channel otherB = wireB[0] == b ? wireB[1] : wireB[0];
    made.channels.push_back({std::min(otherA, otherB), std::max(otherA, otherB)});
  }
  for (Net& net : nets) {
    for (Channel& channel : net) channel = channel == a ? b : channel == b ? a : channel;
  }
  return made;
}

std::vector<MadeFault> MakeAny(std::mt19937& random, const Nets& harness, Nets& nets) {
  const std::size_t kind = Below(random, 3);
  const Net& one = harness[Below(random, harness.size())];
  const Net& other = harness[Below(random, harness.size())];
  const Channel a = one[Below(random, one.size())];
  const Channel b = other[Below(random, other.size())];
  if (kind == 0) return one.size() < 2 ? std::vector<MadeFault>() : std::vector{MakeOpen(harness, a, nets)};
  if (&one == &other) return {};
  if (kind == 1) return {MakeShort(harness, a, b, nets)};
  if (one.size() == 1 && other.size() == 1) return {};
  return {MakeExchange(harness, a, b, nets)};
}

Named HowNamed(const Diagnosis& diagnosis, const std::vector<MadeFault>& made) {
  Explanation first;
  for (const Finding& finding : diagnosis.findings) {
    const Explanation& explanation = finding.explanations.front();
    first.insert(first.end(), explanation.begin(), explanation.end());
  }
  if (AreNamed(first, made)) return Named::First;
  if (diagnosis.findings.size() == 1) {
    for (const Explanation& explanation : diagnosis.findings.front().explanations) {
      if (AreNamed(explanation, made)) return Named::Alternative;
    }
  }
  const bool compound = std::any_of(first.begin(), first.end(),
                                    [](const Fault& fault) { return fault.kind == FaultKind::Compound; });
  return compound ? Named::Compound : Named::Otherwise;
}

bool AllFit(const Diagnosis& diagnosis) {
  return std::all_of(diagnosis.findings.begin(), diagnosis.findings.end(), [&](const Finding& finding) {
    return std::all_of(
        finding.explanations.begin(), finding.explanations.end(),
        [&](const Explanation& explanation) { return Fits(explanation, finding, diagnosis.expected); });
  });
}

std::string Text(const Net& net) {
  std::string text;
  for (const Channel channel : net) text += (text.empty() ? "" : " ") + std::to_string(channel);
  return text;
}

std::string Text(const Nets& nets) {
  std::string text;
  for (const Net& net : nets) text += (text.empty() ? "" : " | ") + Text(net);
  return text;
}

}  // namespace kxbench::diagnosis::testkit
