#include <algorithm>
#include <charconv>

#include "bench/program/Commands.h"
#include "bench/program/host/Record.h"
#include "bench/program/proof/ProveRun.h"
#include "bench/program/system/Failure.h"

namespace kxbench {

namespace {

constexpr ChoiceWord<ProofFormat> ProofFormatWords[] = {{"report", ProofFormat::Report},
                                                        {"json", ProofFormat::Json}};

/// A whole number from `least` on. Throws Failure.
template <typename Number>
Number ReadCount(const std::string& option, const std::string& text, Number least) {
  Number number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < least) {
    throw Failure(option + " " + text + ": this is no whole number from " + std::to_string(least) + " on");
  }
  return number;
}

double ReadOhm(const std::string& option, const std::string& text) {
  const std::optional<double> ohm = NumberOf(text);
  if (!ohm || !(*ohm > 0)) throw Failure(option + ": expected a resistance above 0 Ohm, not " + text);
  return *ohm;
}

Failure UnknownReason(const std::string& text) {
  std::string known;
  for (const proof::EscapeReason one : proof::AllReasons) {
    known += (known.empty() ? "" : ", ") + proof::ReasonWord(one);
  }
  return Failure("--accept " + text + ": the reasons are " + known);
}

std::vector<proof::EscapeReason> ReadReasons(const std::string& text) {
  std::vector<proof::EscapeReason> reasons;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    const auto reason = proof::ReasonFromWord(text.substr(begin, end - begin));
    if (!reason) throw UnknownReason(text);
    reasons.push_back(*reason);
    begin = end + 1;
  }
  return reasons;
}

class ProveCommand : public Command {
 public:
  std::string Name() const override { return "prove"; }
  std::string Summary() const override {
    return "Simulate every single fault of a harness and list what the check would not find";
  }
  std::string Notes() const override {
    return "Nothing is measured: each fault is put into a simulated tester, and the plug-in's own check runs "
           "on it without\n"
           "waiting. The exit status is 0 when nothing escapes but what --accept names, and 1 when something "
           "does.";
  }

  void Declare(OptionList& list) override {
    list.Argument("FILE", "Expectation file", Needed::Yes, options_.file);
    list.Show({"--device", "--project", "--progress"});
    list.Words("--format", ProofFormatWords, "A report to read, or one JSON object", options_.format);
    list.Value("--output", "FORMAT:FILE", "Write the whole report; FORMAT is html, json or csv",
               [this](const std::string& value) { options_.outputs.push_back(value); })
        .repeatable = true;
    list.Value("--accept", "REASONS", "Reasons for which a fault may escape: excluded,suspended,...",
               [this](const std::string& value) { options_.accepted = ReadReasons(value); });
    list.Flag("--tester-faults", "Simulate the tester's relays that never close or never open, too",
              options_.plan.testerFaults);
    list.Value("--seed", "NUMBER", "Start of the samples (default: 1)", [this](const std::string& value) {
      options_.plan.seed = ReadCount<std::uint64_t>("--seed", value, 0);
    });
    list.Value("--net-resistance", "OHM", "Between two contacts of a net of the ideal device (default: 0.1)",
               [this](const std::string& value) { options_.netOhm = ReadOhm("--net-resistance", value); });
    list.Value(
        "--jobs", "N", "Processes that work side by side (default: one for each core)",
        [this](const std::string& value) { options_.jobs = ReadCount<std::size_t>("--jobs", value, 1); });
    list.Flag("--suggest", "Name thresholds that would find more", options_.suggest);
    list.Value("--through-plugin", "N",
               "Check N of the faults again through the plug-in's library, in real time",
               [this](const std::string& value) {
                 options_.throughPlugin = ReadCount<std::size_t>("--through-plugin", value, 1);
               });
    list.Flag("--strict", "Refuse an expectation file that leaves pairs unchecked, instead of warning",
              options_.strict);
  }

  ExitStatus Run(const CommonOptions& common) override { return Prove(common, options_); }

 private:
  ProveOptions options_;
};

}  // namespace

std::unique_ptr<Command> MakeProveCommand() { return std::make_unique<ProveCommand>(); }

}  // namespace kxbench
