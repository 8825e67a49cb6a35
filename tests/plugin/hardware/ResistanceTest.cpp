#include <cmath>
#include <limits>
#include <stdexcept>
#include <vector>

#include "plugin/hardware/Measurement.h"
#include "tests/support/Bench.h"

namespace shorttest::testkit {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NoReading = std::numeric_limits<double>::quiet_NaN();

// --- the range ---

struct RangeRow {
  const char* name;
  double reference;  // Ohm
  int range;
};

class RangeOfReference : public Bench, public ::testing::WithParamInterface<RangeRow> {};

TEST_P(RangeOfReference, IsTheOneTheInstrumentIsReadIn) {
  driver.NextReadings({0.0});
  MeasureResistance(GetParam().reference);
  EXPECT_EQ(log.Text(), "read 10 " + std::to_string(GetParam().range) + " 2\nerror?\n");
  EXPECT_EQ(ResistanceRange(GetParam().reference), GetParam().range);
}

// The changes lie at 10^(n + 0.25527238), a hair below 180: 179.99995 and its powers of ten.
INSTANTIATE_TEST_SUITE_P(
    Thresholds, RangeOfReference,
    ::testing::Values(RangeRow{"SmallestNumber", 5e-324, 1}, RangeRow{"Milliohm", 1e-3, 1},
                      RangeRow{"Ohm", 1, 1}, RangeRow{"Default10", 10, 1}, RangeRow{"Below180", 179, 1},
                      RangeRow{"JustBelow180", 179.999, 1}, RangeRow{"At180", 180, 2},
                      RangeRow{"Above180", 181, 2}, RangeRow{"Below1800", 1799.99, 2},
                      RangeRow{"At1800", 1800, 3}, RangeRow{"Below18k", 17999.9, 3},
                      RangeRow{"At18k", 18e3, 4}, RangeRow{"Below180k", 179999, 4},
                      RangeRow{"At180k", 180e3, 5}, RangeRow{"Below1M8", 1799990, 5},
                      RangeRow{"At1M8", 1.8e6, 6}, RangeRow{"FiveMegohm", 5e6, 6},
                      RangeRow{"Below18M", 17.9e6, 6}, RangeRow{"ClampedAbove18M", 18e6, 6},
                      RangeRow{"Largest", 1.7e308, 6}, RangeRow{"Infinite", Infinity, 6}),
    [](const auto& row) { return row.param.name; });

// --- readings become Ohm; a reading below the tolerance is believed at once ---

struct UnitRow {
  const char* name;
  double reference;
  double factor;     // Ohm a unit of the instrument
  double tolerance;  // Ohm
};

class UnitOfRange : public Bench, public ::testing::WithParamInterface<UnitRow> {
 protected:
  // A raw reading for a resistance in Ohm.
  double Raw(double ohm) const { return ohm / GetParam().factor; }
};

TEST_P(UnitOfRange, ReadingsAreConvertedToOhm) {
  driver.NextReadings({7.25, 7.25});
  EXPECT_DOUBLE_EQ(MeasureResistance(GetParam().reference), 7.25 * GetParam().factor);
}

TEST_P(UnitOfRange, AFirstReadingBelowTheToleranceIsEnough) {
  driver.NextReadings({Raw(0.99 * GetParam().tolerance)});
  EXPECT_NEAR(MeasureResistance(GetParam().reference), 0.99 * GetParam().tolerance, 1e-6);
  EXPECT_EQ(log.Count("read"), 1);
}

TEST_P(UnitOfRange, AFirstReadingAtTheToleranceIsReadAgain) {
  driver.NextReadings({Raw(GetParam().tolerance), Raw(GetParam().tolerance)});
  MeasureResistance(GetParam().reference);
  EXPECT_EQ(log.Count("read"), 2);
}

TEST_P(UnitOfRange, ANegativeFirstReadingCountsByItsMagnitude) {
  driver.NextReadings({Raw(-2.0 * GetParam().tolerance), Raw(-1.5 * GetParam().tolerance)});
  EXPECT_NEAR(MeasureResistance(GetParam().reference), -1.5 * GetParam().tolerance, 1e-6);
  EXPECT_EQ(log.Count("read"), 2);
}

TEST_P(UnitOfRange, SettlingIsADifferenceBelowTheTolerance) {
  const double t = GetParam().tolerance;
  driver.NextReadings({Raw(8 * t), Raw(4 * t), Raw(2 * t), Raw(3 * t), Raw(3.5 * t), Raw(9 * t)});
  EXPECT_NEAR(MeasureResistance(GetParam().reference), 3.5 * t, 1e-6);  // 3 to 3.5 is the first below one
  EXPECT_EQ(log.Count("read"), 5);
}

INSTANTIATE_TEST_SUITE_P(Ranges, UnitOfRange,
                         ::testing::Values(UnitRow{"Range1", 10, 1, 1}, UnitRow{"Range2", 500, 1e3, 10},
                                           UnitRow{"Range3", 5e3, 1e3, 100},
                                           UnitRow{"Range4", 5e4, 1e3, 1000},
                                           UnitRow{"Range5", 5e5, 1e6, 10000},
                                           UnitRow{"Range6", 5e6, 1e6, 100000}),
                         [](const auto& row) { return row.param.name; });

class ResistanceTest : public Bench {};

TEST_F(ResistanceTest, Range3SettlesWithinAHundredOhm) {
  driver.NextReadings({2.5, 2.45});
  EXPECT_EQ(MeasureResistance(2000), 2450.0);
  EXPECT_EQ(log.Text(), "read 10 3 2\nread 10 3 2\nerror?\n");
}

TEST_F(ResistanceTest, AShortIsBelievedAtOnce) {
  driver.NextReadings({0.4});
  EXPECT_EQ(MeasureResistance(10), 0.4);
  EXPECT_EQ(log.Text(), "read 10 1 2\nerror?\n");
}

TEST_F(ResistanceTest, RangesFiveAndSixAreMultipliedTwiceByAThousand) {
  driver.NextReadings({0.0001234567890123, 0.0});
  EXPECT_EQ(MeasureResistance(1e6), 0.0001234567890123 * 1000.0 * 1000.0);
}

// --- readings that never settle ---

TEST_F(ResistanceTest, AReadingThatNeverSettlesIsTakenAfter101) {
  driver.AllReadings([](int number) { return 10.0 * number; });
  EXPECT_EQ(MeasureResistance(10), 1010.0);
  EXPECT_EQ(log.Text(), Resistance(1, 101));
}

TEST_F(ResistanceTest, AReadingThatSettlesAtThe101stIsTheSame) {
  driver.AllReadings([](int number) { return number < 100 ? 10.0 * number : 5000.0; });
  EXPECT_EQ(MeasureResistance(10), 5000.0);
  EXPECT_EQ(log.Count("read"), 101);
}

TEST_F(ResistanceTest, AReadingThatSettlesAtThe100thEndsThere) {
  driver.AllReadings([](int number) { return number < 99 ? 10.0 * number : 5000.0; });
  EXPECT_EQ(MeasureResistance(10), 5000.0);
  EXPECT_EQ(log.Count("read"), 100);
}

// --- errors ---

TEST_F(ResistanceTest, TheErrorIsLookedAtOnceAfterTheLastReading) {
  driver.NextReadings({50, 40, 30, 20, 20});
  driver.FailAt(2, "instrument");
  EXPECT_EQ(HardwareErrorOf([] { MeasureResistance(10); }), "instrument");
  EXPECT_EQ(log.Count("error?"), 1);
  EXPECT_EQ(log.Count("read"), 5);
}

TEST_F(ResistanceTest, AnErrorBeatsAGoodReading) {
  driver.NextReadings({0.4});
  driver.FailAt(1, "instrument");
  EXPECT_EQ(HardwareErrorOf([] { MeasureResistance(10); }), "instrument");
}

// --- references nothing can be measured against ---

struct ReferenceRow {
  const char* name;
  double reference;
};

class RefusedReference : public Bench, public ::testing::WithParamInterface<ReferenceRow> {};

TEST_P(RefusedReference, IsRefusedBeforeAnyReading) {
  EXPECT_THROW(MeasureResistance(GetParam().reference), std::invalid_argument);
  EXPECT_EQ(log.Text(), "");
}

INSTANTIATE_TEST_SUITE_P(Thresholds, RefusedReference,
                         ::testing::Values(ReferenceRow{"Zero", 0.0}, ReferenceRow{"NegativeZero", -0.0},
                                           ReferenceRow{"JustBelowZero", -1e-9},
                                           ReferenceRow{"MinusTen", -10.0},
                                           ReferenceRow{"MinusInfinity", -Infinity},
                                           ReferenceRow{"NotANumber", NoReading}),
                         [](const auto& row) { return row.param.name; });

// --- odd readings ---

TEST_F(ResistanceTest, AnInfiniteReadingIsReadOnAndIsAnOpenPath) {
  driver.AllReadings([](int) { return Infinity; });  // its difference to itself is no number: never settled
  EXPECT_EQ(MeasureResistance(10), Infinity);
  EXPECT_EQ(log.Count("read"), 101);
}

TEST_F(ResistanceTest, AHugeReadingSettles) {
  driver.AllReadings([](int) { return 9.9e37; });
  EXPECT_EQ(MeasureResistance(10), 9.9e37);
  EXPECT_EQ(log.Count("read"), 2);
}

TEST_F(ResistanceTest, AReadingThatIsNotANumberIsNoMeasurement) {
  driver.AllReadings([](int) { return NoReading; });
  EXPECT_THROW(MeasureResistance(10), std::runtime_error);
}

TEST_F(ResistanceTest, NotANumberIsOneReadingThatHasNotSettled) {
  driver.NextReadings({NoReading, 5.0, 5.0});
  EXPECT_EQ(MeasureResistance(10), 5.0);
  driver.NextReadings({5.0, NoReading, 5.0, 5.0});
  EXPECT_EQ(MeasureResistance(10), 5.0);
  EXPECT_EQ(log.Text(), Resistance(1, 3) + Resistance(1, 4));
}

TEST_F(ResistanceTest, NotANumberAtTheLastReadingIsNoMeasurement) {
  driver.AllReadings([](int number) { return number < 100 ? 10.0 * number : NoReading; });
  EXPECT_THROW(MeasureResistance(10), std::runtime_error);
  EXPECT_EQ(log.Count("read"), 101);
}

TEST_F(ResistanceTest, ADriverErrorExplainsNotANumberBetter) {
  driver.AllReadings([](int) { return NoReading; });
  driver.FailAt(1, "instrument unplugged");
  EXPECT_EQ(HardwareErrorOf([] { MeasureResistance(10); }), "instrument unplugged");
}

// --- voltage ---

TEST_F(ResistanceTest, AVoltageIsOneReadingUnchanged) {
  driver.NextReadings({-3.25});
  EXPECT_EQ(ReadVoltage(), -3.25);
  EXPECT_EQ(log.Text(), "read 8 2 20\nerror?\n");
}

TEST_F(ResistanceTest, AFailedVoltageReadingThrows) {
  driver.FailAt(1, "overload");
  EXPECT_EQ(HardwareErrorOf([] { ReadVoltage(); }), "overload");
}

TEST_F(ResistanceTest, ADriverErrorExplainsAVoltageThatIsNotANumberBetter) {
  driver.AllReadings([](int) { return NoReading; });
  driver.PendingError("instrument unplugged");
  EXPECT_EQ(HardwareErrorOf([] { ReadVoltage(); }), "instrument unplugged");
}

}  // namespace
}  // namespace shorttest::testkit
