#include <gmock/gmock.h>

#include <set>

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

TEST(ResultTest, IdentifiersAreRandomUuidsAndDiffer) {
  std::set<std::string> ids;
  for (int i = 0; i < 100; ++i) {
    ids.insert(NewId());
    EXPECT_THAT(*ids.rbegin(),
                testing::MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"));
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
