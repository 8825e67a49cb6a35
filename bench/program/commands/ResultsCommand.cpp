#include <algorithm>
#include <chrono>
#include <cstdio>
#include <optional>

#include "bench/program/Commands.h"
#include "bench/program/check/ResultsModuleLoading.h"
#include "bench/program/check/StoreOptions.h"
#include "bench/program/commands/ResultsReport.h"
#include "bench/program/output/Output.h"
#include "bench/program/system/Failure.h"
#include "bench/results/Outputs.h"
#include "bench/results/SummaryPage.h"
#include "text/FileAccess.h"
#include "text/NumberText.h"
#include "text/Paths.h"

namespace kxbench {

namespace {

enum class ResultsFormat { Text, Json, Csv, JsonLines };

constexpr ChoiceWord<ResultsFormat> ResultsFormatWords[] = {{"text", ResultsFormat::Text},
                                                            {"json", ResultsFormat::Json},
                                                            {"csv", ResultsFormat::Csv},
                                                            {"jsonl", ResultsFormat::JsonLines}};

constexpr ChoiceWord<results::Verdict> VerdictChoices[] = {{"pass", results::Verdict::Pass},
                                                           {"fail", results::Verdict::Fail},
                                                           {"error", results::Verdict::Error},
                                                           {"cancelled", results::Verdict::Cancelled}};

constexpr std::size_t DefaultLimit = 100;

/// A day, or a moment to the millisecond.
std::string ReadMoment(const std::string& option, const std::string& text) {
  int year = 0;
  unsigned month = 0;
  unsigned day = 0;
  const int read = std::sscanf(text.c_str(), "%4d-%2u-%2u", &year, &month, &day);
  const std::chrono::year_month_day date{std::chrono::year(year), std::chrono::month(month),
                                         std::chrono::day(day)};
  constexpr std::string_view Moment = "2026-03-14T08:00:00.000Z";
  bool sound = read == 3 && date.ok() && (text.size() == 10 || text.size() == Moment.size());
  for (std::size_t i = 0; sound && i < text.size(); ++i) {
    const bool digit = Moment[i] >= '0' && Moment[i] <= '9';
    sound = digit ? text[i] >= '0' && text[i] <= '9' : text[i] == Moment[i];
  }
  if (!sound) {
    throw Failure(option + ": expected a day like 2026-03-14 or a moment like " + std::string(Moment) +
                  ", not " + OneLine(text));
  }
  return text;
}

class ResultsCommand : public Command {
 public:
  std::string Name() const override { return "results"; }
  std::string Summary() const override { return "List, show, sum up, deliver or export stored results"; }
  std::string Notes() const override {
    return "list       the newest results first (--format text, json)\n"
           "show ID    all that is known of one; the beginning of its id is enough (text, json)\n"
           "summary    yield at the first test and after retest by part, station and day; the most frequent "
           "faults;\n"
           "           time per check; contacts that come back on one station alone (text, json)\n"
           "report     the same as a page with plots: -o FILE.html\n"
           "forward    deliver what waits in the spool to the database, once\n"
           "export     every result, to standard output or -o FILE (--format csv, jsonl)\n"
           "\n"
           "Days and times are UTC. --to with a day includes that day; with a moment, everything before it.\n"
           "summary and report count whole days and take no moments.\n"
           "Exit status 0, or 2 when it could not be done.";
  }

  void Declare(OptionList& list) override {
    list.Argument("ACTION", "list, show, summary, report, forward or export", Needed::Yes, action_);
    list.Argument("ID", "For show: the id of the result, or its beginning", Needed::No, id_);
    store_.DeclareIn(list);
    list.Value("--part", "TEXT", "Results of this part", filter_.part);
    list.Value("--serial", "TEXT", "Results of this serial number", filter_.serial);
    list.Value("--station", "NAME", "Results of this station", filter_.station);
    list.Words("--verdict", VerdictChoices, "Results with this verdict", filter_.verdict);
    list.Value("--from", "DAY", "Results from this day or moment on",
               [this](const std::string& text) { filter_.from = ReadMoment("--from", text); });
    list.Value("--to", "DAY", "Results up to this day or moment",
               [this](const std::string& text) { filter_.to = ReadMoment("--to", text); });
    list.Value("--limit", "N", "list: so many results at most (default: 100)",
               [this](const std::string& text) { limit_ = ReadLimit(text); });
    list.Words("--format", ResultsFormatWords, "How results are written", format_);
    list.Value("-o", "FILE", "report, export: the file to write, whole or not at all", output_);
    list.Flag("--all", "forward: deliver what waits for other databases, too", all_);
  }

  ExitStatus Run(const CommonOptions&) override {
    using Action = void (ResultsCommand::*)();
    constexpr std::pair<std::string_view, Action> Actions[] = {
        {"list", &ResultsCommand::List},       {"show", &ResultsCommand::Show},
        {"summary", &ResultsCommand::SumUp},   {"report", &ResultsCommand::Report},
        {"forward", &ResultsCommand::Forward}, {"export", &ResultsCommand::Export},
    };
    for (const auto& [name, action] : Actions) {
      if (name != action_) continue;
      if (!store_.results) throw Failure("results " + action_ + " needs --results URL");
      if (!id_.empty() && action_ != "show") throw Failure("unexpected argument " + OneLine(id_));
      RefuseWhatIsNotFor(name);
      (this->*action)();
      return ExitStatus::NoFindings;
    }
    throw Failure("results " + OneLine(action_) +
                  ": expected list, show, summary, report, forward or export");
  }

