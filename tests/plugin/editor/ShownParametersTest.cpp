#include <gtest/gtest.h>

#include "plugin/editor/ShownParameters.h"
#include "text/NumberText.h"

namespace shorttest {
namespace {

class Shown : public ::testing::Test {
 protected:
  Shown() { SetDecimalSeparator(","); }
  ~Shown() override { SetDecimalSeparator(std::nullopt); }

  TShortTestData data{1, 48};
};

struct ThresholdCase {
  const char* name;
  double ohm;
  int position;
  const char* text;
  int upperMinimum;
};

class LowerThreshold : public Shown, public ::testing::WithParamInterface<ThresholdCase> {};

TEST_P(LowerThreshold, IsShownInOhm) {
  data.Schwelle = GetParam().ohm;
  const ShownParameters shown = ShowParameters(data);
  EXPECT_EQ(shown.thresholdPosition, GetParam().position);
  EXPECT_EQ(shown.thresholdText, GetParam().text);
  EXPECT_EQ(shown.upperThresholdMinimum, GetParam().upperMinimum);
}

INSTANTIATE_TEST_SUITE_P(Table, LowerThreshold,
                         ::testing::Values(ThresholdCase{"Default", 10.0, 10, "10", 0},
                                           ThresholdCase{"HalfToEvenDown", 2.5, 2, "2,5", 0},
                                           ThresholdCase{"HalfToEvenUp", 3.5, 4, "3,5", 0},
                                           ThresholdCase{"RoundedUp", 2.75, 3, "2,75", 0},
                                           ThresholdCase{"KiloOhm", 2500.0, 2500, "2500", 2},
                                           ThresholdCase{"Negative", -1.0, -1, "-1", -1},
                                           ThresholdCase{"Huge", 1e300, 2147483647, "1E300", 2147483647}),
                         [](const auto& row) { return row.param.name; });

struct UpperCase {
  const char* name;
  double lower;
  double upper;
  int position;
  const char* text;
};

class UpperThreshold : public Shown, public ::testing::WithParamInterface<UpperCase> {};

TEST_P(UpperThreshold, IsShownInKiloOhm) {
  data.Schwelle = GetParam().lower;
  data.Schwelle2 = GetParam().upper;
  const ShownParameters shown = ShowParameters(data);
  EXPECT_EQ(shown.upperThresholdPosition, GetParam().position);
  EXPECT_EQ(shown.upperThresholdText, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Table, UpperThreshold,
                         ::testing::Values(UpperCase{"AboveTheLower", 10.0, 15000.0, 15, "15"},
                                           UpperCase{"HalfToEven", 10.0, 2500.0, 2, "2,5"},
                                           UpperCase{"EqualIsEmpty", 10.0, 10.0, 0, ""},
                                           UpperCase{"BelowIsEmpty", 2500.0, 100.0, 2, ""}),
                         [](const auto& row) { return row.param.name; });

TEST_F(Shown, OptionsAsTheyAre) {
  data.U_Control = 1;
  data.Timeout = 3000;
  data.MaxError = 7;
  const ShownParameters shown = ShowParameters(data);
  EXPECT_EQ(shown.voltageControl, 1);
  EXPECT_EQ(shown.timeoutMs, 3000);
  EXPECT_EQ(shown.maxError, 7);
}

TEST_F(Shown, TerminatingRelayNeedsCardAndRelay) {
  data.LastRelaisKarte = 2;
  EXPECT_FALSE(ShowParameters(data).terminatingRelay);
  data.LastRelais = 17;
  ASSERT_TRUE(ShowParameters(data).terminatingRelay);
  EXPECT_EQ(ShowParameters(data).terminatingRelay->card, 2);
  EXPECT_EQ(ShowParameters(data).terminatingRelay->relay, 17);
  data.LastRelaisKarte = -1;
  EXPECT_FALSE(ShowParameters(data).terminatingRelay);
}

}  // namespace
}  // namespace shorttest
