#include "bench/diagnosis/FaultPairs.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "bench/diagnosis/SingleFaults.h"

namespace kxbench::diagnosis {

namespace {

// Each fault ties at most two nets together, of the expected ones and, seen from the other end, of the
// measured ones, and adds at most two pieces. Beyond these bounds there is nothing to look for.
constexpr std::size_t MostNets = 3;
constexpr std::size_t MostPiecesMore = 4;

bool MayBeTwoFaults(const Overlap& component) {
  return component.expected.size() <= MostNets && component.measured.size() <= MostNets &&
         component.Opens() <= MostPiecesMore && component.Shorts() <= MostPiecesMore;
}

/// A piece of one net came off and another net is connected with it, or with what is left: two expected and
/// two measured nets in three pieces.
std::vector<Explanation> BreakAndShort(const Overlap& component) {
  if (component.Opens() != 1 || component.Shorts() != 1) return {};
  const auto& pieces = component.pieces;
  // The piece that shares both its nets with others is the one to which the whole net was joined.
  const auto sharing = [&](const Piece& piece, const Piece& other) {
    return &piece != &other && piece.expected == other.expected;
  };
  const Piece* joined = nullptr;
  const Piece* apart = nullptr;
  const Piece* whole = nullptr;
  for (const Piece& piece : pieces) {
    const auto other = std::find_if(pieces.begin(), pieces.end(),
                                    [&](const Piece& candidate) { return sharing(piece, candidate); });
    if (other == pieces.end()) {
      whole = &piece;
    } else if (component.measured[piece.measured].size() > piece.channels.size()) {
      joined = &piece;
    } else {
      apart = &piece;
    }
  }
  if (joined == nullptr || apart == nullptr || whole == nullptr) return {};

  Overlap broken;
  broken.expected = {component.expected[apart->expected]};
  broken.measured = {joined->channels, apart->channels};
  broken.pieces = {{0, 0, joined->channels}, {0, 1, apart->channels}};
  Fault shorted;
  shorted.kind = FaultKind::Short;
  shorted.channels = ChannelsOf(component.expected);
  shorted.nets = Ordered(component.expected);
  shorted.pieces = Ordered({joined->channels, whole->channels});
  std::vector<Explanation> explanations = SingleFaults(broken);
  for (Explanation& explanation : explanations) explanation.push_back(shorted);
  return explanations;
}

/// The expected nets with contacts a and b exchanged, or the other way round.
Nets WithExchange(Nets nets, Channel a, Channel b) {
  for (Net& net : nets) {
    for (Channel& channel : net) {
      if (channel == a) {
        channel = b;
      } else if (channel == b) {
        channel = a;
      }
    }
    std::sort(net.begin(), net.end());
  }
  return nets;
}

/// A short circuit is named with the nets as they should be, whatever else happened to them.
void NameExpectedNets(Fault& fault, Channel a, Channel b) {
  fault.nets = Ordered(WithExchange(fault.nets, a, b));
  if (fault.kind == FaultKind::Short) fault.channels = ChannelsOf(fault.nets);
}

/// Explanations whose first fault is the exchange of contacts `a` and `b` of the pieces given.
std::vector<Explanation> ExchangeFirst(const Overlap& component, Channel a, const Piece& pieceOfA, Channel b,
                                       const Piece& pieceOfB) {
  const Nets exchanged = WithExchange(component.expected, a, b);
  std::optional<Overlap> rest;
  for (Overlap& part : Components(exchanged, component.measured)) {
    if (part.Agrees()) continue;
    if (rest) return {};
    rest = std::move(part);
  }
  if (!rest) return {};
  const Fault exchange =
      Exchange(a, b, component.expected[pieceOfA.expected], component.expected[pieceOfB.expected]);
  std::vector<Explanation> explanations;
  for (Explanation& second : SingleFaults(*rest)) {
    if (second.size() != 1 || second.front().kind == FaultKind::Crossed) continue;
    NameExpectedNets(second.front(), a, b);
    explanations.push_back({exchange, std::move(second.front())});
  }
  return explanations;
}

bool SameFaults(const Explanation& a, const Explanation& b) {
  return std::is_permutation(a.begin(), a.end(), b.begin(), b.end(), SameFault);
}

void AddNew(std::vector<Explanation> found, std::vector<Explanation>& explanations) {
  for (Explanation& explanation : found) {
    if (explanations.size() == MaxExplanations) return;
    const bool known = std::any_of(explanations.begin(), explanations.end(),
                                   [&](const Explanation& other) { return SameFaults(other, explanation); });
    if (!known) explanations.push_back(std::move(explanation));
  }
}

/// All contacts of a piece are alike, so one of each tells whether an exchange between two pieces leads
/// anywhere; where it does, every choice of contacts is an explanation of its own.
void AddExchanges(const Overlap& component, const Piece& p, const Piece& q,
                  std::vector<Explanation>& explanations) {
  if (p.expected == q.expected || p.measured == q.measured) return;
  if (ExchangeFirst(component, p.channels.front(), p, q.channels.front(), q).empty()) return;
  for (const Channel a : p.channels) {
    for (const Channel b : q.channels) {
      if (explanations.size() == MaxExplanations) return;
      AddNew(ExchangeFirst(component, a, p, b, q), explanations);
    }
  }
}

/// Breaks and short circuits come of themselves, exchanges are made.
int Rarity(const Explanation& explanation) {
  int rarity = 0;
  for (const Fault& fault : explanation) {
    rarity += fault.kind == FaultKind::Open || fault.kind == FaultKind::Short ? 0 : 1;
  }
  return rarity;
}

}  // namespace

std::vector<Explanation> FaultPairs(const Overlap& component) {
  if (!MayBeTwoFaults(component)) return {};
  std::vector<Explanation> explanations = BreakAndShort(component);
  for (std::size_t i = 0; i < component.pieces.size(); ++i) {
    for (std::size_t j = i + 1; j < component.pieces.size(); ++j) {
      AddExchanges(component, component.pieces[i], component.pieces[j], explanations);
    }
  }
  const Nets measured = Ordered(component.measured);
  std::erase_if(explanations, [&](const Explanation& explanation) {
    return Applied(explanation, component.expected) != measured;
  });
  std::stable_sort(explanations.begin(), explanations.end(),
                   [](const Explanation& a, const Explanation& b) { return Rarity(a) < Rarity(b); });
  return explanations;
}

}  // namespace kxbench::diagnosis
