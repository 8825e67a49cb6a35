#include <gtest/gtest.h>

#include <cfenv>
#include <cmath>
#include <limits>

#include "tests/text/FileFixture.h"
#include "text/Rounding.h"

namespace text_test {
namespace {

struct RoundingCase {
  const char* name;
  double value;
  double rounded;
};

class RoundToEven : public testing::TestWithParam<RoundingCase> {};

TEST_P(RoundToEven, GivesTheNearestInteger) {
  EXPECT_EQ(shorttest::RoundToEven(GetParam().value), GetParam().rounded);
}

TEST_P(RoundToEven, WhateverRoundingModeTheHostHasSet) {
  for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO, FE_TONEAREST}) {
    std::fesetround(mode);
    const double rounded = shorttest::RoundToEven(GetParam().value);
    std::fesetround(FE_TONEAREST);
    EXPECT_EQ(rounded, GetParam().rounded) << "mode " << mode;
  }
}

INSTANTIATE_TEST_SUITE_P(
    , RoundToEven,
    testing::Values(
        RoundingCase{"Zero", 0.0, 0.0}, RoundingCase{"Whole", 7.0, 7.0}, RoundingCase{"Down", 2.4, 2.0},
        RoundingCase{"Up", 2.6, 3.0}, RoundingCase{"TieToTwo", 2.5, 2.0}, RoundingCase{"TieToFour", 3.5, 4.0},
        RoundingCase{"TieToZero", 0.5, 0.0}, RoundingCase{"TieToTwoFromBelow", 1.5, 2.0},
        RoundingCase{"NegativeTieToZero", -0.5, 0.0}, RoundingCase{"NegativeTieToMinusTwo", -2.5, -2.0},
        RoundingCase{"NegativeTieToMinusFour", -3.5, -4.0}, RoundingCase{"NegativeDown", -2.6, -3.0},
        RoundingCase{"JustBelowHalf", 0.49999999999999994, 0.0},
        RoundingCase{"JustAboveHalf", 0.5000000000000001, 1.0},
        RoundingCase{"LargerThanAnyFraction", 9007199254740993.0, 9007199254740993.0},
        RoundingCase{"Infinite", std::numeric_limits<double>::infinity(),
                     std::numeric_limits<double>::infinity()}),
    CaseName());

TEST(RoundToEvenOfNoNumber, IsNoNumber) {
  EXPECT_TRUE(std::isnan(shorttest::RoundToEven(std::numeric_limits<double>::quiet_NaN())));
}

}  // namespace
}  // namespace text_test
