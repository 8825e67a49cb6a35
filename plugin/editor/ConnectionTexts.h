#pragma once

#include <string>
#include <vector>

#include "plugin/data/ShorttestData.h"

namespace shorttest {

/// An expectation as the user edits it, in channel numbers.
struct ConnectionTexts {
  std::vector<std::string> expected;  ///< one line a group of connected channels: "1 2 3"
  std::vector<std::string> skipped;   ///< excluded pairs: the line's first channel with each of the others
  std::string blocked;                ///< channels that take no part; written with a leading blank

  friend bool operator==(const ConnectionTexts&, const ConnectionTexts&) = default;
};

/// The texts of a matrix. A group stands on the line of its lowest channel, its partners in ascending order;
/// channels without partners get no line. Excluded pairs stand one a line, in ascending order. Every blocked
/// channel is written with a blank in front, the first one too; reading accepts that.
ConnectionTexts TextsFromMatrix(const TShortTestData& data);

/// Rebuilds the whole matrix from the texts; pairs that no text names become NotConnected, and all measured
/// resistances are lost, because an edited expectation carries no measurements. Excluding a pair wins over
/// connecting it. Items are separated by blanks or commas, see SplitDelimited; lines without items are
/// skipped. Throws what ChannelIndex throws at the first bad item, with its place, and leaves the matrix
/// reset and filled up to there: the pairs not reached are Unknown.
void MatrixFromTexts(const ConnectionTexts& texts, TShortTestData& data);

}  // namespace shorttest
