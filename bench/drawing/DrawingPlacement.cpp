#include "bench/drawing/DrawingPlacement.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <map>
#include <utility>

namespace kxbench::drawing {

namespace {

/// Channels of a block, where the harness has no names: half of a card.
constexpr std::size_t ChannelsOfBlock = 24;

/// Steps of the search, each a look at one net's part on one block.
constexpr std::int64_t MostSteps = 20'000'000;

std::string BlockTitle(const HarnessPicture& picture, const std::vector<std::size_t>& pins) {
  const std::int32_t first = picture.pins[pins.front()].channel;
  const std::int32_t last = picture.pins[pins.back()].channel;
  if (first <= 0 || last <= 0) return "Pins";
  if (first == last) return "Channel " + std::to_string(first);
  return "Channels " + std::to_string(first) + "–" + std::to_string(last);
}

void AddChannelBlocks(const HarnessPicture& picture, std::vector<std::size_t> loose, bool alone,
                      std::vector<DrawnBlock>& blocks) {
  std::stable_sort(loose.begin(), loose.end(), [&](std::size_t a, std::size_t b) {
    return picture.pins[a].channel < picture.pins[b].channel;
  });
  // Few channels and nothing else: one half faces the other.
  const bool halves = alone && loose.size() <= 2 * ChannelsOfBlock;
  const std::size_t most = halves ? (loose.size() + 1) / 2 : ChannelsOfBlock;
  for (std::size_t begin = 0; begin < loose.size(); begin += most) {
    DrawnBlock block;
    for (std::size_t i = begin; i < std::min(begin + most, loose.size()); ++i) block.pins.push_back(loose[i]);
    block.title = BlockTitle(picture, block.pins);
    blocks.push_back(std::move(block));
  }
}

/// Where a net has pins on a block: the rows of the first and the last.
struct NetOnBlock {
  std::size_t block;
  std::int32_t first;
  std::int32_t last;
};

std::vector<std::vector<NetOnBlock>> PartsOf(const std::vector<DrawnBlock>& blocks,
                                             const HarnessPicture& picture) {
  struct Spot {
    std::size_t block = 0;
    std::int32_t row = 0;
  };
  std::vector<Spot> spots(picture.pins.size());
  for (std::size_t block = 0; block < blocks.size(); ++block) {
    for (std::size_t i = 0; i < blocks[block].pins.size(); ++i) {
      spots[blocks[block].pins[i]] = {block, static_cast<std::int32_t>(i)};
    }
  }
  std::vector<std::vector<NetOnBlock>> nets;
  for (const DrawnNet& net : picture.nets) {
    std::map<std::size_t, NetOnBlock> parts;
    for (const std::size_t pin : net.pins) {
      const Spot& spot = spots[pin];
      NetOnBlock& part =
          parts.try_emplace(spot.block, NetOnBlock{spot.block, spot.row, spot.row}).first->second;
      part.first = std::min(part.first, spot.row);
      part.last = std::max(part.last, spot.row);
    }
    auto& list = nets.emplace_back();
    for (const auto& [block, part] : parts) list.push_back(part);
  }
  return nets;
}

class Search {
 public:
  Search(const std::vector<DrawnBlock>& blocks, const HarnessPicture& picture)
      : nets_(PartsOf(blocks, picture)), tops_(blocks.size()) {
    for (const DrawnBlock& block : blocks) {
      rows_.push_back(static_cast<std::int64_t>(block.pins.size() + RowsBesidePins));
      all_ += rows_.back();
    }
    for (const auto& net : nets_) stepsOfCost_ += static_cast<std::int64_t>(net.size());
    FillInOrder();
  }

  Placement Result(bool keepOrder) {
    if (!keepOrder) Improve();
    Placement placement = Split();
    Shift(placement);
    return placement;
  }

 private:
  /// The left column takes blocks in their order, until it holds half of the rows.
  void FillInOrder() {
    std::int64_t filled = 0;
    for (std::size_t block = 0; block < rows_.size(); ++block) {
      order_.push_back(block);
      if (filled + rows_[block] / 2 <= all_ / 2) leftCount_ = block + 1;
      filled += rows_[block];
    }
  }

  Placement Split() const {
    const auto middle = order_.begin() + static_cast<std::ptrdiff_t>(leftCount_);
    return {{order_.begin(), middle}, {middle, order_.end()}, 0, 0};
  }

  std::int64_t Height(bool left) const {
    std::int64_t height = 0;
    for (std::size_t i = left ? 0 : leftCount_; i < (left ? leftCount_ : order_.size()); ++i) {
      height += rows_[order_[i]];
    }
    return height;
  }

