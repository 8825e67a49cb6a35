// Which faults are marked: those of a diagnosis, or of what a program wrote about one.

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <utility>

#include "bench/drawing/Drawing.h"
#include "bench/drawing/DrawingMarks.h"

namespace kxbench::drawing {

namespace {

using diagnosis::Fault;
using diagnosis::FaultKind;
using nlohmann::json;

constexpr std::array Kinds = {FaultKind::Open,         FaultKind::Short,       FaultKind::Swapped,
                              FaultKind::Crossed,      FaultKind::Misplaced,   FaultKind::PlugsExchanged,
                              FaultKind::PlugReversed, FaultKind::PlugShifted, FaultKind::HighResistance,
                              FaultKind::Voltage,      FaultKind::Compound};

FaultKind KindOf(const std::string& word) {
  const auto* const found = std::find_if(Kinds.begin(), Kinds.end(),
                                         [&](FaultKind kind) { return diagnosis::KindWord(kind) == word; });
  return found == Kinds.end() ? FaultKind::Compound : *found;
}

/// The diagnosis that was made of the nets in the output, which holds more than its faults do there.
std::vector<FaultMark> MarksOfNets(const json& nets, const HarnessPicture& picture) {
  diagnosis::Observation observation;
  observation.expected = nets.at("expected").get<diagnosis::Nets>();
  observation.measured = nets.at("measured").get<diagnosis::Nets>();
  if (observation.measured.empty()) return {};  // after a voltage
  std::map<std::int32_t, std::string> names;
  std::map<std::int32_t, std::string> labels;
  for (const DrawnPin& pin : picture.pins) {
    if (pin.channel <= 0) continue;
    labels.emplace(pin.channel, LongPinLabel(pin));
    if (!pin.label.empty()) names.emplace(pin.channel, pin.label);
  }
  observation.contacts = wiring::ContactsOf(names);
  return MarksOf(diagnosis::Diagnose(observation), [&](diagnosis::Channel channel) {
    const auto label = labels.find(channel);
    return label == labels.end() ? std::to_string(channel) : label->second;
  });
}

FaultMark MarkFromJson(const json& fault, const std::vector<FaultMark>& known) {
  FaultMark mark = MarkOf(fault.at("kind").get<std::string>(), fault.at("channels").get<diagnosis::Net>(),
                          fault.at("text").get<std::string>());
  const auto found = std::find_if(known.begin(), known.end(), [&](const FaultMark& each) {
    return each.fault.kind == mark.fault.kind && each.fault.channels == mark.fault.channels;
  });
  if (found != known.end()) {
    mark.fault = found->fault;
    mark.alternatives = found->alternatives;
    return mark;
  }
  for (const json& other : fault.value("alternatives", json::array())) {
    mark.alternatives.push_back("or: " + other.at("text").get<std::string>());
  }
  return mark;
}

}  // namespace

std::vector<FaultMark> MarksOf(const diagnosis::Diagnosis& diagnosis, const diagnosis::ChannelLabel& label) {
  std::vector<FaultMark> marks;
  for (const diagnosis::Finding& finding : diagnosis.findings) {
    for (const Fault& fault : finding.explanations.front()) {
      marks.push_back({fault, diagnosis::FaultText(fault, label), {}});
    }
    // They concern all faults of the finding, so they stand below the last.
    marks.back().alternatives = diagnosis::AlternativeTexts(finding, label);
  }
  for (const Fault& hint : diagnosis.hints) marks.push_back({hint, diagnosis::FaultText(hint, label), {}});
  return marks;
}

FaultMark MarkOf(const std::string& kind, const std::vector<std::int32_t>& channels,
                 const std::string& text) {
  FaultMark mark;
  mark.fault.kind = KindOf(kind);
  mark.fault.channels = channels;
  mark.text = text;
  return mark;
}

std::vector<FaultMark> MarksFromJson(const std::string& text, const HarnessPicture& picture) {
  try {
    const json object = json::parse(text);
    if (object.value("format", "") != "diagnosis") throw std::runtime_error("it is no diagnosis");
    if (object.value("version", 0) != 1)
      throw std::runtime_error("it is a diagnosis of another version than 1");
    const std::vector<FaultMark> known = MarksOfNets(object.at("nets"), picture);
    std::vector<FaultMark> marks;
    for (const json& fault : object.at("faults")) marks.push_back(MarkFromJson(fault, known));
    return marks;
  } catch (const json::parse_error&) {
    throw std::runtime_error("it is no JSON");
  } catch (const json::exception&) {
    throw std::runtime_error("it is no diagnosis");
  }
}

}  // namespace kxbench::drawing
