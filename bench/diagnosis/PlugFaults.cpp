#include "bench/diagnosis/PlugFaults.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace kxbench::diagnosis {

namespace {

/// A partition in which the net of a channel is found at once.
class NetsByChannel {
 public:
  explicit NetsByChannel(const Nets& nets) : nets_(nets) {
    for (std::size_t net = 0; net < nets.size(); ++net) {
      for (const Channel channel : nets[net]) netOf_[channel] = net;
    }
  }

  /// Null for a channel that takes no part.
  const Net* Of(Channel channel) const {
    const auto net = netOf_.find(channel);
    return net == netOf_.end() ? nullptr : &nets_[net->second];
  }

 private:
  const Nets& nets_;
  std::unordered_map<Channel, std::size_t> netOf_;
};

class PlugSearch {
 public:
  PlugSearch(const Nets& expected, const Nets& measured) : expected_(expected), measured_(measured) {}

  void Try(Fault fault) {
    if (!IsPossible(fault) || !SizesAgree(fault)) return;
    const Nets touched = TouchedNets(fault);
    const Nets image = Applied(Explanation{fault}, touched);
    const Nets changed = Difference(image, touched);
    const bool measuredSo = std::all_of(changed.begin(), changed.end(), [this](const Net& net) {
      const Net* measured = measured_.Of(net.front());
      return measured != nullptr && *measured == net;
    });
    if (changed.empty() || !measuredSo) return;
    fault.nets = Difference(touched, image);
    Net explained = ChannelsOf(changed);
    found_.push_back({std::move(fault), std::move(explained)});
  }

  std::vector<PlugExplanation> Found() && { return std::move(found_); }

 private:
  /// Every contact takes part in the test, no two wires come to one, and one that is connected comes to any.
  bool IsPossible(const Fault& fault) const {
    std::set<Channel> targets;
    bool connectedLands = false;
    for (const Move& move : fault.moves) {
      const Net* net = expected_.Of(move.from);
      if (net == nullptr) return false;
      if (!move.to) continue;
      if (expected_.Of(*move.to) == nullptr || !targets.insert(*move.to).second) return false;
      connectedLands = connectedLands || net->size() > 1;
    }
    return connectedLands;
  }

  /// Where no wire is lost, nets keep their sizes: rejects nearly all ways at little cost.
  bool SizesAgree(const Fault& fault) const {
    const bool wireLost = std::any_of(fault.moves.begin(), fault.moves.end(),
                                      [](const Move& move) { return !move.to.has_value(); });
    return wireLost || std::all_of(fault.moves.begin(), fault.moves.end(), [this](const Move& move) {
             return measured_.Of(*move.to)->size() == expected_.Of(move.from)->size();
           });
  }

  Nets TouchedNets(const Fault& fault) const {
    std::set<const Net*> nets;
    for (const Move& move : fault.moves) {
      nets.insert(expected_.Of(move.from));
      if (move.to) nets.insert(expected_.Of(*move.to));
    }
    Nets touched;
    for (const Net* net : nets) touched.push_back(*net);
    return Ordered(std::move(touched));
  }

  NetsByChannel expected_;
  NetsByChannel measured_;
  std::vector<PlugExplanation> found_;
};

}  // namespace

std::vector<PlugExplanation> PlugFaults(const std::vector<Plug>& plugs, const Nets& expected,
                                        const Nets& measured) {
  PlugSearch search(expected, measured);
  for (std::size_t i = 0; i < plugs.size(); ++i) {
    for (std::size_t j = i + 1; j < plugs.size(); ++j) search.Try(ExchangedPlugs(plugs[i], plugs[j]));
    for (Fault& fault : WrongPlugs(plugs[i])) search.Try(std::move(fault));
  }
  std::vector<PlugExplanation> found = std::move(search).Found();
  std::stable_sort(found.begin(), found.end(), [](const PlugExplanation& a, const PlugExplanation& b) {
    return std::tuple(a.fault.kind, std::abs(a.fault.shift)) <
           std::tuple(b.fault.kind, std::abs(b.fault.shift));
  });
  return found;
}

}  // namespace kxbench::diagnosis
