// Whether faults fit a picture: are they of its harness, are their channels in it?

#include "bench/drawing/DrawingFit.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <stdexcept>
#include <utility>

#include "bench/drawing/DrawingMarks.h"

namespace kxbench::drawing {

namespace {

using NetOfChannel = std::map<std::int32_t, diagnosis::Net>;

NetOfChannel ByChannel(const diagnosis::Nets& nets) {
  NetOfChannel byChannel;
  for (diagnosis::Net net : nets) {
    std::sort(net.begin(), net.end());
    if (net.size() < 2) continue;
    for (const std::int32_t channel : net) byChannel.emplace(channel, net);
  }
  return byChannel;
}

diagnosis::Nets NetsIn(const HarnessPicture& picture) {
  diagnosis::Nets nets;
  for (const DrawnNet& drawn : picture.nets) {
    diagnosis::Net& net = nets.emplace_back();
    for (const std::size_t pin : drawn.pins) {
      if (picture.pins[pin].channel > 0) net.push_back(picture.pins[pin].channel);
    }
  }
  return nets;
}

/// "14, 15 and 3 more", without the channel itself.
std::string OthersText(const NetOfChannel& nets, std::int32_t channel) {
  constexpr std::size_t most = 4;
  const auto net = nets.find(channel);
  if (net == nets.end()) return "nothing";
  std::string text;
  for (std::size_t i = 0; i < std::min(most + 1, net->second.size()); ++i) {
    if (net->second[i] != channel) text += (text.empty() ? "" : ", ") + std::to_string(net->second[i]);
  }
  if (net->second.size() > most + 1) text += " and more";
  return text;
}

std::set<std::int32_t> ChannelsIn(const HarnessPicture& picture) {
  std::set<std::int32_t> channels;
  for (const DrawnPin& pin : picture.pins) {
    if (pin.channel > 0) channels.insert(pin.channel);
  }
  return channels;
}

/// The channels of a fault that the picture has not.
diagnosis::Net Missing(const std::set<std::int32_t>& drawn, const FaultMark& mark) {
  diagnosis::Net missing;
  std::copy_if(mark.fault.channels.begin(), mark.fault.channels.end(), std::back_inserter(missing),
               [&](std::int32_t channel) { return !drawn.contains(channel); });
  return missing;
}

std::string ListText(const diagnosis::Net& channels) {
  std::string text = channels.size() == 1 ? "channel " : "channels ";
  constexpr std::size_t most = 6;
  for (std::size_t i = 0; i < std::min(most, channels.size()); ++i) {
    text += (i == 0 ? "" : ", ") + std::to_string(channels[i]);
  }
  if (channels.size() > most) text += " and " + std::to_string(channels.size() - most) + " more";
  return text;
}

}  // namespace

std::map<std::int32_t, std::string> LabelsIn(const HarnessPicture& picture) {
  std::map<std::int32_t, std::string> labels;
  for (const DrawnPin& pin : picture.pins) {
    if (pin.channel > 0) labels.emplace(pin.channel, LongPinLabel(pin));
  }
  return labels;
}

void RequireSameNets(const diagnosis::Nets& expected, const HarnessPicture& picture) {
  if (expected.empty() || ChannelsIn(picture).empty()) return;
  const NetOfChannel theirs = ByChannel(expected);
  const NetOfChannel drawn = ByChannel(NetsIn(picture));
  std::set<std::int32_t> channels;
  for (const auto& [channel, net] : theirs) channels.insert(channel);
  for (const auto& [channel, net] : drawn) channels.insert(channel);
  for (const std::int32_t channel : channels) {
    const auto a = theirs.find(channel);
    const auto b = drawn.find(channel);
    if (a != theirs.end() && b != drawn.end() && a->second == b->second) continue;
    throw std::runtime_error("it is a diagnosis of another harness than " + picture.title +
                             ": it expects channel " + std::to_string(channel) + " connected with " +
                             OthersText(theirs, channel) + ", " + picture.title + " with " +
                             OthersText(drawn, channel));
  }
}

std::string MarkedText(const HarnessPicture& picture, const std::vector<FaultMark>& marks) {
  const std::set<std::int32_t> drawn = ChannelsIn(picture);
  const auto marked =
      static_cast<std::size_t>(std::count_if(marks.begin(), marks.end(), [&](const FaultMark& mark) {
        return Missing(drawn, mark).size() < mark.fault.channels.size();
      }));
  const std::string text = std::to_string(marked) + (marked == 1 ? " fault marked" : " faults marked");
  return marked == marks.size() ? text
                                : text + ", " + std::to_string(marks.size() - marked) + " in the list alone";
}

std::vector<std::string> UnmarkedTexts(const HarnessPicture& picture, const std::vector<FaultMark>& marks) {
  const std::set<std::int32_t> drawn = ChannelsIn(picture);
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < marks.size(); ++i) {
    const std::string fault = "F" + std::to_string(i + 1);
    const diagnosis::Net missing = Missing(drawn, marks[i]);
    if (marks[i].fault.channels.empty()) {
      lines.push_back(fault + " is marked nowhere: " + marks[i].text);
    } else if (!missing.empty()) {
      lines.push_back(fault +
                      (missing == marks[i].fault.channels ? " is marked nowhere: " : " is marked in part: ") +
                      picture.title + " has no " + ListText(missing));
    }
  }
  return lines;
}

}  // namespace kxbench::drawing
