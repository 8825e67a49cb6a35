#include <algorithm>
#include <optional>
#include <utility>

#include "bench/program/Commands.h"
#include "bench/program/commands/DocumentOptions.h"
#include "bench/program/commands/ImportFiles.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/output/Output.h"
#include "bench/program/output/Table.h"
#include "bench/program/system/Failure.h"
#include "text/NumberText.h"

namespace kxbench {

namespace {

enum class ImportFormat { Report, Json };

constexpr ChoiceWord<ImportFormat> ImportFormatWords[] = {{"report", ImportFormat::Report},
                                                          {"json", ImportFormat::Json}};

std::string Summary(const std::string& file, const documents::DocumentRead& read,
                    const documents::Wiring& wiring) {
  const documents::WiringDocument& document = read.document;
  const auto single = std::count_if(document.nets.begin(), document.nets.end(),
                                    [](const documents::DocumentNet& net) { return net.pins.size() == 1; });
  std::string text = "Document " + file + " (" + FormatText(read.format) + ")\n\n";
  text += Entry("Connectors", std::to_string(document.connectors));
  text += Entry("Pins", std::to_string(document.pins.size()));
  text += Entry("Wires", std::to_string(document.wires));
  text += Entry("Nets", std::to_string(wiring.nets.size()));
  text += Entry("Splices", std::to_string(document.splices));
  text += Entry("Single pins", std::to_string(single));
  text += Entry("Warnings", std::to_string(document.warnings.size()));
  text += Entry("Channels", std::to_string(wiring.pins.begin()->first) + " to " +
                                std::to_string(wiring.pins.rbegin()->first));
  return text;
}

std::string AdapterText(const documents::ChannelMap& map) {
  constexpr std::size_t Width = 96;
  std::string text = "\nAdapter to be wired, pins in the order of the channels:\n";
  for (const documents::AdapterLine& line : documents::AdapterLines(map)) {
    std::size_t indent = Indent;
    for (const std::string& part : Wrapped(line.connector + ": " + line.text, Width)) {
      text += std::string(indent, ' ') + part + "\n";
      indent = 2 * Indent;
    }
  }
  return text;
}

class ImportCommand : public Command {
 public:
  std::string Name() const override { return "import"; }
  std::string Summary() const override { return "Make an expectation of a harness's document"; }
  std::string Notes() const override {
    return "DOCUMENT is a wiring list (CSV), a WireViz file (YAML), a KBL file (XML), or what export --to "
           "json wrote.\n"
           "Pins of one net are connected, all others are not. A FILE that exists keeps its thresholds and "
           "options.\n"
           "With --assign the map goes to the file of --map, or beside FILE: cable.map.csv for cable.dat.";
  }

  void Declare(OptionList& list) override {
    list.Argument("DOCUMENT", "The harness's document", Needed::Yes, document_);
    list.Value("-o", "FILE", "Expectation file that is written", output_);
    list.Value("--map", "MAP", "Which pin is on which channel: a table with connector, pin, channel", map_);
    list.Value("--assign", "FIRST", "Give the pins channels from FIRST on, and write the map",
               [this](const std::string& text) { assign_ = ReadFirst(text); });
    list.Value("--names", "PROJECT.ini", "Write the pins as the channels' names into this ini file", names_);
    options_.DeclareIn(list);
    list.Flag("--dry-run", "Write nothing", dryRun_);
    list.Words("--format", ImportFormatWords, "A summary to read, or the wiring as one JSON object", format_);
    list.Flag("--overwrite", "Replace a FILE that is damaged, and a map that differs", overwrite_);
  }

  ExitStatus Run(const CommonOptions& /*common*/) override {
    if (!output_ && !dryRun_) throw Failure("import needs -o FILE, or --dry-run");
    Interaction interaction(Surface::Silent, std::nullopt);
    return TellingMapFaults(interaction, [&] { return Import(interaction); });
  }

 private:
  static std::int32_t ReadFirst(const std::string& text) {
    const auto first = shorttest::TextToInteger(text);
    if (!first || *first < 1) throw Failure("--assign: expected the first channel, from 1, not " + text);
    return *first;
  }

  ExitStatus Import(Interaction& interaction) {
    documents::DocumentRead read = options_.Read(document_, !map_ && !assign_);
    const documents::ChannelMap map = MapFor(read);
    const documents::Wiring wiring = documents::WiringOf(read.document, map);
    TellWarnings(read.document, interaction);
    std::vector<std::string> written;
    if (!dryRun_) written = WriteImport(Files(), wiring, map);
    if (format_ == ImportFormat::Json) {
      StandardOutput().Write(documents::WiringJson(wiring));
      return ExitStatus::NoFindings;
    }
    std::string report = kxbench::Summary(document_, read, wiring);
    if (assign_) report += AdapterText(map);
    report += "\n" + (dryRun_ ? std::string("Nothing was written.") : WrittenText(written)) + "\n";
    StandardOutput().Write(report);
    return ExitStatus::NoFindings;
  }

  documents::ChannelMap MapFor(documents::DocumentRead& read) const {
    if (assign_) return documents::AssignChannels(read.document, *assign_);
    if (!map_ && !read.ownMap) {
      throw Failure("which pin of " + document_ +
                    " is on which channel? Say so with --map MAP.csv, or have " +
                    "them assigned with --assign 1");
    }
    documents::ChannelMap map = map_ ? MapInFile(*map_) : std::move(*read.ownMap);
    JoinUnmapped(read.document, map);
    return map;
  }

  ImportFiles Files() const {
    ImportFiles files;
    files.sources = options_.Prepended();
    files.sources.push_back(document_);
    if (map_ && !assign_) files.sources.push_back(*map_);
    files.expectation = *output_;
    if (assign_) files.newMap = map_ ? *map_ : MapBeside(*output_);
    files.newMapNamed = map_.has_value();
    files.names = names_;
    files.overwrite = overwrite_;
    return files;
  }

  static std::string WrittenText(const std::vector<std::string>& files) {
    std::string text;
    for (const std::string& file : files) text += (text.empty() ? "Written: " : ", ") + file;
    return text;
  }

  std::string document_;
  std::optional<std::string> output_;
  std::optional<std::string> map_;
  std::optional<std::int32_t> assign_;
  std::optional<std::string> names_;
  DocumentOptions options_;
  ImportFormat format_ = ImportFormat::Report;
  bool dryRun_ = false;
  bool overwrite_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeImportCommand() { return std::make_unique<ImportCommand>(); }

}  // namespace kxbench
