#include <algorithm>
#include <optional>
#include <utility>

#include "bench/comparison/WiringComparison.h"
#include "bench/program/Commands.h"
#include "bench/program/commands/DocumentOptions.h"
#include "bench/program/host/ContradictionWarnings.h"
#include "bench/program/host/ExpectationGate.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/host/Project.h"
#include "bench/program/output/Output.h"
#include "bench/program/system/Failure.h"
#include "bench/wiring/UnknownPairs.h"
#include "text/FileAccess.h"

namespace kxbench {

namespace {

enum class ComparisonFormat { Report, Json };

constexpr ChoiceWord<ComparisonFormat> ComparisonFormatWords[] = {{"report", ComparisonFormat::Report},
                                                                  {"json", ComparisonFormat::Json}};

bool HasNamedPin(const documents::Wiring& wiring) {
  return std::any_of(wiring.pins.begin(), wiring.pins.end(),
                     [](const auto& pin) { return !pin.second.connector.empty(); });
}

class CompareCommand : public Command {
 public:
  std::string Name() const override { return "compare"; }
  std::string Summary() const override { return "Compare the harness A with B, which says how it should be"; }
  std::string Notes() const override {
    return "A and B are expectation files or documents (see import). They are compared channel by channel "
           "where each\n"
           "is an expectation, or a document with a map; else pin by pin, by the channels' names in the "
           "project's ini file.\n"
           "Exit status: 0 they are equal, 1 they differ, 2 they cannot be compared.";
  }

  void Declare(OptionList& list) override {
    list.Argument("A", "Expectation file or document", Needed::Yes, a_);
    list.Argument("B", "Expectation file or document that says how it should be", Needed::Yes, b_);
    list.Show({"--project"});
    list.Value("--map", "MAP", "Which pin is on which channel: a table with connector, pin, channel", map_);
    list.Value("--map-a", "MAP", "The same for A alone", mapA_);
    list.Value("--map-b", "MAP", "The same for B alone", mapB_);
    options_.DeclareIn(list);
    list.Words("--format", ComparisonFormatWords, "A report to read, or one JSON object", format_);
  }

  ExitStatus Run(const CommonOptions& common) override {
    Interaction interaction(Surface::Silent, std::nullopt);
    return TellingMapFaults(interaction, [&] { return CompareBoth(common, interaction); });
  }

 private:
  ExitStatus CompareBoth(const CommonOptions& common, Interaction& interaction) const {
    const comparison::ComparedSide a = Side(a_, mapA_, common, interaction);
    const comparison::ComparedSide b = Side(b_, mapB_, common, interaction);
    for (const auto& [side, other] : {std::pair(&a, &b), std::pair(&b, &a)}) {
      if (side->hasChannels && !other->hasChannels && !HasNamedPin(side->wiring)) {
        throw Failure("no channel of " + side->name + " has a name that shows connector and pin, so " +
                      other->name + " needs a map: --map MAP.csv");
      }
    }
    const comparison::WiringComparison comparison = comparison::Compare(a, b);
    StandardOutput().Write(format_ == ComparisonFormat::Json ? comparison::ComparisonJson(comparison)
                                                             : comparison::ComparisonReport(comparison));
    return comparison.Equal() ? ExitStatus::NoFindings : ExitStatus::Findings;
  }

  comparison::ComparedSide Side(const std::string& file, const std::optional<std::string>& ownMap,
                                const CommonOptions& common, Interaction& interaction) const {
    const std::string content = shorttest::ReadWholeFile(
        shorttest::AbsolutePath(file), documents::MostDocumentBytes, shorttest::ReadFrom::Anything);
    if (documents::IsExpectation(content)) {
      if (ownMap) throw Failure(file + " is an expectation file and takes no map");
      return ExpectationSide(file, common, interaction);
    }
    return DocumentSide(file, ownMap ? ownMap : map_, interaction);
  }

  static comparison::ComparedSide ExpectationSide(const std::string& file, const CommonOptions& common,
                                                  Interaction& interaction) {
    const ExpectationGate gate(false, [&interaction](const std::string& line) { interaction.Tell(line); });
    const wiring::ExpectationFacts facts = gate.AdmitFile("", file);
    const wiring::ChannelNames names(ProjectOf(common.project, file).IniFile());
    comparison::ComparedSide side;
    side.name = file;
    side.wiring = documents::WiringOf(facts, names);
    side.isExpectation = true;
    const TShortTestData data(file);
    side.unknownPairs = wiring::UnknownPairsIn(data);
    const std::vector<wiring::Contradiction> contradictions = wiring::ContradictionsIn(data);
    for (const auto& pair : contradictions) side.contradictoryPairs.emplace_back(pair.lower, pair.higher);
    TellContradictions(file, contradictions, names, interaction);
    for (const auto& [channel, pin] : side.wiring.pins) {
      std::string name = names.Name(channel);
      if (!name.empty()) side.names[channel] = std::move(name);
    }
    return side;
  }

  comparison::ComparedSide DocumentSide(const std::string& file, const std::optional<std::string>& mapFile,
                                        Interaction& interaction) const {
    documents::DocumentRead read = options_.Read(file, !mapFile);
    comparison::ComparedSide side;
    side.name = file;
    side.hasChannels = mapFile || read.ownMap;
    if (side.hasChannels) {
      const documents::ChannelMap map = mapFile ? MapInFile(*mapFile) : std::move(*read.ownMap);
      JoinUnmapped(read.document, map);
      side.wiring = documents::WiringOf(read.document, map);
    } else {
      side.wiring = documents::WiringOfPins(read.document);
    }
    TellWarnings(read.document, interaction);
    return side;
  }

  std::string a_;
  std::string b_;
  std::optional<std::string> map_;
  std::optional<std::string> mapA_;
  std::optional<std::string> mapB_;
  DocumentOptions options_;
  ComparisonFormat format_ = ComparisonFormat::Report;
};

}  // namespace

std::unique_ptr<Command> MakeCompareCommand() { return std::make_unique<CompareCommand>(); }

}  // namespace kxbench
