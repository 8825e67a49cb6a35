#include "bench/program/commands/SelfTestReport.h"

#include <cstddef>
#include <nlohmann/json.hpp>

#include "bench/program/output/Table.h"

namespace kxbench {

namespace {

constexpr std::int32_t RelaysPerLine = 48;
constexpr int SelfTestJsonVersion = 1;

const char* WordOf(TesterDefectKind kind) {
  switch (kind) {
    case TesterDefectKind::NeverCloses:
      return "never-closes";
    case TesterDefectKind::NeverOpens:
      return "never-opens";
    case TesterDefectKind::NoCard:
      return "no-card";
    case TesterDefectKind::NotEmpty:
      return "not-empty";
    case TesterDefectKind::Voltage:
      break;
  }
  return "voltage";
}

/// Whether two defects in a row are told of in one line: the two relays of a channel of which at least one
/// never closes, or of a card whose lines are connected.
bool IsOne(const TesterDefect& a, const TesterDefect& b) {
  return a.kind == b.kind && a.card == b.card && a.channel == b.channel && (!a.certain || !a.channel) &&
         a.line.has_value() && b.line.has_value();
}

std::string PlaceOf(const TesterDefect& defect, const wiring::ChannelNames& names) {
  std::string text = "card " + std::to_string(defect.card);
  if (!defect.channel) return text;
  text += ", channel " + names.Labelled(*defect.channel);
  if (defect.line) {
    text += ", relay " + std::to_string((*defect.channel - 1) % RelaysPerLine + 1);
    if (defect.certain) text += " on line " + std::to_string(*defect.line);
  }
  return text;
}

std::string WhatIsWrong(const TesterDefect& defect) {
  switch (defect.kind) {
    case TesterDefectKind::NeverCloses:
      if (defect.certain) return "never closes";
      return "the one on line 0 or the one on line 1 never closes, or neither does";
    case TesterDefectKind::NeverOpens:
      if (defect.channel) return "never opens";
      return "line 0 and line 1 are connected with every relay open: a relay on either never opens. "
             "The channels of this card were not tested";
    case TesterDefectKind::NoCard:
      return "does not answer";
    case TesterDefectKind::NotEmpty:
      return defect.certain ? "not empty, connected to another channel" : "possibly not empty";
    case TesterDefectKind::Voltage:
      break;
  }
  return "carries a voltage (" + ShortNumber(defect.volts) + " V)";
}

bool FoundVoltage(const SelfTestSummary& summary) {
  return !summary.defects.empty() && summary.defects.back().kind == TesterDefectKind::Voltage;
}

std::string CardsText(const std::vector<std::int32_t>& cards) {
  std::string text;
  for (const std::int32_t card : cards) text += (text.empty() ? "" : ", ") + std::to_string(card);
  return (cards.size() == 1 ? "card " : "cards ") + (text.empty() ? "none" : text);
}

}  // namespace

std::string SelfTestReport(const SelfTestSummary& summary, const wiring::ChannelNames& names) {
  std::string report = "Self-test of the channels " + std::to_string(summary.firstChannel) + " to " +
                       std::to_string(summary.lastChannel) + ", " + CardsText(summary.cards) + "\n\n";
  std::size_t count = 0;
  for (std::size_t i = 0; i < summary.defects.size(); ++i) {
    const TesterDefect& defect = summary.defects[i];
    if (i > 0 && IsOne(summary.defects[i - 1], defect)) continue;
    report += std::string(Indent, ' ') + PlaceOf(defect, names) + ": " + WhatIsWrong(defect) + "\n";
    ++count;
  }
  if (count == 0) return report + "no defects\n";
  report += "\n";
  if (FoundVoltage(summary)) report += "The fixture is live: no relay was tested.\n";
  return report + "FAIL: " + std::to_string(count) + (count == 1 ? " defect\n" : " defects\n");
}

std::string SelfTestJson(const SelfTestSummary& summary) {
  using Json = nlohmann::ordered_json;
  const auto number = [](const std::optional<std::int32_t>& value) { return value ? Json(*value) : Json(); };
  Json defects = Json::array();
  for (const TesterDefect& defect : summary.defects) {
    Json one = {{"kind", WordOf(defect.kind)},
                {"card", defect.card},
                {"line", number(defect.line)},
                {"channel", number(defect.channel)},
                {"certain", defect.certain}};
    if (defect.kind == TesterDefectKind::Voltage) one["volts"] = defect.volts;
    defects.push_back(std::move(one));
  }
  const Json all = {{"format", "selftest"},
                    {"version", SelfTestJsonVersion},
                    {"verdict", summary.defects.empty() ? "pass" : "fail"},
                    {"channels", {summary.firstChannel, summary.lastChannel}},
                    {"cards", summary.cards},
                    {"defects", std::move(defects)}};
  return all.dump() + "\n";
}

ExitStatus StatusOf(const SelfTestSummary& summary) {
  return summary.defects.empty() ? ExitStatus::NoFindings : ExitStatus::Findings;
}

}  // namespace kxbench
