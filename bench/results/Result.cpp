#include "bench/results/Result.h"

#include <cstdio>
#include <random>

namespace kxbench::results {

namespace {

constexpr std::pair<Verdict, std::string_view> VerdictWords[] = {
    {Verdict::Pass, "pass"},
    {Verdict::Fail, "fail"},
    {Verdict::Error, "error"},
    {Verdict::Cancelled, "cancelled"},
};

}  // namespace

std::string_view VerdictWord(Verdict verdict) {
  for (const auto& [value, word] : VerdictWords) {
    if (value == verdict) return word;
  }
  return {};
}

std::optional<Verdict> VerdictOf(std::string_view word) {
  for (const auto& [value, known] : VerdictWords) {
    if (known == word) return value;
  }
  return std::nullopt;
}

std::string NewId() {
  std::random_device random;
  std::uint32_t words[4];
  for (std::uint32_t& word : words) word = random();
  words[1] = (words[1] & 0xffff0fffU) | 0x00004000U;  // version 4
  words[2] = (words[2] & 0x3fffffffU) | 0x80000000U;  // the usual variant
  char text[37];
  std::snprintf(text, sizeof text, "%08x-%04x-%04x-%04x-%04x%08x", words[0], words[1] >> 16,
                words[1] & 0xffffU, words[2] >> 16, words[2] & 0xffffU, words[3]);
  return text;
}

std::string TimeText(std::chrono::sys_time<std::chrono::milliseconds> time) {
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  char text[48];
  std::snprintf(text, sizeof text, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ", static_cast<int>(date.year()),
                static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
                static_cast<int>(clock.hours().count()), static_cast<int>(clock.minutes().count()),
                static_cast<int>(clock.seconds().count()), static_cast<int>(clock.subseconds().count()));
  return text;
}

}  // namespace kxbench::results
