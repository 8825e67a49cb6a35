#include "simulator/PointTable.h"

#include <algorithm>
#include <array>
#include <optional>

#include "simulator/DescriptionLimits.h"
#include "simulator/Quantity.h"

namespace simulator {
namespace {

/// Words with a meaning of their own after points: they cannot be names.
constexpr std::array<std::string_view, 4> ReservedWords{"each", "never", "series", "tau"};

bool StartsWithDigit(const Word& word) {
  return !word.text.empty() && word.text.front() >= '0' && word.text.front() <= '9';
}

bool IsName(const Word& word) {
  const bool reserved =
      std::find(ReservedWords.begin(), ReservedWords.end(), word.text) != ReservedWords.end();
  return !word.quoted && !StartsWithDigit(word) && !reserved;
}

}  // namespace

void PointTable::Name(const Word& name, Point point) {
  if (!IsName(name)) ThrowMistake(name.position, "'" + name.text + "' cannot be the name of a point");
  if (!names_.try_emplace(name.text, point).second) {
    ThrowMistake(name.position, "the name '" + name.text + "' is already taken");
  }
}

void PointTable::NameChannel(const Word& name, const Word& number) { Name(name, ChannelNumber(number)); }

void PointTable::AddNode(const Word& name) { Name(name, AddNode(name.position)); }

Point PointTable::AddNode(const Position& position) {
  if (innerNodes_ == MaxInnerNodes) {
    ThrowMistake(position, "too many points: there may be " + std::to_string(MaxInnerNodes) +
                               " inner nodes, those of nets and joints included");
  }
  return MaxChannels + innerNodes_++;
}

Point PointTable::ChannelNumber(const Word& word) {
  const std::optional<std::int64_t> number = ReadInteger(word.text);
  if (!number || *number < 1 || *number > MaxChannels) {
    ThrowMistake(word.position,
                 "'" + word.text + "' is no channel number (1 to " + std::to_string(MaxChannels) + ")");
  }
  return static_cast<Point>(*number) - 1;
}

Point PointTable::Find(const Word& word) {
  if (StartsWithDigit(word) && !word.quoted) {
    const Point channel = ChannelNumber(word);
    usedChannels_.try_emplace(channel, word.position);
    return channel;
  }
  const auto found = names_.find(word.text);
  if (found == names_.end() || word.quoted) {
    ThrowMistake(word.position,
                 "there is no point '" + word.text + "' (declare it with 'channel' or 'node' first)");
  }
  if (found->second < MaxChannels) usedChannels_.try_emplace(found->second, word.position);
  return found->second;
}

Point PointTable::FindChannel(const Word& word) {
  const Point point = Find(word);
  if (point >= MaxChannels)
    ThrowMistake(word.position, "'" + word.text + "' is an inner node, not a channel");
  return point;
}

}  // namespace simulator
