#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <string_view>

#include "bench/results/Result.h"

namespace kxbench::results {
namespace {

using namespace std::chrono_literals;

TEST(ResultTest, EveryVerdictHasAWordAndIsFoundByIt) {
  std::set<std::string_view> words;
  for (const Verdict verdict : {Verdict::Pass, Verdict::Fail, Verdict::Error, Verdict::Cancelled}) {
    words.insert(VerdictWord(verdict));
    EXPECT_EQ(VerdictOf(VerdictWord(verdict)), verdict);
  }
  EXPECT_EQ(words, (std::set<std::string_view>{"pass", "fail", "error", "cancelled"}));
  EXPECT_EQ(VerdictOf("Pass"), std::nullopt);
}

/// x: a hexadecimal digit; v: one of those that name the variant.
bool IsRandomUuid(std::string_view id) {
  const auto fits = [](char wanted, char c) {
    if (wanted == 'x') return std::string_view("0123456789abcdef").find(c) != std::string_view::npos;
    if (wanted == 'v') return std::string_view("89ab").find(c) != std::string_view::npos;
    return c == wanted;
  };
  constexpr std::string_view Pattern = "xxxxxxxx-xxxx-4xxx-vxxx-xxxxxxxxxxxx";
  return std::equal(Pattern.begin(), Pattern.end(), id.begin(), id.end(), fits);
}

TEST(ResultTest, IdentifiersAreRandomUuidsAndDiffer) {
  std::set<std::string> ids;
  for (int i = 0; i < 100; ++i) {
    const std::string id = NewId();
    EXPECT_TRUE(IsRandomUuid(id)) << id;
    ids.insert(id);
  }
  EXPECT_EQ(ids.size(), 100U);
}

TEST(ResultTest, TimesAreUtcWithMilliseconds) {
  constexpr std::chrono::sys_days day = std::chrono::year(2026) / 11 / 22;
  EXPECT_EQ(TimeText(day + 8h + 15min + 30s + 125ms), "2026-11-22T08:15:30.125Z");
  EXPECT_EQ(TimeText(day - 1ms), "2026-11-21T23:59:59.999Z");
}

}  // namespace
}  // namespace kxbench::results
