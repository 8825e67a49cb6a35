// Every set of up to three defects on four channels of two cards. What any test could see of a set is worked
// out: for each way of switching the relays and the cards' own, whether line 0 reaches line 1. Sets that look
// the same from everywhere can be told apart by nobody; of all others the self-test must name the one that is
// there.

#include <algorithm>
#include <array>
#include <bitset>
#include <map>
#include <set>

#include "tests/bench/proof/SelfTestBench.h"

namespace kxbench {
namespace {

constexpr std::array<int, 4> TestedChannels = {47, 48, 49, 50};  // two on each card
constexpr unsigned RelayCount = 8;                               // relay 2 * channel + line
constexpr unsigned CardLines = 4;                                // 2 * card + line

struct DefectSet {
  unsigned open = 0;  // a bit a relay
  unsigned closed = 0;
  std::vector<std::array<unsigned, 2>> wires;  // between channels

  std::size_t Size() const {
    return std::bitset<RelayCount>(open).count() + std::bitset<RelayCount>(closed).count() + wires.size();
  }
};

constexpr unsigned Line(unsigned line) { return line; }
constexpr unsigned Piece(unsigned cardLine) { return 2 + cardLine; }
constexpr unsigned Contact(unsigned channel) { return 2 + CardLines + channel; }
constexpr unsigned Nodes = 2 + CardLines + 4;

// Which nodes are one, joined step by step.
class Joined {
 public:
  Joined() {
    for (unsigned node = 0; node < Nodes; ++node) net_[node] = node;
  }
  void Join(unsigned a, unsigned b) {
    const unsigned from = net_[a];
    const unsigned to = net_[b];
    if (from == to) return;
    for (unsigned& net : net_) net = net == from ? to : net;
  }
  bool Reaches() const { return net_[Line(0)] == net_[Line(1)]; }

