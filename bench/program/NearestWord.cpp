#include "bench/program/NearestWord.h"

#include <algorithm>
#include <cstddef>

namespace kxbench {

namespace {

/// Optimal string alignment distance: Levenshtein's, with the exchange of two neighbours as one step.
std::size_t LettersChanged(const std::string& a, const std::string& b) {
  std::vector<std::vector<std::size_t>> steps(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) steps[i][0] = i;
  for (std::size_t j = 0; j <= b.size(); ++j) steps[0][j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = steps[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0U : 1U);
      steps[i][j] = std::min({replaced, steps[i - 1][j] + 1, steps[i][j - 1] + 1});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        steps[i][j] = std::min(steps[i][j], steps[i - 2][j - 2] + 1);
      }
    }
  }
  return steps[a.size()][b.size()];
}

}  // namespace

std::string NearestWord(const std::string& typed, const std::vector<std::string>& known) {
  // What is longer than any word can be is no word mistyped, and comparing it would take its length squared.
  constexpr std::size_t LongestWord = 64;
  if (typed.size() > LongestWord) return "";
  std::string nearest;
  std::size_t fewest = 0;
  for (const std::string& word : known) {
    const std::size_t changed = LettersChanged(typed, word);
    const std::size_t allowed = std::max<std::size_t>(1, std::max(typed.size(), word.size()) / 3);
    if (changed <= allowed && (nearest.empty() || changed < fewest)) {
      nearest = word;
      fewest = changed;
    }
  }
  return nearest;
}

}  // namespace kxbench
