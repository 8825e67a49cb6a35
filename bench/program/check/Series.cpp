#include "bench/program/check/Series.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "bench/program/output/Table.h"
#include "bench/program/system/Failure.h"
#include "text/NumberText.h"

namespace kxbench {

namespace {

std::string CountedChecks(std::int64_t count) {
  return std::to_string(count) + (count == 1 ? " check" : " checks");
}

std::string SecondsText(double seconds) { return FixedNumber(seconds, 2) + " s"; }

}  // namespace

void SeriesOptions::DeclareIn(OptionList& list) {
  list.Value("--repeat", "N", "Check N times, for contacts that come and go; the first findings are kept",
             [this](const std::string& text) {
               const auto number = shorttest::TextToInteger(text);
               if (!number || *number < 1) throw Failure("--repeat: expected a number from 1, not " + text);
               repeat = *number;
             });
  list.Flag("--until-fault", "Check again until there are findings, or until Ctrl-C", untilFault);
}

Series::Series(SeriesOptions options, Seconds seconds)
    : options_(options), seconds_(std::move(seconds)), began_(seconds_()) {}

bool Series::GoesOn() const {
  if (options_.untilFault && faulty_ > 0) return false;
  if (options_.repeat) return checks_ < *options_.repeat;
  return options_.untilFault || checks_ == 0;
}

void Series::Ended(const std::vector<std::string>& faults) {
  ++checks_;
  ended_ = seconds_() - began_;
  if (faults.empty()) return;
  ++faulty_;
  if (first_.empty()) first_ = Place();
  for (const std::string& fault : std::set<std::string>(faults.begin(), faults.end())) {
    const auto known = std::find_if(faults_.begin(), faults_.end(),
                                    [&fault](const auto& other) { return other.first == fault; });
    if (known == faults_.end()) {
      faults_.emplace_back(fault, 1);
    } else {
      ++known->second;
    }
  }
}

bool Series::Settles(results::Result& result) {
  if (!started_) started_ = result.started;
  if (settled_) return false;
  const std::int64_t number = checks_ + 1;
  const bool last = options_.repeat && number == *options_.repeat;
  if (result.verdict == results::Verdict::Pass && !last && options_.Any()) return false;
  settled_ = true;
  result.started = *started_;
  if (number > 1) result.seconds = std::round((seconds_() - began_) * 1000) / 1000;
  result.checks = number;
  return true;
}

std::string Series::Place() const {
  return "check " + std::to_string(checks_) + ", after " + SecondsText(ended_);
}

std::string Series::Summary() const {
  std::string text = CountedChecks(checks_) + " in " + SecondsText(ended_) + ", ";
  if (faulty_ == 0) {
    text += "none with findings\n";
  } else {
    text += std::to_string(faulty_) + " with findings; the first: " + first_ + "\n";
  }
  for (const auto& [fault, count] : faults_) text += "  in " + CountedChecks(count) + ": " + fault + "\n";
  if (checks_ == 0) return text;
  return text + "not seen: what came and went within one check, which took " +
         SecondsText(ended_ / static_cast<double>(checks_)) + " on average\n";
}

}  // namespace kxbench
