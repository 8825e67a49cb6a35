#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <system_error>
#include <utility>

#include "bench/drawing/Drawing.h"
#include "bench/program/Commands.h"
#include "bench/program/check/DeviceDiagnosis.h"
#include "bench/program/commands/DocumentOptions.h"
#include "bench/program/host/ExpectationGate.h"
#include "bench/program/host/HostSetup.h"
#include "bench/program/host/Interaction.h"
#include "bench/program/output/Output.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/Guard.h"
#include "bench/program/system/SaveProbe.h"
#include "bench/program/system/System.h"
#include "text/FileAccess.h"

namespace kxbench {

namespace {

enum class PictureFormat { Svg, Html };

constexpr const char* ToStandardOutput = "-";

PictureFormat PictureFormatOf(const std::string& picture) {
  if (picture == ToStandardOutput) return PictureFormat::Svg;
  std::string ending = Utf8FromPath(PathFromUtf8(picture).extension());
  std::transform(ending.begin(), ending.end(), ending.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  if (ending == ".svg") return PictureFormat::Svg;
  if (ending == ".html" || ending == ".htm") return PictureFormat::Html;
  throw Failure("-o " + picture + ": expected a name that ends in .svg or .html, or - for standard output");
}

class DrawCommand : public Command {
 public:
  std::string Name() const override { return "draw"; }
  std::string Summary() const override { return "Draw a wiring diagram of what FILE expects"; }
  std::string Notes() const override {
    return "FILE is an expectation file or a document (see kxbench import). PICTURE is an SVG file or, where "
           "its name ends\n"
           "in .html, a page on which a click on a net shows it alone; - writes SVG to standard output. The "
           "names of an\n"
           "expectation's channels come from the project's ini file; --map gives a document's pins their "
           "channels.\n"
           "--faults stands after FILE. Without RESULT it measures the connected device, as kxbench diagnose "
           "does; RESULT\n"
           "is what kxbench diagnose --format json printed. Exit status 1 when it has faults, or says that\n"
           "a check failed.";
  }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Expectation file or document", Needed::Yes, file_);
    list.Value("-o", "PICTURE", "File for the drawing, .svg or .html; needed", picture_);
    list.Value("--faults", "RESULT", "Mark the faults of RESULT, or of the connected device", faults_)
        .valueOptional = true;
    list.Value("--map", "MAP", "Which pin is on which channel: a table with connector, pin, channel", map_);
    documentOptions_.DeclareIn(list);
    list.Show({"--device", "--project", "--progress"});
  }

  ExitStatus Run(const CommonOptions& common) override {
    if (!picture_) throw Failure("draw needs -o PICTURE.svg or -o PICTURE.html (see kxbench draw --help)");
    const PictureFormat format = PictureFormatOf(*picture_);
    RequirePlace();
    const std::string content = shorttest::ReadWholeFile(
        shorttest::AbsolutePath(file_), documents::MostDocumentBytes, shorttest::ReadFrom::Anything);
    if (!documents::IsExpectation(content)) return DrawDocument(format);
    if (map_) throw Failure("--map: " + file_ + " is an expectation file and takes no map");

    HostSetup host(common, file_);
    const wiring::ChannelNames names(host.CurrentProject().IniFile());
    const bool measures = faults_ && faults_->empty();
    if (measures) {
      EnterGuard();
      TellGuardOfExpectation(file_);
    }
    Interaction interaction(measures ? SurfaceOf(common.progress) : Surface::Silent, mrIgnore);
    const auto warn = [&](const std::string& line) { interaction.Tell(line); };
    const wiring::ExpectationFacts facts = ExpectationGate(false, warn).AdmitFile("", file_);
    const drawing::HarnessPicture picture =
        drawing::PictureOf(facts, names, Utf8FromPath(PathFromUtf8(file_).filename()));

    Marked marked;
    if (measures) {
      const MeasureSummary summary = MeasureThroughModule(common, file_);
      if (summary.end == MeasureEnd::Cancelled) {
        interaction.Tell("draw " + file_ + ": cancelled");
        return ExitStatus::Cancelled;
      }
      marked = MarkedOf(DiagnosisOf(summary, ExpectedOnly(facts, names)), names);
    } else if (faults_) {
      marked = ReadFaults(picture);
    }
    interaction.HideProgress();
    Save(format, picture, marked, interaction);
    return marked.status;
  }

 private:
  struct Marked {
    std::vector<drawing::FaultMark> faults;
    ExitStatus status = ExitStatus::NoFindings;
  };

  ExitStatus DrawDocument(PictureFormat format) const {
    if (faults_ && faults_->empty()) {
      throw Failure("--faults: " + file_ + " is a document: measuring a device needs an expectation file");
    }
    Interaction interaction(Surface::Silent, std::nullopt);
    return TellingMapFaults(interaction, [&] {
      documents::DocumentRead read = documentOptions_.Read(file_, !map_);
      std::map<documents::Pin, std::int32_t> channels;
      if (map_ || read.ownMap) {
        const documents::ChannelMap map = map_ ? MapInFile(*map_) : std::move(*read.ownMap);
        JoinUnmapped(read.document, map);
        for (const auto& [channel, pin] : documents::WiringOf(read.document, map).pins)
          channels[pin] = channel;
      }
      TellWarnings(read.document, interaction);
      const drawing::HarnessPicture picture =
          drawing::PictureOf(read.document, Utf8FromPath(PathFromUtf8(file_).filename()), channels);
      const Marked marked = faults_ ? ReadFaults(picture) : Marked();
      Save(format, picture, marked, interaction);
      return marked.status;
    });
  }

  /// Finds out what keeps the picture from being saved before anything is measured.
  void RequirePlace() const {
    if (*picture_ == ToStandardOutput) return;
    RequireSavable(*picture_);
    std::error_code none;
    if (std::filesystem::equivalent(PathFromUtf8(*picture_), PathFromUtf8(file_), none)) {
      throw Failure("-o " + *picture_ + ": the drawing would replace FILE");
    }
  }

  static Marked MarkedOf(const DeviceDiagnosis& diagnosis, const wiring::ChannelNames& names) {
    const auto label = [&](diagnosis::Channel channel) { return names.Labelled(channel); };
    Marked marked{{}, diagnosis.Status()};
    for (const diagnosis::Fault& voltage : diagnosis.voltages) {
      marked.faults.push_back({voltage, diagnosis::FaultText(voltage, label), {}});
    }
    for (drawing::FaultMark& mark : drawing::MarksOf(diagnosis.faults, label)) {
      marked.faults.push_back(std::move(mark));
    }
    return marked;
  }

  Marked ReadFaults(const drawing::HarnessPicture& picture) const {
    Marked marked;
    try {
      const std::string json = shorttest::ReadWholeFile(
          shorttest::AbsolutePath(*faults_), shorttest::MostTextBytes, shorttest::ReadFrom::Anything);
      drawing::KeptDiagnosis kept = drawing::DiagnosisFromJson(json, picture);
      marked.faults = std::move(kept.marks);
      if (kept.failed) marked.status = ExitStatus::Findings;
    } catch (const std::system_error& error) {
      throw Failure("--faults: " + std::string(error.what()));
    } catch (const std::runtime_error& error) {
      throw Failure("--faults " + *faults_ + ": " + error.what());
    }
    return marked;
  }

  void Save(PictureFormat format, const drawing::HarnessPicture& picture, const Marked& marked,
            Interaction& interaction) const {
    for (const std::string& line : drawing::UnmarkedTexts(picture, marked.faults)) {
      interaction.Tell("draw " + file_ + ": " + line);
    }
    const std::string text = format == PictureFormat::Svg ? drawing::SvgOf(picture, marked.faults)
                                                          : drawing::HtmlOf(picture, marked.faults);
    if (*picture_ == ToStandardOutput) return StandardOutput().Write(text);
    try {
      shorttest::ReplaceWholeFile(shorttest::AbsolutePath(*picture_), text);
    } catch (const std::system_error& error) {
      throw Failure("-o: " + std::string(error.what()));
    }
    std::string line = *picture_ + ": " + file_ + " drawn";
    if (faults_) line += ", " + drawing::MarkedText(picture, marked.faults);
    StandardOutput().Write(line + "\n");
  }

  std::string file_;
  std::optional<std::string> picture_;
  std::optional<std::string> faults_;  // empty: of the connected device
  std::optional<std::string> map_;
  DocumentOptions documentOptions_;
};

}  // namespace

std::unique_ptr<Command> MakeDrawCommand() { return std::make_unique<DrawCommand>(); }

}  // namespace kxbench
