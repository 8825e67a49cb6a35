#include <gtest/gtest.h>

#include "bench/program/NearestWord.h"
#include "tests/bench/RowName.h"

namespace kxbench {
namespace {

struct TypoRow {
  const char* name;
  std::string typed;
  const char* nearest;
};

class Typo : public testing::TestWithParam<TypoRow> {};

TEST_P(Typo, FindsTheWordThatWasMeant) {
  EXPECT_EQ(NearestWord(GetParam().typed, {"check", "run", "learn", "edit", "info"}), GetParam().nearest);
}

INSTANTIATE_TEST_SUITE_P(Words, Typo,
                         testing::Values(TypoRow{"Exchanged", "chekc", "check"},
                                         TypoRow{"LeftOut", "lern", "learn"},
                                         TypoRow{"Added", "infos", "info"},
                                         TypoRow{"Replaced", "edot", "edit"},
                                         TypoRow{"Capital", "Run", "run"}, TypoRow{"Other", "sing", ""},
                                         TypoRow{"OneOfFour", "into", "info"}, TypoRow{"Empty", "", ""},
                                         TypoRow{"Endless", std::string(100000, 'c'), ""}),
                         RowName<TypoRow>);

TEST(NearestWord, OfEqualsIsTheFirst) { EXPECT_EQ(NearestWord("bun", {"run", "bin"}), "run"); }

}  // namespace
}  // namespace kxbench
