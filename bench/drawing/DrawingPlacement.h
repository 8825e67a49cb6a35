#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "bench/drawing/Drawing.h"

namespace kxbench::drawing {

/// A box of the drawing: a connector, or some channels that are on none.
struct DrawnBlock {
  std::string title;
  std::vector<std::size_t> pins;  ///< indices of HarnessPicture::pins, from the top
};

/// The boxes of a picture: connectors in the order of their first pins, then the pins that are on none, in
/// blocks by channel.
std::vector<DrawnBlock> BlocksOf(const HarnessPicture& picture);

/// Rows of a block beside those of its pins: its title, and the gap below it.
inline constexpr std::size_t RowsBesidePins = 2;

/// Which blocks stand in which column, from the top.
struct Placement {
  std::vector<std::size_t> left;
  std::vector<std::size_t> right;
  std::size_t leftShift = 0;  ///< rows that are left free above the first block; one of the two is 0
  std::size_t rightShift = 0;
};

/// Blocks placed so that lines are short, and with that cross seldom: exchanges and moves of blocks are tried
/// as long as they shorten the sum of the nets' heights, in so many steps at most that thousands of pins take
/// well below a second. Blocks by channel stay in their order.
Placement Placed(const std::vector<DrawnBlock>& blocks, const HarnessPicture& picture);

}  // namespace kxbench::drawing
