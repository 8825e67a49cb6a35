#include <algorithm>

#include "bench/program/Commands.h"
#include "bench/program/check/CheckSession.h"
#include "bench/program/check/Report.h"
#include "bench/program/check/ResultDrawing.h"
#include "bench/program/output/Output.h"
#include "bench/program/station/PartTable.h"
#include "bench/program/station/Station.h"
#include "bench/program/station/StationTerminal.h"
#include "bench/program/station/StationWindowFace.h"
#include "bench/program/system/System.h"
#include "ui/terminal/Interrupt.h"

namespace kxbench {

namespace {

enum class TypeAhead { Ask, Check };

constexpr ChoiceWord<TypeAhead> TypeAheadWords[] = {{"ask", TypeAhead::Ask}, {"check", TypeAhead::Check}};

constexpr char StationNotes[] =
    R"(A part's code, from section [Parts] of the project's ini file, switches the expectation.
Everything else that is typed or scanned is a serial number. Escape or Ctrl-D ends; Ctrl-C
cancels a check, whose result is "cancelled". What is scanned while a check runs is shown when
it has ended, and checked when Enter is pressed: its device was not connected yet. --type-ahead
check takes it as it stands. From a file or a pipe every line is checked in turn.

Exit status: 0 when the user ended it, whatever was found; 2 when a result could not be stored;
3 when a signal ended it.)";

/// More than anybody reads; the number of earlier checks counts.
constexpr std::size_t MostEarlier = 100;

/// How a run of one step ended.
class StepWatch : public RunObserver {
 public:
  void StepEnded(const ScriptStep&, const StepResult& result) override {
    end_ = result.end, failure_ = result.failure;
  }

  void RequireStored() const {
    if (end_ == StepEnd::NotStored) throw NotStored(failure_);
  }

 private:
  StepEnd end_ = StepEnd::Cancelled;  // before it began
  std::string failure_;
};

std::string EarlierText(const results::ResultStore::EarlierCheck& check) {
  // "2026-11-22T08:15:30.125Z": nobody needs the seconds.
  std::string when = check.started.substr(0, 16);
  std::replace(when.begin(), when.end(), 'T', ' ');
  std::string text = std::string(results::VerdictWord(check.verdict)) + " " + when + " UTC";
  if (!check.faults.empty()) text += " (" + check.faults.front() + ")";
  return text;
}

/// The checks of a station, through the plug-in.
class StationChecks {
 public:
  /// `draws`: verdicts come with a drawing of their faults.
  StationChecks(CheckSession& session, ResultRecorder& recorder, bool draws)
      : session_(session), recorder_(recorder), draws_(draws) {
    recorder_.Divert([this](results::Result& result) {
      last_ = result;
      return false;
    });
  }

  Script Load(const std::string& expectation) {
    return session_.Load([&expectation](const CommandFinder& findCommand, const TKXEnvironment& environment) {
      return SingleCall(CheckCommandName, expectation, findCommand, environment);
    });
  }

  StationVerdict Check(const std::string& expectation, const std::string& part, const std::string& serial) {
    recorder_.SetSerial(serial);
    recorder_.SetPart(part);
    last_.reset();
    StepWatch watch;
    session_.Run(LoadOrKeepFailure(expectation), watch);
    session_.ForgetCancel();
    InterruptWatch::Forget();
    watch.RequireStored();
    StationVerdict verdict;
    verdict.verdict = results::Verdict::Cancelled;
    if (last_) verdict = VerdictOf(*last_);
    return verdict;
  }

  std::vector<std::string> Earlier(const std::string& serial) const {
    std::vector<std::string> texts;
    if (recorder_.Store() == nullptr) return texts;
    try {
      for (const auto& check : recorder_.Store()->Earlier(serial, MostEarlier))
        texts.push_back(EarlierText(check));
    } catch (const std::runtime_error&) {
      texts.clear();  // storing will say what is wrong with the store
    }
    return texts;
  }

 private:
  Script LoadOrKeepFailure(const std::string& expectation) {
    try {
      return Load(expectation);
    } catch (const std::exception& error) {
      const std::string why = error.what();
      recorder_.CouldNotBegin(expectation, why);
      throw Failure(why);
    }
  }

