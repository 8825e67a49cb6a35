#include "bench/program/commands/DocumentOptions.h"

#include <algorithm>
#include <map>

#include "bench/program/system/Failure.h"
#include "text/FileAccess.h"
#include "text/Trim.h"

namespace kxbench {

namespace {

constexpr ChoiceWord<documents::DocumentFormat> DocumentFormatWords[] = {
    {"csv", documents::DocumentFormat::Csv},
    {"wireviz", documents::DocumentFormat::WireViz},
    {"kbl", documents::DocumentFormat::Kbl},
    {"json", documents::DocumentFormat::Json}};

/// Warnings that are told one by one.
constexpr std::size_t MostWarnings = 20;

std::set<std::string> Names(const std::string& text) {
  std::set<std::string> names;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    const std::string_view name = shorttest::Trim(std::string_view(text).substr(begin, end - begin));
    if (!name.empty()) names.emplace(name);
    begin = end + 1;
  }
  if (names.empty()) throw Failure("--splices: expected names, parted by commas");
  return names;
}

}  // namespace

void DocumentOptions::DeclareIn(OptionList& list) {
  list.Words("--from", DocumentFormatWords, "Format of the document (default: what its content looks like)",
             from_);
  list.Value("--columns", "LIST", "What the columns of a wiring list hold, from the left: from,-,to",
             columns_);
  list.Value("--splices", "NAMES", "Connectors that are splices: S1,S2",
             [this](const std::string& text) { splices_.merge(Names(text)); })
      .repeatable = true;
  list.Value("--prepend", "FILE", "WireViz file that is read before the document",
             [this](const std::string& file) { prepend_.push_back(file); })
      .repeatable = true;
}

namespace {

Failure UnknownSplice(const std::string& file, const std::string& splice) {
  return Failure("--splices: " + file + " has no connector " + splice);
}

}  // namespace

documents::DocumentRead DocumentOptions::Read(const std::string& file, bool wantsOwnMap) const {
  documents::DocumentRead read = documents::ReadDocument({file, from_, prepend_, columns_, wantsOwnMap});
  for (const std::string& splice : splices_) {
    const auto& pins = read.document.pins;
    const bool known =
        std::any_of(pins.begin(), pins.end(), [&](const auto& pin) { return pin.pin.connector == splice; });
    if (!known) throw UnknownSplice(file, splice);
  }
  read.document = documents::WithSplices(read.document, splices_);
  return read;
}

documents::ChannelMap MapInFile(const std::string& name) {
  return documents::ReadChannelMap(name, shorttest::ReadWholeFile(shorttest::AbsolutePath(name)));
}

void JoinUnmapped(documents::WiringDocument& document, const documents::ChannelMap& map) {
  const std::set<std::string> unknown = documents::ConnectorsWithoutChannel(document, map);
  struct Found {
    documents::Place place;
    std::size_t pins = 0;
  };
  std::map<std::string, Found> found;
  for (const documents::PlacedPin& pin : document.pins) {
    if (!unknown.contains(pin.pin.connector)) continue;
    Found& one = found.try_emplace(pin.pin.connector, Found{pin.place}).first->second;
    ++one.pins;
  }
  if (found.size() == document.connectors) return;
  for (const auto& [connector, one] : found) {
    if (one.pins < 2) continue;
    document.warnings.push_back({one.place, connector + " is not in the map: it is taken as a splice, its " +
                                                std::to_string(one.pins) + " pins as connected"});
  }
  document = documents::WithSplices(document, unknown);
}

void TellWarnings(const documents::WiringDocument& document, Interaction& interaction) {
  const auto& warnings = document.warnings;
  for (std::size_t i = 0; i < std::min(warnings.size(), MostWarnings); ++i) {
    interaction.Tell("warning: " + documents::PlaceText(warnings[i].place) + ": " +
                     OneLine(warnings[i].text));
  }
  if (warnings.size() > MostWarnings) {
    interaction.Tell("warning: " + std::to_string(warnings.size() - MostWarnings) + " warnings more");
  }
}

ExitStatus TellingMapFaults(Interaction& interaction, const std::function<ExitStatus()>& work) {
  try {
    return work();
  } catch (const documents::MapError& error) {
    for (const std::string& line : error.Lines()) interaction.Tell(OneLine(line));
    return ExitStatus::Failed;
  }
}

std::string FormatText(documents::DocumentFormat format) {
  switch (format) {
    case documents::DocumentFormat::Csv:
      return "wiring list";
    case documents::DocumentFormat::WireViz:
      return "WireViz";
    case documents::DocumentFormat::Kbl:
      return "KBL";
    case documents::DocumentFormat::Json:
      break;
  }
  return "JSON";
}

}  // namespace kxbench
