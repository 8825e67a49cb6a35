#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "plugin/data/ShorttestData.h"

namespace shorttest {

struct GridColour {
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;
  bool operator==(const GridColour&) const = default;
};

/// Colour of a cell in that state.
GridColour ColourOfState(CellState state);

/// Colour of every cell while there is no data.
inline constexpr GridColour NoDataColour{0, 0, 255};

/// Width (or height) of a grid cell, without its line, so that `count` cells with a line of `lineWidth` after
/// each fit into `extent`; 0 when there is no room for more than the line, and without cells.
int GridCellSize(int extent, int count, int lineWidth);

/// A rectangle of grid cells, ends included.
struct CellRange {
  int left;
  int top;
  int right;
  int bottom;
  bool operator==(const CellRange&) const = default;
};

/// What the grid shows of a matrix, and what of it has to be painted anew when the matrix has changed. Keeps
/// a copy of the states, because a full repaint of 240 x 240 cells takes far longer than the measurement
/// between two reports.
class GridPicture {
 public:
  /// Takes the matrix over and returns the ranges of cells that now look different, in no order; the picture
  /// is symmetric, and so are the ranges. One range over everything when the number of channels changed.
  std::vector<CellRange> Update(const TShortTestData& data);

  /// Number of columns, and of rows.
  int Count() const { return static_cast<int>(count_); }

  /// State shown at a cell; the two halves of the square are the same. REQUIRES: both below Count().
  CellState State(int column, int row) const {
    return states_[static_cast<std::size_t>(row) * count_ + static_cast<std::size_t>(column)];
  }

 private:
  std::size_t count_ = 0;
  std::vector<CellState> states_;  // the full square, row by row
};

}  // namespace shorttest