 private:
  std::array<unsigned, Nodes> net_{};
};

// A bit for each way of switching.
using Behaviour = std::bitset<(1U << RelayCount) * (1U << CardLines)>;

Behaviour BehaviourOf(const DefectSet& defects) {
  Behaviour behaviour;
  Joined fixture;
  for (const auto& [a, b] : defects.wires) fixture.Join(Contact(a), Contact(b));
  for (unsigned coils = 0; coils < 1U << RelayCount; ++coils) {
    Joined nets = fixture;
    const unsigned contacts = (coils | defects.closed) & ~defects.open;
    for (unsigned relay = 0; relay < RelayCount; ++relay) {
      const unsigned channel = relay / 2;
      if ((contacts >> relay & 1U) != 0) nets.Join(Contact(channel), Piece(2 * (channel / 2) + relay % 2));
    }
    for (unsigned cards = 0; cards < 1U << CardLines; ++cards) {
      Joined connected = nets;
      for (unsigned cardLine = 0; cardLine < CardLines; ++cardLine) {
        if ((cards >> cardLine & 1U) != 0) connected.Join(Piece(cardLine), Line(cardLine % 2));
      }
      behaviour[coils << CardLines | cards] = connected.Reaches();
    }
  }
  return behaviour;
}

DefectSet Together(const DefectSet& a, const DefectSet& b) {
  DefectSet both{a.open | b.open, a.closed | b.closed, a.wires};
  both.wires.insert(both.wires.end(), b.wires.begin(), b.wires.end());
  return both;
}

std::vector<DefectSet> SetsOfUpToThree() {
  std::vector<DefectSet> single;
  for (unsigned relay = 0; relay < RelayCount; ++relay) {
    single.push_back({1U << relay, 0, {}});
    single.push_back({0, 1U << relay, {}});
  }
  for (unsigned a = 0; a < TestedChannels.size(); ++a) {
    for (unsigned b = a + 1; b < TestedChannels.size(); ++b) single.push_back({0, 0, {{a, b}}});
  }
  // The empty one stands for "one less".
  single.insert(single.begin(), DefectSet{});
  std::vector<DefectSet> sets;
  for (std::size_t i = 0; i < single.size(); ++i) {
    for (std::size_t j = i == 0 ? 0 : i + 1; j < single.size(); ++j) {
      for (std::size_t k = j == 0 ? 0 : j + 1; k < single.size(); ++k) {
        const DefectSet set = Together(Together(single[i], single[j]), single[k]);
        if ((set.open & set.closed) == 0) sets.push_back(set);
      }
    }
  }
  std::stable_sort(sets.begin(), sets.end(),
                   [](const DefectSet& a, const DefectSet& b) { return a.Size() < b.Size(); });
  return sets;
}

std::string DescriptionOf(const DefectSet& set) {
  std::string text = "cards 2\n";
  for (unsigned relay = 0; relay < RelayCount; ++relay) {
    const std::string place =
        std::to_string(TestedChannels[relay / 2]) + " " + std::to_string(relay % 2) + "\n";
    if ((set.open >> relay & 1U) != 0) text += "stuck-open " + place;
    if ((set.closed >> relay & 1U) != 0) text += "stuck-closed " + place;
  }
  for (const auto& [a, b] : set.wires) {
    text += "wire " + std::to_string(TestedChannels[a]) + " " + std::to_string(TestedChannels[b]) + "\n";
  }
  return text;
}

using Named = std::vector<TesterDefect>;

Named NamesOf(const DefectSet& set) {
  Named named;
  for (unsigned relay = 0; relay < RelayCount; ++relay) {
    const int channel = TestedChannels[relay / 2];
    const auto line = static_cast<int>(relay % 2);
    if ((set.open >> relay & 1U) != 0) named.push_back(NeverCloses(channel, line));
    if ((set.closed >> relay & 1U) != 0) named.push_back(NeverOpens(channel, line));
  }
  std::set<int> notEmpty;
  for (const auto& [a, b] : set.wires) notEmpty.insert({TestedChannels[a], TestedChannels[b]});
  for (const int channel : notEmpty) named.push_back(NotEmpty(channel));
  return named;
}

// Whether what was found says all of `names`, with or without others.
bool Covers(const Named& found, const Named& names) {
  for (const TesterDefect& name : names) {
    bool said = false;
    for (const TesterDefect& defect : found) {
      const bool anyChannel = !defect.channel && defect.card == name.card;
      said |= defect.kind == name.kind && defect.line == name.line &&
              (anyChannel || defect.channel == name.channel);
    }
    if (!said) return false;
  }
  return true;
}

class SelfTestExactness : public SelfTestBench {};

// Those with the fewest defects among sets that look the same: what can be said at best.
std::vector<Named> ExplanationsOf(const std::vector<DefectSet>& alike) {
  const std::size_t fewest = alike.front().Size();  // sets come by size
  std::vector<Named> explanations;
  for (const DefectSet& set : alike) {
    Named names = NamesOf(set);
    const bool known = std::find(explanations.begin(), explanations.end(), names) != explanations.end();
    if (set.Size() == fewest && !known) explanations.push_back(std::move(names));
  }
  return explanations;
}

// Of a card whose lines are connected with every relay open the self-test does not say which channel's relays
// never open. With two channels on a card it is the other one when one shows itself, with 48 nobody can tell.
bool HasShortedChannel(const DefectSet& set) {
  for (unsigned channel = 0; channel < TestedChannels.size(); ++channel) {
    if ((set.closed >> (2 * channel) & 3U) == 3U) return true;
  }
  return false;
}

enum class Answer { Exact, OneOfSeveral, ExactButForTheShortedChannel, Wrong };

Answer Judge(const Named& found, const DefectSet& set, const std::vector<Named>& explanations) {
  if (explanations.size() == 1) {
    if (std::is_permutation(found.begin(), found.end(), explanations.front().begin(),
                            explanations.front().end()))
      return Answer::Exact;
  } else if (std::any_of(explanations.begin(), explanations.end(),
                         [&found](const Named& names) { return Covers(found, names); })) {
    return Answer::OneOfSeveral;
  }
  return HasShortedChannel(set) && found.size() == explanations.front().size() &&
                 Covers(found, explanations.front())
             ? Answer::ExactButForTheShortedChannel
             : Answer::Wrong;
}

TEST_F(SelfTestExactness, NamesEverySetThatCanBeToldFromAllOthers) {
  Channels(TestedChannels.front(), TestedChannels.back());
  std::map<std::string, std::vector<DefectSet>> alike;
  for (const DefectSet& set : SetsOfUpToThree()) alike[BehaviourOf(set).to_string()].push_back(set);

  std::map<Answer, int> count;
  for (const auto& [behaviour, sets] : alike) {
    const std::vector<Named> explanations = ExplanationsOf(sets);
    for (const DefectSet& set : sets) {
      const Named found = Found(DescriptionOf(set));
      const Answer answer = Judge(found, set, explanations);
      ++count[answer];
      EXPECT_NE(answer, Answer::Wrong) << DescriptionOf(set) << testing::PrintToString(found);
    }
  }
  EXPECT_EQ(count[Answer::Exact], 558);
  EXPECT_EQ(count[Answer::OneOfSeveral], 1060);
  EXPECT_EQ(count[Answer::ExactButForTheShortedChannel], 8);
}

}  // namespace
}  // namespace kxbench
