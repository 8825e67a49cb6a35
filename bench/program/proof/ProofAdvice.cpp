#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <vector>

#include "bench/program/host/Record.h"
#include "bench/program/proof/ProofExtras.h"

namespace kxbench {

namespace {

/// Below that the instrument's settling tolerance is as large as the threshold, Ohm.
constexpr double LeastLower = 1;

/// Above that it is the material that is tested, with a voltage of its own, Ohm.
constexpr double MostUpper = 100e3;

std::optional<double> LimitIn(const std::string& answer) {
  constexpr std::string_view start = "limit ";
  return answer.starts_with(start) ? NumberOf(answer.substr(start.size())) : std::nullopt;
}

/// Two significant digits, rounded up or down: nobody sets a threshold to 3.0127 Ohm.
double Rounded(double ohm, double (*round)(double)) {
  const double unit = std::pow(10.0, std::floor(std::log10(ohm)) - 1);
  return round(ohm / unit * (1 - 1e-12)) * unit;
}

std::string NumberWord(double value) {
  std::array<char, 64> text{};
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

}  // namespace

void AddAdvice(ProofWorkers& workers, proof::Proof& result, const std::function<bool()>& cancelled) {
  std::optional<double> lowest;
  std::optional<double> highest;
  const std::vector<ProofRequest> limits = {
      {"lowest", [&lowest](const std::string& answer) { lowest = LimitIn(answer); }},
      {"highest", [&highest](const std::string& answer) { highest = LimitIn(answer); }}};
  if (!workers.Answer(limits, cancelled, [](std::size_t) {})) return;

  proof::ThresholdAdvice advice;
  advice.margin = SuggestedMargin;
  const double lowerNow = result.facts.lowerThreshold_ohm;
  const double upperNow = std::max(lowerNow, result.facts.upperThreshold_ohm);
  const double lower = std::max(LeastLower, Rounded(SuggestedMargin * lowest.value_or(0.001), std::ceil));
  if (lower < lowerNow) advice.lowerOhm = lower;
  advice.upperBounded = highest && *highest / SuggestedMargin < MostUpper;
  const double upper = advice.upperBounded ? Rounded(*highest / SuggestedMargin, std::floor) : MostUpper;
  if (upper > upperNow) advice.upperOhm = upper;

  std::vector<char> found(result.faults.size(), 0);
  std::vector<ProofRequest> again;
  const std::string start = "with " + NumberWord(advice.lowerOhm.value_or(lowerNow)) + " " +
                            NumberWord(advice.upperOhm.value_or(upperNow)) + " ";
  for (std::size_t i = 0; i < result.faults.size(); ++i) {
    const proof::ProvedFault& one = result.faults[i];
    if (!one.verdict || !one.verdict->escape) continue;
    again.push_back({start + proof::FaultWords(one.fault),
                     [&found, i](const std::string& answer) { found[i] = answer == "alarm 1" ? 1 : 0; }});
  }
  if (!workers.Answer(again, cancelled, [](std::size_t) {})) return;
  advice.moreFound = static_cast<std::size_t>(std::count(found.begin(), found.end(), 1));
  result.advice = advice;
}

}  // namespace kxbench
