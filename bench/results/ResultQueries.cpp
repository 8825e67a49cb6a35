#include "bench/results/ResultQueries.h"

namespace kxbench::results {

namespace {

std::optional<double> Ratio(double part, std::int64_t whole) {
  if (whole <= 0) return std::nullopt;
  return part / static_cast<double>(whole);
}

}  // namespace

std::optional<double> Total::FirstPassYield() const {
  return Ratio(static_cast<double>(firstPasses), devices);
}

std::optional<double> Total::FinalYield() const { return Ratio(static_cast<double>(finalPasses), devices); }

std::optional<double> Total::SecondsPerCheck() const { return Ratio(seconds, checks); }

}  // namespace kxbench::results
