// Which faults are marked: those of a diagnosis, or of what a program wrote about one.

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <utility>

#include "bench/drawing/Drawing.h"
#include "bench/drawing/DrawingFit.h"

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

using FaultTextOf = std::function<std::string(const Fault&)>;

/// Another explanation may have other moves and the same words.
void AddAlternative(std::vector<std::string>& alternatives, const std::string& text,
                    const std::string& alternative) {
  const bool known = alternative == "or: " + text ||
                     std::find(alternatives.begin(), alternatives.end(), alternative) != alternatives.end();
  if (!known) alternatives.push_back(alternative);
}

/// diagnosis::AlternativeTexts with these texts of the faults.
std::vector<std::string> AlternativesWithTexts(const diagnosis::Finding& finding,
                                               const diagnosis::ChannelLabel& label,
                                               const FaultTextOf& text) {
  std::string all;
  for (const Fault& fault : finding.explanations.front()) all += (all.empty() ? "" : ", and ") + text(fault);
  const std::vector<std::string> wanted = diagnosis::AlternativeTexts(finding, label);
  std::vector<std::string> alternatives;
  for (std::size_t i = 1; i < finding.explanations.size(); ++i) {
    std::string made;
    std::string given;
    for (const Fault& fault : finding.explanations[i]) {
      made += (made.empty() ? "or: " : ", and ") + diagnosis::FaultText(fault, label);
      given += (given.empty() ? "or: " : ", and ") + text(fault);
    }
    if (std::find(wanted.begin(), wanted.end(), made) == wanted.end()) continue;
    AddAlternative(alternatives, all, given);
  }
  return alternatives;
}

std::vector<FaultMark> MarksWithTexts(const diagnosis::Diagnosis& diagnosis,
                                      const diagnosis::ChannelLabel& label, const FaultTextOf& text) {
  std::vector<FaultMark> marks;
  for (const diagnosis::Finding& finding : diagnosis.findings) {
    for (const Fault& fault : finding.explanations.front()) marks.push_back({fault, text(fault), {}});
    // They concern all faults of the finding, so they stand below the last.
    marks.back().alternatives = AlternativesWithTexts(finding, label, text);
  }
  for (const Fault& hint : diagnosis.hints) marks.push_back({hint, text(hint), {}});
  return marks;
}

/// The texts of all faults in the output, by kind and channels.
using KeptTexts = std::map<std::pair<FaultKind, diagnosis::Net>, std::set<std::string>>;

KeptTexts TextsIn(const json& faults) {
  KeptTexts texts;
  const auto add = [&](const json& fault) {
    texts[{KindOf(fault.at("kind").get<std::string>()), fault.at("channels").get<diagnosis::Net>()}].insert(
        fault.at("text").get<std::string>());
  };
  for (const json& fault : faults) {
    add(fault);
    for (const json& other : fault.value("alternatives", json::array())) add(other);
  }
  return texts;
}

/// The text of a fault without what was measured: ", 0.2 Ohm" or ", a joint of 500 Ohm".
std::string WithoutOhm(std::string text) {
  const std::string unit = " Ohm";
  const std::size_t end = text.find(unit);
  const std::size_t begin = end == std::string::npos ? end : text.rfind(", ", end);
  if (begin != std::string::npos) text.erase(begin, end + unit.size() - begin);
  return text;
}

/// The diagnosis that was made of the nets in the output, which holds more than its faults do there, but not
/// what was measured in Ohm: that is in the texts alone.
std::vector<FaultMark> MarksOfNets(const diagnosis::Observation& observation, const KeptTexts& texts,
                                   const std::map<std::int32_t, std::string>& labels) {
  const auto label = [&](diagnosis::Channel channel) {
    const auto found = labels.find(channel);
    return found == labels.end() ? std::to_string(channel) : found->second;
  };
  const FaultTextOf text = [&](const Fault& fault) {
    std::string made = diagnosis::FaultText(fault, label);
    const auto kept = texts.find({fault.kind, fault.channels});
    if (kept == texts.end()) return made;
    // Another explanation may have this kind and these channels in other words.
    const std::string words = WithoutOhm(made);
    const auto same = std::find_if(kept->second.begin(), kept->second.end(),
                                   [&](const std::string& each) { return WithoutOhm(each) == words; });
    return same == kept->second.end() ? made : *same;
  };
  return MarksWithTexts(diagnosis::Diagnose(observation), label, text);
}

diagnosis::Observation ObservationIn(const json& nets, const HarnessPicture& picture) {
  diagnosis::Observation observation;
  observation.expected = nets.at("expected").get<diagnosis::Nets>();
  observation.measured = nets.at("measured").get<diagnosis::Nets>();
  std::map<std::int32_t, std::string> names;
  for (const DrawnPin& pin : picture.pins) {
    if (pin.channel > 0 && !pin.label.empty()) names.emplace(pin.channel, pin.label);
  }
  observation.contacts = wiring::ContactsOf(names);
  return observation;
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
    AddAlternative(mark.alternatives, mark.text, "or: " + other.at("text").get<std::string>());
  }
  return mark;
}

}  // namespace

std::vector<FaultMark> MarksOf(const diagnosis::Diagnosis& diagnosis, const diagnosis::ChannelLabel& label) {
  return MarksWithTexts(diagnosis, label,
                        [&](const Fault& fault) { return diagnosis::FaultText(fault, label); });
}

FaultMark MarkOf(const std::string& kind, const std::vector<std::int32_t>& channels,
                 const std::string& text) {
  FaultMark mark;
  mark.fault.kind = KindOf(kind);
  mark.fault.channels = channels;
  mark.text = text;
  return mark;
}

KeptDiagnosis DiagnosisFromJson(const std::string& text, const HarnessPicture& picture) {
  try {
    const json object = json::parse(text);
    if (object.value("format", "") != "diagnosis") throw std::runtime_error("it is no diagnosis");
    if (object.value("version", 0) != 1)
      throw std::runtime_error("it is a diagnosis of another version than 1");
    const diagnosis::Observation observation = ObservationIn(object.at("nets"), picture);
    RequireSameNets(observation.expected, picture);
    std::vector<FaultMark> known;
    // After a voltage nothing was measured.
    if (!observation.measured.empty()) {
      known = MarksOfNets(observation, TextsIn(object.at("faults")), LabelsIn(picture));
    }
    KeptDiagnosis kept;
    for (const json& fault : object.at("faults")) kept.marks.push_back(MarkFromJson(fault, known));
    const std::string verdict = object.value("verdict", "pass");
    if (verdict != "pass" && verdict != "fail") throw std::runtime_error("it is no diagnosis");
    // A hint changes no verdict.
    kept.failed = std::any_of(kept.marks.begin(), kept.marks.end(), [](const FaultMark& mark) {
      return mark.fault.kind != FaultKind::HighResistance;
    });
    if (verdict == "fail" && !kept.failed) {
      kept.failed = true;
      const bool same = diagnosis::Ordered(observation.expected) == diagnosis::Ordered(observation.measured);
      kept.marks.insert(
          kept.marks.begin(),
          MarkOf("compound", {},
                 std::string("the check failed, though ") +
                     (same ? "the nets are as expected" : "no fault is named") + "; look at its records"));
    }
    return kept;
  } catch (const json::parse_error&) {
    throw std::runtime_error("it is no JSON");
  } catch (const json::exception&) {
    throw std::runtime_error("it is no diagnosis");
  }
}

}  // namespace kxbench::drawing
