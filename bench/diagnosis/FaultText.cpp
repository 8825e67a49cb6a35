#include "bench/diagnosis/FaultText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>

namespace kxbench::diagnosis {

namespace {

/// Above, a break is a break; below, it is a bad joint.
constexpr double StillAJointOhm = 1e5;

/// Nets with more contacts are counted, not listed.
constexpr std::size_t MostListed = 6;

std::string Numbered(double value, const char* unit) {
  constexpr int digits = 4;
  std::array<char, 40> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, digits).ptr;
  return std::string(text.data(), end) + " " + unit;
}

std::string Counted(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

/// "1 (A1), 2 (A2) and 3 (A3)"; of a long list the beginning, and how many more.
std::string List(const Net& channels, const ChannelLabel& label) {
  const std::size_t shown = channels.size() > MostListed ? MostListed - 1 : channels.size();
  std::string text;
  for (std::size_t i = 0; i < shown; ++i) {
    const bool last = i > 0 && i + 1 == channels.size();
    text += (i == 0 ? "" : last ? " and " : ", ") + label(channels[i]);
  }
  if (shown < channels.size()) text += " and " + std::to_string(channels.size() - shown) + " more";
  return text;
}

std::string Numbers(const Net& net) {
  std::string text;
  for (const Channel channel : net) text += (text.empty() ? "" : ", ") + std::to_string(channel);
  return net.size() == 1 ? text : "(" + text + ")";
}

std::string NetsText(const Nets& nets) {
  std::string text;
  for (const Net& net : nets) text += (text.empty() ? "" : " ") + Numbers(net);
  return text;
}

std::string OpenText(const Fault& fault, const ChannelLabel& label) {
  const Net& off = fault.pieces[0];
  const Net& left = fault.pieces[1];
  const bool joint = fault.ohm && *fault.ohm < StillAJointOhm;
  const std::string what = joint ? "open, a joint of " + Numbered(*fault.ohm, "Ohm") + ": " : "open: ";
  if (off.size() == 1 && left.size() == 1) {
    return what + "the wire from " + label(std::min(off[0], left[0])) + " to " +
           label(std::max(off[0], left[0])) + "; look at its two contacts first, then along the wire";
  }
  if (off.size() == 1) {
    return what + label(off[0]) + " has come off " + List(left, label) + "; look at contact " +
           label(off[0]) + " first";
  }
  return what + List(off, label) + " have come off " + List(left, label) +
         "; look at the joint between these two groups first";
}

std::string ShortText(const Fault& fault, const ChannelLabel& label) {
  std::string text = "short: ";
  for (std::size_t i = 0; i < fault.nets.size() && i < MostListed; ++i) {
    text += (i == 0 ? "" : ", with ") + List(fault.nets[i], label);
  }
  if (fault.nets.size() > MostListed) {
    text += " and " + Counted(fault.nets.size() - MostListed, "net more", "nets more");
  }
  if (fault.ohm) text += ", " + Numbered(*fault.ohm, "Ohm");
  if (fault.closest.size() == 2) {
    text += "; look between " + label(fault.closest[0]) + " and " + label(fault.closest[1]) + " first";
  }
  return text;
}

/// Two-ended wires: that the other ends were exchanged instead looks the same.
bool EndIsUnknown(const Fault& fault) {
  return fault.kind == FaultKind::Swapped && fault.nets.size() == 2 &&
         std::all_of(fault.nets.begin(), fault.nets.end(), [](const Net& net) { return net.size() == 2; });
}

/// The other ends of two two-ended wires.
Net OtherEnds(const Fault& fault) {
  Net ends = ChannelsOf(fault.nets);
  std::erase_if(
      ends, [&](Channel channel) { return channel == fault.channels[0] || channel == fault.channels[1]; });
  return ends;
}

std::string SwappedText(const Fault& fault, const ChannelLabel& label) {
  const std::string text = "swapped: the wires on " + List(fault.channels, label);
  if (!EndIsUnknown(fault)) return text + "; exchange these two";
  return text + ", or their other ends on " + List(OtherEnds(fault), label) +
         "; two-ended wires do not tell which: look for the wrong end, exchange the two there";
}

std::string CrossedText(const Fault& fault, const ChannelLabel& label) {
  return "crossed: two nets are on each other's contacts at " + List(fault.channels, label) +
         "; exchange them there";
}

std::string MisplacedText(const Fault& fault, const ChannelLabel& label) {
  const bool firstUnused = std::any_of(fault.nets.begin(), fault.nets.end(),
                                       [&](const Net& net) { return net == Net{fault.channels[0]}; });
  const Channel unused = fault.channels[firstUnused ? 0 : 1];
  const Channel right = fault.channels[firstUnused ? 1 : 0];
  return "misplaced: the wire that belongs on " + label(right) + " is on " + label(unused) +
         ", which should be unused; move it to " + label(right);
}

std::string ShiftedText(const Fault& fault) {
  const std::size_t contacts = static_cast<std::size_t>(std::abs(fault.shift));
  return "plug shifted: every wire of " + fault.plugs[0] + " is " + Counted(contacts, "contact", "contacts") +
         (fault.shift > 0 ? " too high" : " too low") +
         (fault.around ? ", those past the end at the other end" : "") + "; look at how " + fault.plugs[0] +
         " is plugged in or numbered first";
}

std::string CompoundText(const Fault& fault, const ChannelLabel& label) {
  return "compound: " + Counted(fault.opens, "open", "opens") + " and " +
         Counted(fault.shorts, "short", "shorts") + " in " + Counted(fault.nets.size(), "net", "nets") +
         ", contacts " + List(fault.channels, label) +
         "; several faults hide each other: look at these nets contact by contact";
}

/// Which end of a two-ended wire it is, the text of one end says for both.
bool IsSaidAlready(const Explanation& first, const Explanation& other) {
  if (first.size() != 1 || other.size() != 1 || first[0].kind != other[0].kind) return false;
  const bool twoEnds =
      EndIsUnknown(first[0]) ||
      (first[0].kind == FaultKind::Open && first[0].pieces[0].size() == 1 && first[0].pieces[1].size() == 1);
  return twoEnds && first[0].nets == other[0].nets;
}

}  // namespace

std::string KindWord(FaultKind kind) {
  switch (kind) {
    case FaultKind::Open:
      return "open";
    case FaultKind::Short:
      return "short";
    case FaultKind::Swapped:
      return "swapped";
    case FaultKind::Crossed:
      return "crossed";
    case FaultKind::Misplaced:
      return "misplaced";
    case FaultKind::PlugsExchanged:
      return "plugs-exchanged";
    case FaultKind::PlugReversed:
      return "plug-reversed";
    case FaultKind::PlugShifted:
      return "plug-shifted";
    case FaultKind::HighResistance:
      return "high-resistance";
    case FaultKind::Voltage:
      return "voltage";
    case FaultKind::Compound:
      break;
  }
  return "compound";
}

std::string FaultText(const Fault& fault, const ChannelLabel& label) {
  switch (fault.kind) {
    case FaultKind::Open:
      return OpenText(fault, label);
    case FaultKind::Short:
      return ShortText(fault, label);
    case FaultKind::Swapped:
      return SwappedText(fault, label);
    case FaultKind::Crossed:
      return CrossedText(fault, label);
    case FaultKind::Misplaced:
      return MisplacedText(fault, label);
    case FaultKind::PlugsExchanged:
      return "plugs exchanged: " + fault.plugs[0] + " and " + fault.plugs[1] +
             " are in each other's place; exchange them";
    case FaultKind::PlugReversed:
      return "plug reversed: the contacts of " + fault.plugs[0] +
             " run from the last to the first; turn it round";
    case FaultKind::PlugShifted:
      return ShiftedText(fault);
    case FaultKind::HighResistance:
      return "high resistance: " + label(fault.channels[0]) + " to " + label(fault.channels[1]) + " has " +
             Numbered(*fault.ohm, "Ohm") + " instead of " + Numbered(*fault.expectedOhm, "Ohm") +
             "; look at the joints of these contacts";
    case FaultKind::Voltage:
      return "voltage: " + Numbered(fault.volts, "V") + " on " + label(fault.channels[0]) +
             "; remove the source and measure again, nothing else is known";
    case FaultKind::Compound:
      break;
  }
  return CompoundText(fault, label);
}

std::vector<std::string> AlternativeTexts(const Finding& finding, const ChannelLabel& label) {
  std::vector<std::string> texts;
  const Explanation& first = finding.explanations.front();
  for (std::size_t i = 1; i < finding.explanations.size(); ++i) {
    if (IsSaidAlready(first, finding.explanations[i])) continue;
    std::string text;
    for (const Fault& fault : finding.explanations[i]) {
      text += (text.empty() ? "or: " : ", and ") + FaultText(fault, label);
    }
    texts.push_back(std::move(text));
  }
  return texts;
}

std::string EvidenceText(const Finding& finding) {
  return "expected " + NetsText(finding.expected) + "; measured " + NetsText(finding.measured);
}

}  // namespace kxbench::diagnosis
