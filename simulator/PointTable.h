#pragma once

#include <map>
#include <string>
#include <string_view>

#include "simulator/DescriptionWords.h"
#include "simulator/DeviceDescription.h"

namespace simulator {

/// The points that a description speaks of: channel numbers, names of channels, names of inner nodes.
class PointTable {
 public:
  /// Gives a channel a name / makes an inner node of that name. Throws DescriptionError when the name is
  /// taken or is not a name.
  void NameChannel(const Word& name, const Word& number);
  void AddNode(const Word& name);

  /// An inner node without a name. Throws DescriptionError for `position` when there are MaxInnerNodes
  /// already.
  Point AddNode(const Position& position);

  /// The point that a word names. Throws DescriptionError when it names none.
  Point Find(const Word& word);

  /// Same for a channel; inner nodes are refused.
  Point FindChannel(const Word& word);

  int InnerNodes() const { return innerNodes_; }

  /// Where every channel was named first.
  const std::map<Point, Position>& UsedChannels() const { return usedChannels_; }

 private:
  void Name(const Word& name, Point point);
  Point ChannelNumber(const Word& word);

  std::map<std::string, Point, std::less<>> names_;
  std::map<Point, Position> usedChannels_;
  int innerNodes_ = 0;
};

}  // namespace simulator