  StationVerdict VerdictOf(const results::Result& result) const {
    StationVerdict verdict;
    verdict.verdict = result.verdict;
    if (draws_ && !result.faults.empty()) {
      verdict.drawing = ResultDrawing(result, recorder_.Facts(), recorder_.Names());
    }
    for (const results::ResultFault& fault : result.faults) verdict.lines.push_back(fault.text);
    if (!result.error.empty()) verdict.lines.push_back(result.error);
    if (!verdict.lines.empty()) return verdict;
    if (result.verdict == results::Verdict::Cancelled) verdict.lines.emplace_back("the check was stopped");
    for (const results::ResultRecord& record : result.records) {
      if (record.finding) verdict.lines.push_back(WithChannelNames(record.text, recorder_.Names()));
    }
    return verdict;
  }

  CheckSession& session_;
  ResultRecorder& recorder_;
  bool draws_;
  std::optional<results::Result> last_;
};

class StationCommand : public Command {
 public:
  std::string Name() const override { return "station"; }
  std::string Summary() const override { return "Check one device after another, by their serial numbers"; }
  std::string Notes() const override { return StationNotes; }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Expectation file (else that of the part's code)", Needed::No, file_);
    list.Show({"--plugin", "--device", "--project", "--progress"});
    list.Flag("--strict", "Refuse an expectation file that leaves pairs unchecked, instead of warning",
              strict_);
    list.Flag("--window", "In a window instead of on the terminal, with the drawing of the faults", window_);
    list.Value("--serial-pattern", "REGEX", "What a serial number must look like, the whole of it",
               [this](const std::string& text) { pattern_ = SerialPattern(text); });
    list.Words("--type-ahead", TypeAheadWords, "What is scanned during a check: confirmed first, or checked",
               typeAhead_);
    results_.DeclareWithoutSerialIn(list);
  }

  ExitStatus Run(const CommonOptions& common) override {
    if (file_.empty() && !common.project)
      throw Failure("station needs FILE, or --project with a table of parts");
    const auto terminal = OpenTerminal();
    const bool screen = !window_ && terminal->CanAsk() && terminal->CanRedraw();
    CommonOptions shown = common;
    if (window_) {
      shown.progress = ProgressChoice::Window;
    } else if (!screen && shown.progress == ProgressChoice::Auto) {
      shown.progress = ProgressChoice::None;
    }
    ResultRecorder recorder(results_, ResultRecorder::Makes::Always);
    CheckSession session(shown, strict_, file_, recorder);
    StationChecks checks(session, recorder, window_);
    if (!file_.empty()) checks.Load(file_);  // what is wrong with it is better known now
    StandardOutput output;
    auto face = FaceOf(session, *terminal, output, screen);
    session.TellBy([&face](const std::string& line) { face->Say(line); });
    ShiftCounters counters;
    const ExitStatus status = RunStation(session, checks, *face, counters);
    session.TellBy([&session](const std::string& line) { session.User().Tell(line); });
    face.reset();  // gives the terminal back
    output.Write(CounterLine(counters) + "\n");
    return status;
  }

 private:
  std::unique_ptr<StationFace> FaceOf(CheckSession& session, Terminal& terminal, Output& output,
                                      bool screen) const {
    if (window_) return std::make_unique<WindowFace>(session.User().OpenStationWindow("kxbench station"));
    if (!screen) return std::make_unique<LineFace>(terminal, output);
    return std::make_unique<ScreenFace>(terminal, OpenKeyboard(), OutputShowsColours());
  }

  ExitStatus RunStation(CheckSession& session, StationChecks& checks, StationFace& face,
                        ShiftCounters& counters) const {
    const PartTable parts(session.CurrentProject());
    Station::Surroundings surroundings;
    surroundings.check = [&checks](const std::string& expectation, const std::string& part,
                                   const std::string& serial) {
      return checks.Check(expectation, part, serial);
    };
    surroundings.partOf = [&parts](const std::string& code) { return parts.ExpectationOf(code); };
    surroundings.earlier = [&checks](const std::string& serial) { return checks.Earlier(serial); };
    surroundings.endAsked = InterruptWatch::EndAsked;
    Station station({file_, results_.part.value_or(""), pattern_, typeAhead_ == TypeAhead::Check},
                    surroundings, face);
    const ExitStatus status = station.Run();
    counters = station.Counters();
    return status;
  }

  std::string file_;
  bool strict_ = false;
  bool window_ = false;
  SerialPattern pattern_;
  TypeAhead typeAhead_ = TypeAhead::Ask;
  ResultOptions results_;
};

}  // namespace

std::unique_ptr<Command> MakeStationCommand() { return std::make_unique<StationCommand>(); }

}  // namespace kxbench
