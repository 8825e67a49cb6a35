#pragma once

#include "simulator/Branch.h"

namespace simulator {

/// Sizes of the largest tester.
constexpr int MaxCards = 5;
constexpr int ChannelsPerCard = 48;
constexpr int MaxChannels = MaxCards * ChannelsPerCard;
constexpr int LineCount = 2;
constexpr int CardLineCount = MaxCards * LineCount;

/// Number of a card's line over all cards, in the order of the bus addresses; both count from 0.
constexpr int CardLineIndex(int card, int line) { return LineCount * card + line; }

/// Nodes of the circuit that tester and device form together.
namespace nodes {

/// The tester's two measurement lines, between which the instrument sits.
constexpr Node Line(int line) { return static_cast<Node>(line); }

/// The tester's ground.
constexpr Node Ground = LineCount;

/// The piece of a line that lies on one card (card counted from 0).
constexpr Node CardLine(int card, int line) {
  return Ground + 1 + static_cast<Node>(CardLineIndex(card, line));
}

/// The points of the device: first all channels (counted from 0), after them its inner nodes.
constexpr Node FirstPoint = CardLine(MaxCards, 0);
constexpr Node Point(int point) { return FirstPoint + static_cast<Node>(point); }

}  // namespace nodes
}  // namespace simulator
