#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>

#include "tests/text/FileFixture.h"
#include "text/NumberText.h"
#include "text/UserLocale.h"

namespace text_test {
namespace {

using shorttest::FloatToFixedText;
using shorttest::FloatToText;
using shorttest::TextToFloat;
using shorttest::TextToInteger;

class NumberText : public testing::Test {
 protected:
  NumberText() { shorttest::SetDecimalSeparator("."); }
  ~NumberText() override { shorttest::SetDecimalSeparator(std::nullopt); }
};

TEST_F(NumberText, TheSeparatorIsTheOneSet) {
  shorttest::SetDecimalSeparator(",");
  EXPECT_EQ(shorttest::DecimalSeparator(), ",");
  shorttest::SetDecimalSeparator(".");
  EXPECT_EQ(shorttest::DecimalSeparator(), ".");
}

TEST_F(NumberText, WithoutOneSetTheSeparatorIsTheUsers) {
  shorttest::SetDecimalSeparator(std::nullopt);
  EXPECT_EQ(shorttest::DecimalSeparator(), shorttest::UserDecimalSeparator());
}

struct FloatCase {
  const char* name;
  double value;
  const char* withPoint;
  const char* withComma;
};

class FloatToTextTest : public NumberText, public testing::WithParamInterface<FloatCase> {};

TEST_P(FloatToTextTest, WithAPoint) { EXPECT_EQ(FloatToText(GetParam().value), GetParam().withPoint); }

TEST_P(FloatToTextTest, WithAComma) {
  shorttest::SetDecimalSeparator(",");
  EXPECT_EQ(FloatToText(GetParam().value), GetParam().withComma);
}

constexpr double Infinity = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(
    , FloatToTextTest,
    testing::Values(
        FloatCase{"Ten", 10.0, "10", "10"}, FloatCase{"Fraction", 2.5, "2.5", "2,5"},
        FloatCase{"SevenTenths", 0.7, "0.7", "0,7"}, FloatCase{"MinusOne", -1.0, "-1", "-1"},
        FloatCase{"MinusFraction", -0.125, "-0.125", "-0,125"}, FloatCase{"Zero", 0.0, "0", "0"},
        FloatCase{"MinusZero", -0.0, "0", "0"}, FloatCase{"Hundred", 100.0, "100", "100"},
        FloatCase{"Million", 1e6, "1000000", "1000000"}, FloatCase{"SumOfTenths", 0.1 + 0.2, "0.3", "0,3"},
        FloatCase{"FifteenDigits", 1.23456789012345, "1.23456789012345", "1,23456789012345"},
        FloatCase{"TheSixteenthIsRounded", 1.234567890123456, "1.23456789012346", "1,23456789012346"},
        FloatCase{"Third", 1.0 / 3.0, "0.333333333333333", "0,333333333333333"},
        FloatCase{"TwoThirds", 2.0 / 3.0, "0.666666666666667", "0,666666666666667"},
        FloatCase{"RoundedUpToOne", 0.9999999999999999, "1", "1"},
        FloatCase{"RoundedUpToAThousand", 999.9999999999999, "1000", "1000"},
        FloatCase{"SmallestFixed", 0.00001, "0.00001", "0,00001"},
        FloatCase{"SmallestFixedWithDigits", 0.0000123456, "0.0000123456", "0,0000123456"},
        FloatCase{"JustBelowFixed", 0.000009999, "9.999E-6", "9,999E-6"},
        FloatCase{"RoundedUpToFixed", 0.0000099999999999999999, "0.00001", "0,00001"},
        FloatCase{"Millionth", 1e-6, "1E-6", "1E-6"},
        FloatCase{"FifteenIntegerDigits", 123456789012345.0, "123456789012345", "123456789012345"},
        FloatCase{"LargestFixed", 999999999999999.0, "999999999999999", "999999999999999"},
        FloatCase{"SixteenIntegerDigits", 1e15, "1E15", "1E15"},
        FloatCase{"SixteenIntegerDigitsRounded", 1234567890123456.0, "1.23456789012346E15",
                  "1,23456789012346E15"},
        FloatCase{"RoundedUpToScientific", 999999999999999.9, "1E15", "1E15"},
        FloatCase{"NoReading", 9.9e37, "9.9E37", "9,9E37"},
        FloatCase{"MinusLarge", -1.5e20, "-1.5E20", "-1,5E20"},
        FloatCase{"ThreeDigitExponent", 1e-300, "1E-300", "1E-300"},
        FloatCase{"Infinite", Infinity, "INF", "INF"}, FloatCase{"MinusInfinite", -Infinity, "-INF", "-INF"},
        FloatCase{"NotANumber", std::numeric_limits<double>::quiet_NaN(), "NAN", "NAN"}),
    CaseName());

struct FixedCase {
  const char* name;
  double value;
  int decimals;
  const char* text;
};

class FloatToFixedTextTest : public NumberText, public testing::WithParamInterface<FixedCase> {};

TEST_P(FloatToFixedTextTest, HasItsDecimals) {
  shorttest::SetDecimalSeparator(",");
  EXPECT_EQ(FloatToFixedText(GetParam().value, GetParam().decimals), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    , FloatToFixedTextTest,
    testing::Values(FixedCase{"Padded", 10.5, 2, "10,50"}, FixedCase{"Rounded", 9.876, 2, "9,88"},
                    FixedCase{"RoundedOver", 9.999, 2, "10,00"}, FixedCase{"Whole", 10.0, 2, "10,00"},
                    FixedCase{"BelowOne", 0.05, 2, "0,05"}, FixedCase{"Zero", 0.0, 2, "0,00"},
                    FixedCase{"Negative", -1.25, 1, "-1,2"}, FixedCase{"NoDecimals", 12.7, 0, "13"},
                    FixedCase{"Large", 1e20, 2, "100000000000000000000,00"}),
    CaseName());

TEST_F(NumberText, TheLargestNumberHasRoomAsFixedText) {
  const std::string text = FloatToFixedText(-std::numeric_limits<double>::max(), 2);
  EXPECT_EQ(text.size(), 1U + 309U + 1U + 2U);
}

constexpr double Largest = std::numeric_limits<double>::max();

struct ParseCase {
  const char* name;
  std::string text;  // with a point; the comma's test replaces it
  std::optional<double> value;
};

class TextToFloatTest : public NumberText, public testing::WithParamInterface<ParseCase> {};

TEST_P(TextToFloatTest, WithAPoint) { EXPECT_EQ(TextToFloat(GetParam().text), GetParam().value); }

TEST_P(TextToFloatTest, WithAComma) {
  shorttest::SetDecimalSeparator(",");
  EXPECT_EQ(TextToFloat(ReplaceAll(GetParam().text, ".", ",")), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Reads, TextToFloatTest,
    testing::Values(
        ParseCase{"Whole", "10", 10.0}, ParseCase{"Fraction", "2.5", 2.5},
        ParseCase{"Negative", "-2.5", -2.5}, ParseCase{"Plus", "+2.5", 2.5},
        ParseCase{"BlanksAround", " \t2.5 \r\n", 2.5}, ParseCase{"FormFeedsAround", "\f2.5\v", 2.5},
        ParseCase{"NoIntegerPart", ".5", 0.5}, ParseCase{"MinusWithoutIntegerPart", "-.5", -0.5},
        ParseCase{"NoFraction", "5.", 5.0}, ParseCase{"LeadingZeros", "007.250", 7.25},
        ParseCase{"Exponent", "1E3", 1000.0}, ParseCase{"SmallExponentLetter", "1e3", 1000.0},
        ParseCase{"SignedExponents", "1.5E+3", 1500.0}, ParseCase{"NegativeExponent", "15E-1", 1.5},
        ParseCase{"ExponentBehindSeparator", "5.E1", 50.0}, ParseCase{"Zero", "0", 0.0},
        ParseCase{"ZeroWithAnyExponent", "0E-400", 0.0}, ParseCase{"Smallest", "4.9E-324", 4.9e-324},
        ParseCase{"JustBelowTheLargest", "1.79769313486231E308", 1.79769313486231e308},
        ParseCase{"LargestAsWritten", "1.79769313486232E308", Largest},
        ParseCase{"LargestAsWrittenOtherwise", "-17976931348623.2E295", -Largest},
        ParseCase{"LargestWithAllItsDigits", "1.7976931348623157E308", Largest},
        ParseCase{"SmallestAsWritten", "4.94065645841247E-324", 4.9e-324},
        ParseCase{"TooSmall", "1E-400", 0.0}, ParseCase{"TooSmallBelowZero", "-1E-400", -0.0},
        ParseCase{"FarTooSmall", "1E-99999999999999999999", 0.0},
        ParseCase{"TooSmallWithoutExponent", "0." + std::string(400, '0') + "1", 0.0},
        ParseCase{"ZeroWithALargeExponent", "0E99999999999999999999", 0.0}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    Refuses, TextToFloatTest,
    testing::Values(
        ParseCase{"Empty", "", std::nullopt}, ParseCase{"Blank", "  ", std::nullopt},
        ParseCase{"Word", "ten", std::nullopt}, ParseCase{"SeparatorAlone", ".", std::nullopt},
        ParseCase{"SignAlone", "-", std::nullopt}, ParseCase{"TwoSigns", "--1", std::nullopt},
        ParseCase{"PlusMinus", "+-1", std::nullopt}, ParseCase{"TwoSeparators", "1.2.3", std::nullopt},
        ParseCase{"BlankInside", "1 2", std::nullopt}, ParseCase{"BlankBehindSign", "- 1", std::nullopt},
        ParseCase{"UnitBehind", "10 Ohm", std::nullopt}, ParseCase{"ExponentAlone", "E5", std::nullopt},
        ParseCase{"ExponentWithoutDigits", "1E", std::nullopt},
        ParseCase{"ExponentSignWithoutDigits", "1E-", std::nullopt},
        ParseCase{"ExponentWithFraction", "1E1.5", std::nullopt},
        ParseCase{"Hexadecimal", "0x10", std::nullopt}, ParseCase{"NotANumber", "NAN", std::nullopt},
        ParseCase{"Infinite", "INF", std::nullopt}, ParseCase{"Infinity", "infinity", std::nullopt},
        ParseCase{"TooLarge", "1E309", std::nullopt},
        ParseCase{"TooLargeByADigit", "1.79769313486233E308", std::nullopt},
        ParseCase{"TooLargeWithoutExponent", "2" + std::string(308, '0'), std::nullopt},
        ParseCase{"FarTooLarge", "1E99999999999999999999", std::nullopt}),
    CaseName());

class TextToFloatWithAComma : public NumberText, public testing::WithParamInterface<ParseCase> {
 protected:
  TextToFloatWithAComma() { shorttest::SetDecimalSeparator(","); }
};

TEST_P(TextToFloatWithAComma, Number) { EXPECT_EQ(TextToFloat(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(
    , TextToFloatWithAComma,
    testing::Values(ParseCase{"Whole", "10", 10.0}, ParseCase{"Fraction", "2,5", 2.5},
                    ParseCase{"NegativeWithBlanks", " -2,5 ", -2.5}, ParseCase{"NoIntegerPart", ",5", 0.5},
                    ParseCase{"NoFraction", "5,", 5.0}, ParseCase{"Exponent", "1,5E-3", 0.0015},
                    ParseCase{"LargestAsWritten", "1,79769313486232E308", Largest},
                    ParseCase{"APoint", "2.5", std::nullopt}, ParseCase{"TwoCommas", "1,2,3", std::nullopt},
                    ParseCase{"Grouped", "1.000,5", std::nullopt},
                    ParseCase{"CommaAlone", ",", std::nullopt}),
    CaseName());

// What a file is saved with is what it is loaded with, also at the ends of what a number can be.
TEST_F(NumberText, TheEndsOfTheRangeAreReadBackAsWritten) {
  for (const char* separator : {".", ","}) {
    shorttest::SetDecimalSeparator(separator);
    for (const double value :
         {Largest, -Largest, std::numeric_limits<double>::min(), std::numeric_limits<double>::denorm_min()}) {
      const auto back = TextToFloat(FloatToText(value));
      ASSERT_TRUE(back) << FloatToText(value);
      EXPECT_EQ(FloatToText(*back), FloatToText(value));
    }
    EXPECT_EQ(TextToFloat(FloatToText(Largest)), Largest);
  }
}

TEST_F(NumberText, TheOtherSeparatorIsNoNumber) {
  EXPECT_EQ(TextToFloat("2,5"), std::nullopt);
  shorttest::SetDecimalSeparator(",");
  EXPECT_EQ(TextToFloat("2.5"), std::nullopt);
  EXPECT_EQ(TextToFloat("1.000,5"), std::nullopt);
}

TEST_F(NumberText, AnEmbeddedNulIsNoNumber) {
  EXPECT_EQ(TextToFloat(std::string_view("1\0", 2)), std::nullopt);
}

TEST_F(NumberText, ASeparatorOfSeveralBytes) {
  shorttest::SetDecimalSeparator("\xD9\xAB");
  EXPECT_EQ(FloatToText(2.5),
            "2\xD9\xAB"
            "5");
  EXPECT_EQ(FloatToFixedText(2.5, 2),
            "2\xD9\xAB"
            "50");
  EXPECT_EQ(TextToFloat("2\xD9\xAB"
                        "5"),
            2.5);
  EXPECT_EQ(TextToFloat("2\xD9"
                        "5"),
            std::nullopt);
}

// What is written is read back to the same text: nothing drifts when a file is saved again and again.
TEST_F(NumberText, EveryTextWrittenIsReadBackAndWrittenTheSame) {
  std::mt19937_64 random(1);
  for (const char* separator : {".", ","}) {
    shorttest::SetDecimalSeparator(separator);
    for (int n = 0; n < 20000; ++n) {
      const std::uint64_t bits = random();
      double value = 0.0;
      std::memcpy(&value, &bits, sizeof value);
      if (!std::isfinite(value) || std::fabs(value) < 1e-307) continue;
      const std::string text = FloatToText(value);
      const auto back = TextToFloat(text);
      ASSERT_TRUE(back) << text;
      ASSERT_EQ(FloatToText(*back), text);
      ASSERT_NEAR(*back / value, 1.0, 1e-14) << text;
    }
  }
}

TEST_F(NumberText, OrdinaryValuesComeBackExactly) {
  for (int n = -20000; n <= 20000; ++n) {
    const double value = n / 100.0;
    ASSERT_EQ(TextToFloat(FloatToText(value)), value) << n;
  }
}

struct IntegerCase {
  const char* name;
  const char* text;
  std::optional<std::int32_t> value;
};

class TextToIntegerTest : public testing::TestWithParam<IntegerCase> {};

TEST_P(TextToIntegerTest, Decimal) { EXPECT_EQ(TextToInteger(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(
    Reads, TextToIntegerTest,
    testing::Values(IntegerCase{"Zero", "0", 0}, IntegerCase{"Positive", "42", 42},
                    IntegerCase{"Negative", "-42", -42}, IntegerCase{"Plus", "+42", 42},
                    IntegerCase{"LeadingZeros", "0042", 42}, IntegerCase{"BlanksAround", " \t42 \r\n", 42},
                    IntegerCase{"FormFeedsAround", "\f42\v", 42},
                    IntegerCase{"Largest", "2147483647", 2147483647},
                    IntegerCase{"Smallest", "-2147483648", std::numeric_limits<std::int32_t>::min()}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    Refuses, TextToIntegerTest,
    testing::Values(
        IntegerCase{"Empty", "", std::nullopt}, IntegerCase{"Blank", " ", std::nullopt},
        IntegerCase{"Word", "four", std::nullopt}, IntegerCase{"SignAlone", "-", std::nullopt},
        IntegerCase{"PlusAlone", "+", std::nullopt}, IntegerCase{"TwoSigns", "+-4", std::nullopt},
        IntegerCase{"MinusPlus", "-+4", std::nullopt}, IntegerCase{"TwoPluses", "++4", std::nullopt},
        IntegerCase{"Fraction", "4.0", std::nullopt}, IntegerCase{"Exponent", "4E1", std::nullopt},
        IntegerCase{"Hexadecimal", "0x4", std::nullopt}, IntegerCase{"BlankInside", "4 2", std::nullopt},
        IntegerCase{"TooLarge", "2147483648", std::nullopt},
        IntegerCase{"TooSmall", "-2147483649", std::nullopt},
        IntegerCase{"FarTooLarge", "99999999999999999999999", std::nullopt}),
    CaseName());

}  // namespace
}  // namespace text_test
