#include "bench/program/station/Station.h"

#include <exception>
#include <utility>

#include "bench/program/check/ResultRecorder.h"
#include "bench/program/system/Failure.h"
#include "ui/terminal/Printable.h"

namespace kxbench {

namespace {

constexpr std::size_t MostShownOfSerial = 40;

std::string ShownSerial(const std::string& serial) {
  const std::string shown = Printable(serial.substr(0, MostShownOfSerial));
  return serial.size() > MostShownOfSerial ? shown + "..." : shown;
}

std::string Trimmed(const std::string& text) {
  const std::size_t begin = text.find_first_not_of(" \t\r");
  if (begin == std::string::npos) return "";
  return text.substr(begin, text.find_last_not_of(" \t\r") - begin + 1);
}

}  // namespace

Station::Station(Options options, Surroundings surroundings, StationFace& face)
    : options_(std::move(options)), surroundings_(std::move(surroundings)), face_(face) {}

ExitStatus Station::Run() {
  while (!surroundings_.endAsked()) {
    const std::optional<StationEntry> entry = face_.Next(Prompt());
    if (!entry) break;
    Take(*entry);
  }
  return surroundings_.endAsked() ? Graver(status_, ExitStatus::Cancelled) : status_;
}

std::string Station::Prompt() const { return options_.expectation.empty() ? "Part's code" : "Serial number"; }

void Station::Take(const StationEntry& entry) {
  const std::string text = Trimmed(entry.text);
  if (text.empty()) return;
  if (entry.ahead && !options_.takesAhead) {
    // Who scans the next harness while one is checked has not connected it yet.
    face_.Offer(text);
    return face_.Say(ShownSerial(text) +
                     " was scanned during the check: Enter once it is connected, or scan again");
  }
  if (const auto expectation = surroundings_.partOf(text)) {
    options_.expectation = *expectation;
    options_.part = text;
    return face_.Say("part " + ShownSerial(text) + ": " + *expectation);
  }
  const std::string refusal = options_.pattern.Refusal(text);
  if (!refusal.empty()) return face_.Say(ShownSerial(text) + " is no serial number: it " + refusal);
  if (options_.expectation.empty())
    return face_.Say(ShownSerial(text) + " is no part's code of this project");
  Check(text);
}

void Station::Check(const std::string& serial) {
  const std::string retest = RetestLine(serial);
  face_.Checking(serial, retest);
  StationVerdict verdict;
  try {
    verdict = surroundings_.check(options_.expectation, options_.part, serial);
  } catch (const NotStored& error) {
    status_ = ExitStatus::Failed;
    verdict.lines = {error.what()};
  } catch (const Failure& error) {
    verdict.lines = {error.what()};
  }
  verdict.serial = serial;
  verdict.part = options_.part;
  verdict.retest = retest;
  if (!retest.empty()) ++counters_.retests;
  Count(verdict.verdict);
  std::string kept(results::VerdictWord(verdict.verdict));
  if (!verdict.lines.empty()) kept += " (" + verdict.lines.front() + ")";
  checked_[serial].push_back(kept);
  face_.Show(verdict, counters_);
}

void Station::Count(results::Verdict verdict) {
  switch (verdict) {
    case results::Verdict::Pass:
      ++counters_.passed;
      break;
    case results::Verdict::Fail:
      ++counters_.failed;
      break;
    case results::Verdict::Cancelled:
      ++counters_.cancelled;
      break;
    case results::Verdict::Error:
      ++counters_.errors;
      break;
  }
}

/// The store knows of this session's checks too, as long as there is one.
std::string Station::RetestLine(const std::string& serial) {
  std::vector<std::string> earlier = surroundings_.earlier(serial);
  const auto here = checked_.find(serial);
  if (earlier.empty() && here != checked_.end()) earlier.assign(here->second.rbegin(), here->second.rend());
  if (earlier.empty()) return "";
  return "retest: checked " + (earlier.size() == 1 ? "once" : std::to_string(earlier.size()) + " times") +
         " before, last: " + earlier.front();
}

}  // namespace kxbench
