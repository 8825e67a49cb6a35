#include <gtest/gtest.h>

#include <string>

#include "simulator/Quantity.h"
#include "tests/simulator/Bench.h"

namespace simulator {
namespace {

struct QuantityRow {
  const char* name;
  const char* word;
  Unit unit;
  std::optional<double> value;
};

class QuantityTest : public testing::TestWithParam<QuantityRow> {};

TEST_P(QuantityTest, IsReadAs) {
  EXPECT_EQ(ReadQuantity(GetParam().word, GetParam().unit), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Words, QuantityTest,
    testing::Values(
        QuantityRow{"Plain", "2200", Unit::Ohm, 2200.0}, QuantityRow{"Fraction", "0.1", Unit::Ohm, 0.1},
        QuantityRow{"NoLeadingZero", ".5", Unit::Ohm, 0.5}, QuantityRow{"Negative", "-3.3", Unit::Volt, -3.3},
        QuantityRow{"Exponent", "1e3", Unit::Ohm, 1000.0}, QuantityRow{"WithUnit", "47Ohm", Unit::Ohm, 47.0},
        QuantityRow{"Kilo", "2.2k", Unit::Ohm, 2200.0},
        QuantityRow{"KiloWithUnit", "2.2kOhm", Unit::Ohm, 2200.0},
        QuantityRow{"Mega", "4.7M", Unit::Ohm, 4.7e6}, QuantityRow{"Giga", "1GOhm", Unit::Ohm, 1e9},
        QuantityRow{"Tera", "1T", Unit::Ohm, 1e12}, QuantityRow{"MilliIsNotMega", "50m", Unit::Ohm, 0.05},
        QuantityRow{"Volts", "24V", Unit::Volt, 24.0}, QuantityRow{"Millivolts", "500mV", Unit::Volt, 0.5},
        QuantityRow{"Seconds", "0.5s", Unit::Second, 0.5},
        QuantityRow{"Milliseconds", "20ms", Unit::Second, 0.02},
        QuantityRow{"Microseconds", "5u", Unit::Second, 5e-6},
        QuantityRow{"DecimalComma", "0,1", Unit::Ohm, std::nullopt},
        QuantityRow{"UnitOfSomethingElse", "24Ohm", Unit::Volt, std::nullopt},
        QuantityRow{"CapitalKilo", "2K", Unit::Ohm, std::nullopt},
        QuantityRow{"TwoPrefixes", "2kM", Unit::Ohm, std::nullopt},
        QuantityRow{"NumberInTheMiddle", "2k2", Unit::Ohm, std::nullopt},
        QuantityRow{"PrefixAlone", "k", Unit::Ohm, std::nullopt},
        QuantityRow{"UnitAlone", "Ohm", Unit::Ohm, std::nullopt},
        QuantityRow{"Infinity", "inf", Unit::Ohm, std::nullopt},
        QuantityRow{"NotANumber", "nan", Unit::Ohm, std::nullopt},
        QuantityRow{"PlusSign", "+5", Unit::Ohm, std::nullopt},
        QuantityRow{"TooLarge", "1e999", Unit::Ohm, std::nullopt},
        QuantityRow{"Empty", "", Unit::Ohm, std::nullopt}),
    RowName<QuantityRow>);

TEST(NumberTest, TakesNoPrefix) {
  EXPECT_EQ(ReadNumber("0.25"), 0.25);
  EXPECT_EQ(ReadNumber("0.25k"), std::nullopt);
}

TEST(IntegerTest, TakesDigitsAlone) {
  EXPECT_EQ(ReadInteger("17"), 17);
  EXPECT_EQ(ReadInteger("-1"), std::nullopt);
  EXPECT_EQ(ReadInteger("1.0"), std::nullopt);
  EXPECT_EQ(ReadInteger(""), std::nullopt);
  EXPECT_EQ(ReadInteger("9223372036854775808"), std::nullopt);
}

}  // namespace
}  // namespace simulator
