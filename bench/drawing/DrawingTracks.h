#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace kxbench::drawing {

/// Where a line leaves a column for the channel between the columns.
struct Terminal {
  bool left;  ///< from the left column
  double y;
};

/// Vertical tracks of the channel, from the left.
struct Tracks {
  std::vector<std::optional<std::size_t>> of;  ///< of each line; none for one that runs straight across
  std::size_t count = 0;
};

/// Gives every line that turns a track, so that lines on one track are at least `gap` apart.
///
/// Whether two lines cross depends only on which of the two is further left, so the best order of the tracks
/// is a linear ordering problem, of pairs with a cost each. It is solved as usual: greedily first (as
/// P. Eades, X. Lin and W. F. Smyth do for feedback arc sets, Information Processing Letters 47, 1993), then
/// each line in turn is put where it costs least, until none moves any more. Lines then share tracks as far
/// as that keeps their order.
///
/// Takes time in proportion to the square of the number of lines.
/// REQUIRES: terminals of different lines differ in y, by enough to tell their horizontal parts apart.
Tracks Routed(const std::vector<std::vector<Terminal>>& lines, double gap);

}  // namespace kxbench::drawing