  /// Sum of the nets' heights in rows, with the right column so much lower; and what a column costs that is
  /// higher than the other.
  std::int64_t Cost(std::int64_t leftShift = 0, std::int64_t rightShift = 0) {
    steps_ += stepsOfCost_;
    std::int64_t top = leftShift;
    for (std::size_t i = 0; i < order_.size(); ++i) {
      if (i == leftCount_) top = rightShift;
      tops_[order_[i]] = top;
      top += rows_[order_[i]];
    }
    std::int64_t sum = 0;
    for (const auto& net : nets_) {
      if (net.empty()) continue;
      std::int64_t first = std::numeric_limits<std::int64_t>::max();
      std::int64_t last = 0;
      for (const NetOnBlock& part : net) {
        first = std::min(first, tops_[part.block] + part.first);
        last = std::max(last, tops_[part.block] + part.last);
      }
      sum += last - first;
    }
    const std::int64_t higher = std::max(Height(true), Height(false));
    return 4 * sum + (2 * higher - all_) * static_cast<std::int64_t>(nets_.size() + 1);
  }

  bool Tired() const { return steps_ > MostSteps; }

  void Improve() {
    std::int64_t best = Cost();
    for (bool better = true; better && !Tired();) {
      better = TryExchanges(best);
      better = TryMoves(best) || better;
    }
    // The first block is on the left.
    if (!order_.empty() && std::find(order_.begin(), order_.begin() + static_cast<std::ptrdiff_t>(leftCount_),
                                     0U) == order_.begin() + static_cast<std::ptrdiff_t>(leftCount_)) {
      std::rotate(order_.begin(), order_.begin() + static_cast<std::ptrdiff_t>(leftCount_), order_.end());
      leftCount_ = order_.size() - leftCount_;
    }
  }

  bool TryExchanges(std::int64_t& best) {
    bool better = false;
    for (std::size_t a = 0; a < order_.size(); ++a) {
      for (std::size_t b = a + 1; b < order_.size() && !Tired(); ++b) {
        std::swap(order_[a], order_[b]);
        const std::int64_t cost = Cost();
        if (cost < best) {
          best = cost;
          better = true;
        } else {
          std::swap(order_[a], order_[b]);
        }
      }
    }
    return better;
  }

  /// Every block to every other place; the place between the columns is two, the end of the one and the
  /// beginning of the other.
  bool TryMoves(std::int64_t& best) {
    bool better = false;
    for (std::size_t from = 0; from < order_.size(); ++from) {
      for (std::size_t to = 0; to <= order_.size() && !Tired(); ++to) {
        const std::vector<std::size_t> orderBefore = order_;
        const std::size_t leftBefore = leftCount_;
        const bool toLeft = to < leftCount_ || (to == leftCount_ && from >= leftCount_);
        Move(from, to, toLeft);
        const std::int64_t cost = Cost();
        if (cost < best) {
          best = cost;
          better = true;
          break;
        }
        order_ = orderBefore;
        leftCount_ = leftBefore;
      }
    }
    return better;
  }

  void Move(std::size_t from, std::size_t to, bool toLeft) {
    const std::size_t block = order_[from];
    if (from < leftCount_) --leftCount_;
    order_.erase(order_.begin() + static_cast<std::ptrdiff_t>(from));
    const std::size_t place = std::min(to > from ? to - 1 : to, order_.size());
    order_.insert(order_.begin() + static_cast<std::ptrdiff_t>(place), block);
    if (toLeft) ++leftCount_;
  }

  /// Lets the lower column begin where the lines are shortest.
  void Shift(Placement& placement) {
    if (placement.right.empty()) return;
    const std::int64_t difference = Height(true) - Height(false);
    const bool leftIsHigher = difference > 0;
    std::int64_t best = std::numeric_limits<std::int64_t>::max();
    for (std::int64_t shift = 0; shift <= std::abs(difference) && !Tired(); ++shift) {
      const std::int64_t cost = leftIsHigher ? Cost(0, shift) : Cost(shift, 0);
      if (cost >= best) continue;
      best = cost;
      (leftIsHigher ? placement.rightShift : placement.leftShift) = static_cast<std::size_t>(shift);
    }
  }

  std::vector<std::vector<NetOnBlock>> nets_;
  std::vector<std::int64_t> tops_;
  std::vector<std::int64_t> rows_;
  std::vector<std::size_t> order_;  // the left column's blocks, then the right one's
  std::size_t leftCount_ = 0;
  std::int64_t all_ = 0;
  std::int64_t stepsOfCost_ = 0;
  std::int64_t steps_ = 0;
};

}  // namespace

std::vector<DrawnBlock> BlocksOf(const HarnessPicture& picture) {
  std::vector<DrawnBlock> blocks;
  std::map<std::string, std::size_t> places;
  std::vector<std::size_t> loose;
  for (std::size_t pin = 0; pin < picture.pins.size(); ++pin) {
    const std::string& connector = picture.pins[pin].connector;
    if (connector.empty()) {
      loose.push_back(pin);
      continue;
    }
    const auto [place, added] = places.try_emplace(connector, blocks.size());
    if (added) blocks.push_back({connector, {}});
    blocks[place->second].pins.push_back(pin);
  }
  AddChannelBlocks(picture, std::move(loose), blocks.empty(), blocks);
  return blocks;
}

Placement Placed(const std::vector<DrawnBlock>& blocks, const HarnessPicture& picture) {
  const bool channelsAlone = std::all_of(picture.pins.begin(), picture.pins.end(),
                                         [](const DrawnPin& pin) { return pin.connector.empty(); });
  return Search(blocks, picture).Result(channelsAlone);
}

}  // namespace kxbench::drawing
