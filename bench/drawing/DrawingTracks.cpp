#include "bench/drawing/DrawingTracks.h"

#include <algorithm>
#include <cstdint>
#include <numeric>

namespace kxbench::drawing {

namespace {

/// More rounds than lines ever need, but for harnesses of which nobody follows a line.
constexpr int MostRounds = 12;

struct Trunk {
  std::size_t line;
  double top;
  double bottom;
  std::vector<double> left;  // y of its terminals, ascending
  std::vector<double> right;
};

bool RunsStraight(const std::vector<Terminal>& terminals) {
  return std::all_of(terminals.begin(), terminals.end(),
                     [&](const Terminal& terminal) { return terminal.y == terminals.front().y; });
}

Trunk TrunkOf(std::size_t line, const std::vector<Terminal>& terminals) {
  Trunk trunk{line, terminals.front().y, terminals.front().y, {}, {}};
  for (const Terminal& terminal : terminals) {
    trunk.top = std::min(trunk.top, terminal.y);
    trunk.bottom = std::max(trunk.bottom, terminal.y);
    (terminal.left ? trunk.left : trunk.right).push_back(terminal.y);
  }
  std::sort(trunk.left.begin(), trunk.left.end());
  std::sort(trunk.right.begin(), trunk.right.end());
  return trunk;
}

std::int32_t Within(const std::vector<double>& places, const Trunk& trunk) {
  return static_cast<std::int32_t>(std::upper_bound(places.begin(), places.end(), trunk.bottom) -
                                   std::lower_bound(places.begin(), places.end(), trunk.top));
}

class Ordering {
 public:
  Ordering(std::vector<Trunk> trunks, double gap)
      : trunks_(std::move(trunks)), gap_(gap), order_(trunks_.size()) {
    std::iota(order_.begin(), order_.end(), 0U);
    const std::size_t n = trunks_.size();
    dearer_.resize(n * n);
    for (std::size_t a = 0; a < n; ++a) {
      for (std::size_t b = a + 1; b < n; ++b) {
        const std::int32_t difference = Crossings(a, b) - Crossings(b, a);
        dearer_[a * n + b] = difference;
        dearer_[b * n + a] = -difference;
      }
    }
  }

  Tracks Result(std::size_t lines) {
    BeginGreedily();
    for (int round = 0; round < MostRounds && MoveEach(); ++round) {
    }
    return Packed(lines);
  }

 private:
  /// Of `left` with `right`, where the one is left of the other.
  std::int32_t Crossings(std::size_t left, std::size_t right) const {
    return Within(trunks_[left].right, trunks_[right]) + Within(trunks_[right].left, trunks_[left]);
  }

  /// From the left, each time the line that is cheapest there among those left over.
  void BeginGreedily() {
    const std::size_t n = trunks_.size();
    std::vector<std::int64_t> sums(n);  // what a line costs to the left of all that are left over
    for (std::size_t a = 0; a < n; ++a) {
      sums[a] = std::accumulate(dearer_.begin() + static_cast<std::ptrdiff_t>(a * n),
                                dearer_.begin() + static_cast<std::ptrdiff_t>((a + 1) * n), std::int64_t{0});
    }
    for (std::size_t place = 0; place < n; ++place) {
      const auto rest = order_.begin() + static_cast<std::ptrdiff_t>(place);
      const auto next = std::min_element(rest, order_.end(),
                                         [&](std::size_t a, std::size_t b) { return sums[a] < sums[b]; });
      std::rotate(rest, next, next + 1);
      for (std::size_t i = place + 1; i < n; ++i) sums[order_[i]] -= dearer_[order_[i] * n + order_[place]];
    }
  }

  bool Near(std::size_t a, std::size_t b) const {
    return trunks_[a].top < trunks_[b].bottom + gap_ && trunks_[b].top < trunks_[a].bottom + gap_;
  }

  /// Puts each line where it crosses least. Returns whether one moved.
  bool MoveEach() {
    bool moved = false;
    for (std::size_t trunk = 0; trunk < trunks_.size(); ++trunk) moved = MoveOne(trunk) || moved;
    return moved;
  }

  bool MoveOne(std::size_t trunk) {
    const std::size_t n = trunks_.size();
    const auto at = static_cast<std::size_t>(std::find(order_.begin(), order_.end(), trunk) - order_.begin());
    // What it costs to stand elsewhere, against where it stands.
    std::int32_t best = 0;
    std::size_t place = at;
    std::int32_t cost = 0;
    for (std::size_t i = at + 1; i < n; ++i) {
      cost += dearer_[order_[i] * n + trunk];
      if (cost < best) {
        best = cost;
        place = i;
      }
    }
    cost = 0;
    for (std::size_t i = at; i-- > 0;) {
      cost += dearer_[trunk * n + order_[i]];
      if (cost < best) {
        best = cost;
        place = i;
      }
    }
    if (place == at) return false;
    order_.erase(order_.begin() + static_cast<std::ptrdiff_t>(at));
    order_.insert(order_.begin() + static_cast<std::ptrdiff_t>(place), trunk);
    return true;
  }

  /// Each line as far left as those before it in the order let it; then those that end on the right as far
  /// right as those after them do.
  Tracks Packed(std::size_t lines) const {
    std::vector<std::size_t> track(trunks_.size());
    Tracks tracks{std::vector<std::optional<std::size_t>>(lines), 0};
    for (std::size_t i = 0; i < order_.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        if (Near(order_[i], order_[j])) track[order_[i]] = std::max(track[order_[i]], track[order_[j]] + 1);
      }
      tracks.count = std::max(tracks.count, track[order_[i]] + 1);
    }
    for (std::size_t i = order_.size(); i-- > 0;) {
      const Trunk& trunk = trunks_[order_[i]];
      if (trunk.right.size() <= trunk.left.size()) continue;
      std::size_t furthest = tracks.count;
      for (std::size_t j = i + 1; j < order_.size(); ++j) {
        if (Near(order_[i], order_[j])) furthest = std::min(furthest, track[order_[j]]);
      }
      track[order_[i]] = furthest - 1;
    }
    for (std::size_t i = 0; i < trunks_.size(); ++i) tracks.of[trunks_[i].line] = track[i];
    return tracks;
  }

  std::vector<Trunk> trunks_;
  double gap_;
  std::vector<std::size_t> order_;    // trunks from the left
  std::vector<std::int32_t> dearer_;  // [a, b]: crossings that a left of b costs more than b left of a
};

}  // namespace

Tracks Routed(const std::vector<std::vector<Terminal>>& lines, double gap) {
  std::vector<Trunk> trunks;
  for (std::size_t line = 0; line < lines.size(); ++line) {
    if (!lines[line].empty() && !RunsStraight(lines[line])) trunks.push_back(TrunkOf(line, lines[line]));
  }
  return Ordering(std::move(trunks), gap).Result(lines.size());
}

}  // namespace kxbench::drawing
