#pragma once

#include <string>
#include <vector>

#include "plugin/data/ShorttestData.h"
#include "plugin/editor/ConnectionTexts.h"

namespace shorttest {

/// What the connection texts say, read a second time: literal, slow, and sharing nothing with the reader
/// under test but the cells' type.
struct PlainConnections {
  std::vector<std::vector<CellState>> pairs;  ///< row i holds the pairs (i, 0) .. (i, i)
  bool failed = false;                        ///< at a bad item; the pairs are as they were then
};

/// The matrix over `von`..`bis` that the texts give.
/// REQUIRES: a few dozen channels at most.
PlainConnections ReadConnectionsPlainly(const ConnectionTexts& texts, std::int32_t von, std::int32_t bis);

/// The texts of a matrix, every pair looked at from both sides in ascending order.
ConnectionTexts WriteConnectionsPlainly(const TShortTestData& data);

/// In what `data` differs from `expected`; empty when in nothing.
std::string Difference(const TShortTestData& data, const PlainConnections& expected);

}  // namespace shorttest
