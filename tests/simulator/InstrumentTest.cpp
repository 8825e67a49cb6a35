#include <gtest/gtest.h>

#include <cmath>

#include "simulator/Instrument.h"
#include "tests/simulator/Bench.h"

namespace simulator {
namespace {

Instrument Ideal() { return Instrument(DeviceDescription{}); }

struct RangeRow {
  const char* name;
  int range;
  double ohm;
  double reading;
};

class RangeTest : public testing::TestWithParam<RangeRow> {};

TEST_P(RangeTest, ReadsInItsUnit) {
  EXPECT_EQ(Ideal().ReadResistance(GetParam().range, GetParam().ohm), GetParam().reading);
}

INSTANTIATE_TEST_SUITE_P(
    Ranges, RangeTest,
    testing::Values(RangeRow{"Range1InOhm", 1, 0.42, 0.42}, RangeRow{"Range1FullScale", 1, 200.0, 200.0},
                    RangeRow{"Range1Over", 1, 200.1, 1e9}, RangeRow{"Range2InKiloohm", 2, 470.0, 0.47},
                    RangeRow{"Range2FullScale", 2, 2e3, 2.0}, RangeRow{"Range2Over", 2, 2001.0, 1e9},
                    RangeRow{"Range3InKiloohm", 3, 4700.0, 4.7}, RangeRow{"Range3Over", 3, 20.1e3, 1e9},
                    RangeRow{"Range4InKiloohm", 4, 47e3, 47.0}, RangeRow{"Range4Over", 4, 201e3, 1e9},
                    RangeRow{"Range5InMegaohm", 5, 470e3, 0.47}, RangeRow{"Range5Over", 5, 2.1e6, 1e9},
                    RangeRow{"Range6InMegaohm", 6, 4.7e6, 4.7}, RangeRow{"Range6Insulation", 6, 1e9, 1e3},
                    RangeRow{"Range6Over", 6, 2.1e9, 1e9}, RangeRow{"Open", 1, Infinity, 1e9},
                    RangeRow{"OpenInRange6", 6, Infinity, 1e9}, RangeRow{"Short", 1, 0.0, 0.0},
                    RangeRow{"SmallInAHighRange", 6, 0.1, 1e-7}),
    RowName<RangeRow>);

TEST(Instrument, FullScaleLiesAboveEveryThresholdThatSelectsTheRange) {
  // The ranges begin at 180 Ohm times powers of ten; a reading near the threshold may lie a tenth above it.
  double nextRangeBegins = 180.0;
  for (int range = 1; range < Instrument::ResistanceRanges; ++range, nextRangeBegins *= 10.0) {
    EXPECT_GT(Instrument::FullScaleOhm(range), 1.1 * nextRangeBegins) << range;
    EXPECT_GT(Instrument::OverRange * Instrument::UnitOhm(range), Instrument::FullScaleOhm(range)) << range;
  }
}

TEST(Instrument, DisplaysSevenDigits) {
  EXPECT_EQ(Ideal().ReadResistance(1, 1.0 / 3.0), 0.3333333);
  EXPECT_EQ(Ideal().ReadResistance(1, 0.1 + 0.2), 0.3);
  EXPECT_EQ(Ideal().ReadVoltage(-23.99999976), -24.0);
}

TEST(Instrument, VoltageBeyondFullScaleKeepsItsSign) {
  EXPECT_EQ(Ideal().ReadVoltage(200.0), 200.0);
  EXPECT_EQ(Ideal().ReadVoltage(201.0), 1e9);
  EXPECT_EQ(Ideal().ReadVoltage(-201.0), -1e9);
}

TEST(Instrument, DriftFadesFromReadingToReading) {
  DeviceDescription description;
  description.drift = {0.5, 2.0};
  Instrument instrument(description);
  for (int reading = 0; reading < 5; ++reading) {
    EXPECT_NEAR(instrument.ReadResistance(1, 100.0), 100.0 * (1.0 + 0.5 * std::exp(-reading / 2.0)), 1e-4);
  }
}

TEST(Instrument, SwitchingARelayStartsTheDriftAnew) {
  DeviceDescription description;
  description.drift = {-0.5, 1.0};
  Instrument instrument(description);
  EXPECT_EQ(instrument.ReadResistance(1, 10.0), 5.0);
  EXPECT_GT(instrument.ReadResistance(1, 10.0), 5.0);
  instrument.StartSettling();
  EXPECT_EQ(instrument.ReadResistance(1, 10.0), 5.0);
}

TEST(Instrument, NoiseRepeatsWithItsSeed) {
  DeviceDescription description;
  description.resistanceNoise = {0.1, 0.0};
  description.seed = 7;
  Instrument first(description);
  Instrument second(description);
  description.seed = 8;
  Instrument other(description);
  const double reading = first.ReadResistance(1, 10.0);
  EXPECT_EQ(second.ReadResistance(1, 10.0), reading);
  EXPECT_NE(other.ReadResistance(1, 10.0), reading);
  EXPECT_NE(first.ReadResistance(1, 10.0), reading);
}

struct NoiseRow {
  const char* name;
  Noise noise;
  double value;
  double expectedDeviation;
};

class NoiseTest : public testing::TestWithParam<NoiseRow> {};

TEST_P(NoiseTest, HasItsStandardDeviation) {
  DeviceDescription description;
  description.resistanceNoise = GetParam().noise;
  description.voltageNoise = GetParam().noise;
  Instrument instrument(description);
  constexpr int Readings = 4000;
  double ohmSquares = 0.0;
  double voltSquares = 0.0;
  for (int i = 0; i < Readings; ++i) {
    ohmSquares += std::pow(instrument.ReadResistance(1, GetParam().value) - GetParam().value, 2);
    voltSquares += std::pow(instrument.ReadVoltage(GetParam().value) - GetParam().value, 2);
  }
  const double expected = GetParam().expectedDeviation;
  EXPECT_NEAR(std::sqrt(ohmSquares / Readings), expected, 0.05 * expected);
  EXPECT_NEAR(std::sqrt(voltSquares / Readings), expected, 0.05 * expected);
}

INSTANTIATE_TEST_SUITE_P(Deviations, NoiseTest,
                         testing::Values(NoiseRow{"Absolute", {0.2, 0.0}, 50.0, 0.2},
                                         NoiseRow{"Relative", {0.0, 0.01}, 50.0, 0.5},
                                         NoiseRow{"Both", {0.3, 0.008}, 50.0, 0.5}),
                         RowName<NoiseRow>);

TEST(Instrument, OverRangeIsSteady) {
  DeviceDescription description;
  description.resistanceNoise = {1.0, 0.1};
  description.drift = {-0.9, 5.0};
  Instrument instrument(description);
  for (int i = 0; i < 10; ++i) EXPECT_EQ(instrument.ReadResistance(1, Infinity), Instrument::OverRange);
}

}  // namespace
}  // namespace simulator