 private:
  /// An option that an action would not heed is refused: the answer would be to another question.
  void RefuseWhatIsNotFor(std::string_view action) const {
    using Actions = std::vector<std::string_view>;
    const Actions lists = {"list", "export"};
    const Actions queries = {"list", "export", "summary", "report"};
    constexpr std::size_t Day = 10;  // the sums behind a summary are those of whole days
    const struct {
      const char* option;
      bool given;
      Actions actions;
    } options[] = {
        {"--part", filter_.part.has_value(), queries},
        {"--station", filter_.station.has_value(), queries},
        {"--from", !filter_.from.empty(), queries},
        {"--to", !filter_.to.empty(), queries},
        {"--from with a time of the day", filter_.from.size() > Day, lists},
        {"--to with a time of the day", filter_.to.size() > Day, lists},
        {"--serial", filter_.serial.has_value(), lists},
        {"--verdict", filter_.verdict.has_value(), lists},
        {"--limit", limit_.has_value(), {"list"}},
        {"--all", all_, {"forward"}},
    };
    for (const auto& [option, given, actions] : options) {
      if (given && std::find(actions.begin(), actions.end(), action) == actions.end())
        throw Failure(std::string(option) + " is not for results " + action_);
    }
  }

  static std::size_t ReadLimit(const std::string& text) {
    const std::optional<std::int32_t> limit = shorttest::TextToInteger(text);
    if (!limit || *limit < 1) throw Failure("--limit: expected a number from 1 on, not " + OneLine(text));
    return static_cast<std::size_t>(*limit);
  }

  std::unique_ptr<results::ModuleDatabase> Open(bool make = false) {
    module_.emplace();
    return module_->OpenDatabase(*store_.results, make);
  }

  static void Require(const std::string& failure) {
    if (!failure.empty()) throw Failure(failure);
  }

  void AllowFormats(std::initializer_list<ResultsFormat> formats) const {
    for (const ResultsFormat format : formats) {
      if (!format_ || *format_ == format) return;
    }
    throw Failure("--format is not for results " + action_ + " (see kxbench results --help)");
  }

  bool IsJson() const { return format_ == ResultsFormat::Json; }

  void Write(const std::string& text) {
    if (!output_) return StandardOutput().Write(text);
    try {
      shorttest::ReplaceWholeFile(shorttest::AbsolutePath(*output_), text);
    } catch (const std::system_error& error) {
      throw Failure("-o: " + std::string(error.what()));
    }
  }

  void List() {
    AllowFormats({ResultsFormat::Text, ResultsFormat::Json});
    std::vector<results::ResultLine> lines;
    Require(Open()->List(filter_, limit_.value_or(DefaultLimit),
                         [&](const results::ResultLine& line) { lines.push_back(line); }));
    Write(IsJson() ? results::ListJson(lines) : ListReport(lines));
  }

  void Show() {
    AllowFormats({ResultsFormat::Text, ResultsFormat::Json});
    if (id_.empty()) throw Failure("results show needs ID (see kxbench results --help)");
    std::optional<results::Result> result;
    Require(Open()->Find(id_, result));
    if (!result) throw Failure("there is no result " + OneLine(id_));
    Write(IsJson() ? results::ResultsJson({{*result, ""}}) : ResultReport(*result));
  }

  results::ResultSummary QuerySummary() {
    results::ResultSummary summary;
    Require(Open()->Summarise(filter_, summary));
    return summary;
  }

  void SumUp() {
    AllowFormats({ResultsFormat::Text, ResultsFormat::Json});
    const results::ResultSummary summary = QuerySummary();
    Write(IsJson() ? results::SummaryJson(summary) : SummaryReport(summary));
  }

  void Report() {
    if (format_) throw Failure("--format is not for results report");
    if (!output_) throw Failure("results report needs -o FILE.html");
    const auto now = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    std::vector<std::string> about = FilterWords(filter_);
    about.push_back("As of " + results::TimeText(now) + ". Days are UTC.");
    Write(results::SummaryPage(QuerySummary(), about));
  }

  void Forward() {
    results::Delivery delivery;
    const std::filesystem::path spool =
        store_.spool ? shorttest::AbsolutePath(*store_.spool) : std::filesystem::path();
    const std::string failure = Open(true)->Forward(spool, all_, delivery);
    std::string text = std::to_string(delivery.delivered) + " delivered\n";
    for (const auto& left : delivery.left) {
      text += std::to_string(left.results) + " for " + OneLine(left.target) + " still wait\n";
    }
    StandardOutput().Write(text);
    Require(failure);
  }

  void Export() {
    AllowFormats({ResultsFormat::Csv, ResultsFormat::JsonLines});
    std::string text;
    if (format_ == ResultsFormat::JsonLines) {
      Require(Open()->Each(filter_, [&](const results::Result& result) {
        text += results::ResultJsonLine(result) + "\n";
        return true;
      }));
    } else {
      text = results::CsvHead();
      Require(Open()->List(filter_, AllResults,
                           [&](const results::ResultLine& line) { text += results::CsvLine(line); }));
    }
    Write(text);
  }

  static constexpr std::size_t AllResults = 2000000000;

  std::string action_;
  std::string id_;
  StoreOptions store_;
  results::ResultFilter filter_;
  std::optional<std::size_t> limit_;
  std::optional<ResultsFormat> format_;
  std::optional<std::string> output_;
  bool all_ = false;
  std::optional<LoadedResultsModule> module_;  // outlives what it opened
};

}  // namespace

std::unique_ptr<Command> MakeResultsCommand() { return std::make_unique<ResultsCommand>(); }

}  // namespace kxbench
