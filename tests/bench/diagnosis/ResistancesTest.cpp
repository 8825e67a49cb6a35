#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/diagnosis/Resistances.h"

namespace kxbench::diagnosis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ShortCircuit, TellsItsSmallestResistanceAndItsClosestContacts) {
  Observation observation;
  observation.expected = {{1, 14}, {2, 15}};
  observation.measured = {{1, 2, 14, 15}};
  observation.resistances = {{15, 1, 0.5, {}}, {2, 14, 0.3, {}}, {1, 14, 0.1, {}}};
  observation.contacts = {{1, {"A", "1", 1}}, {14, {"B", "7", 7}}, {2, {"A", "5", 5}}, {15, {"B", "8", 8}}};
  const Fault fault = Diagnose(observation).findings.at(0).explanations.at(0).at(0);
  EXPECT_EQ(fault.ohm, 0.3) << "within a net it is no short circuit";
  EXPECT_THAT(fault.closest, ElementsAre(14, 15)) << "neighbouring pins";
}

TEST(ShortCircuit, WithoutNamesIsLookedForBetweenNeighbouringChannels) {
  Observation observation;
  observation.expected = {{1, 14}, {2, 30}};
  observation.measured = {{1, 2, 14, 30}};
  const Fault fault = Diagnose(observation).findings.at(0).explanations.at(0).at(0);
  EXPECT_THAT(fault.closest, ElementsAre(1, 2));
  EXPECT_FALSE(fault.ohm.has_value());
}

TEST(BadJoint, TellsTheResistanceAcrossIt) {
  Observation observation;
  observation.expected = {{6, 19}};
  observation.measured = {{6}, {19}};
  observation.resistances = {{6, 19, 25.12, {}}};
  EXPECT_EQ(Diagnose(observation).findings.at(0).explanations.at(0).at(0).ohm, 25.12);
}

class HighResistance : public testing::Test {
 protected:
  Diagnosis Of(double ohm, std::optional<double> expectedOhm) {
    Observation observation;
    observation.expected = {{1, 14}, {2}};
    observation.measured = observation.expected;
    observation.lowerThresholdOhm = 10;
    observation.resistances = {{14, 1, ohm, expectedOhm}, {1, 2, 99, 0.1}};
    return Diagnose(observation);
  }
};

TEST_F(HighResistance, IsAHintAboveATenthOfTheThresholdMoreThanExpected) {
  const Diagnosis diagnosis = Of(1.51, 0.5);
  EXPECT_THAT(diagnosis.findings, IsEmpty());
  ASSERT_EQ(diagnosis.hints.size(), 1U) << "a pair that is not connected has none";
  EXPECT_EQ(diagnosis.hints[0].kind, FaultKind::HighResistance);
  EXPECT_THAT(diagnosis.hints[0].channels, ElementsAre(1, 14));
}

TEST_F(HighResistance, IsNoneBelow) { EXPECT_THAT(Of(1.5, 0.5).hints, IsEmpty()); }

TEST_F(HighResistance, IsNoneWhereNoResistanceIsExpected) {
  EXPECT_THAT(Of(9, std::nullopt).hints, IsEmpty());
}

}  // namespace
}  // namespace kxbench::diagnosis
