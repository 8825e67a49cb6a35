#include <filesystem>
#include <optional>
#include <system_error>

#include "bench/documents/ReadDocument.h"
#include "bench/documents/WiringExport.h"
#include "bench/program/Commands.h"
#include "bench/program/host/ExpectationGate.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/host/Project.h"
#include "bench/program/output/Output.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/SaveProbe.h"
#include "bench/program/system/System.h"
#include "text/FileAccess.h"

namespace kxbench {

namespace {

using WiringText = std::string (*)(const documents::Wiring& wiring);

constexpr ChoiceWord<WiringText> ExportWords[] = {
    {"csv", documents::WiringListText}, {"wireviz", documents::WireVizText}, {"json", documents::WiringJson}};

class ExportCommand : public Command {
 public:
  std::string Name() const override { return "export"; }
  std::string Summary() const override { return "Write what an expectation says as a document"; }
  std::string Notes() const override {
    return "Pins are called as the channels' names in the project's ini file say: X1.3 is pin 3 of connector "
           "X1. Channels\n"
           "without such a name keep their number. import reads all three formats.";
  }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Expectation file", Needed::Yes, file_);
    list.Show({"--project"});
    list.Words("--to", ExportWords, "A list of nets, a WireViz file, or one JSON object", text_);
    list.Value("-o", "FILE", "File that is written (default: standard output)", output_);
    list.Flag("--strict", "Refuse an expectation file that leaves pairs unchecked, instead of warning",
              strict_);
  }

  ExitStatus Run(const CommonOptions& common) override {
    if (!text_) throw Failure("export needs --to csv, --to wireviz or --to json");
    Interaction interaction(Surface::Silent, std::nullopt);
    const ExpectationGate gate(strict_, [&interaction](const std::string& line) { interaction.Tell(line); });
    const wiring::ExpectationFacts facts = gate.AdmitFile("", file_);
    const std::string ini = ProjectOf(common.project, file_).IniFile();
    if (output_ && !ini.empty() && AreOneFile(*output_, ini)) {
      throw Failure(*output_ + " holds the channels' names: it is not replaced by a document");
    }
    const wiring::ChannelNames names(ini);
    const std::string text = (*text_)(documents::WiringOf(facts, names));
    if (output_) {
      Save(text);
    } else {
      StandardOutput().Write(text);
    }
    return ExitStatus::NoFindings;
  }

 private:
  void Save(const std::string& text) const {
    RequireSavable(*output_);
    const std::filesystem::path path = shorttest::AbsolutePath(*output_);
    try {
      std::error_code error;
      if (std::filesystem::exists(path, error) &&
          documents::IsExpectation(shorttest::ReadWholeFile(path, documents::MostDocumentBytes))) {
        throw Failure(*output_ + " is an expectation file: it is not replaced by a document");
      }
      shorttest::ReplaceWholeFile(path, text);
    } catch (const std::system_error& error) {
      throw Failure(error.what());
    }
  }

  std::string file_;
  std::optional<WiringText> text_;
  std::optional<std::string> output_;
  bool strict_ = false;
};

}  // namespace

std::unique_ptr<Command> MakeExportCommand() { return std::make_unique<ExportCommand>(); }

}  // namespace kxbench
