#include "plugin/editor/GridPicture.h"

#include <algorithm>
#include <cmath>

namespace shorttest {
namespace {

// Rows that follow each other and changed in the same columns make one range.
class ChangedRanges {
 public:
  void Add(int row, int left, int right) {
    if (!lower_.empty() && lower_.back().bottom == row - 1 && lower_.back().left == left &&
        lower_.back().right == right) {
      lower_.back().bottom = row;
    } else {
      lower_.push_back({left, row, right, row});
    }
  }

  // The ranges of the lower triangle and their mirror images.
  std::vector<CellRange> Mirrored() const {
    std::vector<CellRange> ranges = lower_;
    for (const CellRange& range : lower_) {
      const CellRange mirrored{range.top, range.left, range.bottom, range.right};
      if (!(mirrored == range)) ranges.push_back(mirrored);
    }
    return ranges;
  }

 private:
  std::vector<CellRange> lower_;
};

}  // namespace

GridColour ColourOfState(CellState state) {
  switch (state) {
    case CellState::NotConnected:
      return {255, 255, 255};
    case CellState::Connected:
      return {0, 128, 0};
    case CellState::ExcludedPair:
      return {255, 0, 0};
    case CellState::NotTestable:
      return {128, 0, 0};
    case CellState::Reserved:
      return {0, 204, 255};
    case CellState::NotApplicable:
      return {192, 192, 192};
    case CellState::Suspended:
      return {128, 128, 128};
    case CellState::Unknown:
      break;
  }
  return {128, 128, 0};  // also what a damaged file brought in
}

int GridCellSize(int extent, int count, int lineWidth) {
  if (count <= 0) return 0;
  const double pitch = std::floor(static_cast<double>(extent) / count);
  return std::max(0, static_cast<int>(pitch) - lineWidth);
}

std::vector<CellRange> GridPicture::Update(const TShortTestData& data) {
  const std::size_t count = data.connections.size();
  const bool resized = count != count_;
  if (resized) {
    count_ = count;
    states_.assign(count * count, CellState::Unknown);
  }
  ChangedRanges changed;
  for (std::size_t row = 0; row < count; ++row) {
    const std::vector<TConnectionCell>& cells = data.connections[row];
    CellState* const shown = &states_[row * count];
    std::size_t first = row + 1;
    std::size_t last = 0;
    for (std::size_t column = 0; column <= row; ++column) {
      if (shown[column] == cells[column].state) continue;
      shown[column] = cells[column].state;
      states_[column * count + row] = cells[column].state;
      first = std::min(first, column);
      last = column;
    }
    if (first <= row) changed.Add(static_cast<int>(row), static_cast<int>(first), static_cast<int>(last));
  }
  if (!resized) return changed.Mirrored();
  const int end = static_cast<int>(count) - 1;
  return {{0, 0, end, end}};
}

}  // namespace shorttest
