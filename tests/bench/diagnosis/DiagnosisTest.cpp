#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/diagnosis/Diagnosis.h"
#include "bench/diagnosis/FaultText.h"
#include "tests/bench/RowName.h"
#include "tests/bench/diagnosis/GeneratedFaults.h"

namespace kxbench::diagnosis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// "swapped 14 17" for each fault; faults of one explanation with " + ", explanations with " | ".
std::vector<std::string> NamesIn(const Diagnosis& diagnosis) {
  std::vector<std::string> findings;
  for (const Finding& finding : diagnosis.findings) {
    std::string text;
    for (const Explanation& explanation : finding.explanations) {
      if (!text.empty()) text += " | ";
      for (const Fault& fault : explanation) {
        if (&fault != &explanation.front()) text += " + ";
        text += KindWord(fault.kind) + " " + testkit::Text(fault.channels);
      }
    }
    findings.push_back(text);
  }
  return findings;
}

Diagnosis OfNets(Nets expected, Nets measured) {
  Observation observation;
  observation.expected = std::move(expected);
  observation.measured = std::move(measured);
  return Diagnose(observation);
}

struct FaultRow {
  const char* name;
  Nets expected;
  Nets measured;
  std::vector<std::string> named;
};

class FaultsOfWires : public testing::TestWithParam<FaultRow> {};

TEST_P(FaultsOfWires, AreNamed) {
  const Diagnosis diagnosis = OfNets(GetParam().expected, GetParam().measured);
  EXPECT_EQ(NamesIn(diagnosis), GetParam().named);
  EXPECT_TRUE(testkit::AllFit(diagnosis));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, FaultsOfWires,
    testing::Values(
        FaultRow{"GoodDevice", {{1, 14}, {2, 15}, {3}}, {{14, 1}, {3}, {15, 2}}, {}},
        FaultRow{"OpenWireHasTwoEnds", {{1, 14}}, {{1}, {14}}, {"open 1 | open 14"}},
        FaultRow{"ContactOffABiggerNet", {{1, 2, 3, 4}}, {{1, 2, 4}, {3}}, {"open 3"}},
        FaultRow{"TwoContactsOff", {{1, 2, 3, 4}}, {{1, 4}, {2}, {3}}, {"open 2 + open 3"}},
        FaultRow{"NetInTwoParts", {{1, 2, 3, 4, 5}}, {{1, 2}, {3, 4, 5}}, {"open 1 2"}},
        FaultRow{"NetInEqualParts", {{1, 2, 3, 4}}, {{1, 3}, {2, 4}}, {"open 1 3 | open 2 4"}},
        FaultRow{"ShortOfTwoNets", {{1, 14}, {2, 15}}, {{1, 2, 14, 15}}, {"short 1 2 14 15"}},
        FaultRow{"ShortToAnUnusedContact", {{1, 14}, {3}}, {{1, 3, 14}}, {"short 1 3 14"}},
        FaultRow{"ShortOfThreeNets", {{1}, {2}, {3}}, {{1, 2, 3}}, {"short 1 2 3"}},
        FaultRow{
            "SwappedTwoEndedWires", {{1, 14}, {4, 17}}, {{1, 17}, {4, 14}}, {"swapped 1 4 | swapped 14 17"}},
        FaultRow{"SwappedWiresOfBiggerNets", {{1, 2, 3}, {4, 5}}, {{1, 2, 5}, {3, 4}}, {"swapped 3 5"}},
        FaultRow{"CrossedNets",
                 {{1, 2, 3, 4, 9}, {5, 6, 7, 8, 10}},
                 {{1, 2, 7, 8, 9}, {3, 4, 5, 6, 10}},
                 {"crossed 3 4 7 8"}},
        FaultRow{"MisplacedWire", {{1, 14}, {9}}, {{9, 14}, {1}}, {"misplaced 1 9"}},
        FaultRow{"BreakAndShort", {{1, 2, 3}, {4, 5}}, {{1}, {2, 3, 4, 5}}, {"open 1 + short 1 2 3 4 5"}},
        FaultRow{"SwapAndBreak", {{1, 2, 3}, {4, 5, 6}}, {{1, 2, 6}, {3, 5}, {4}}, {"swapped 3 6 + open 4"}},
        FaultRow{"TwoPlaces", {{1, 2, 3}, {4, 5, 6}}, {{1, 2}, {3}, {4}, {5, 6}}, {"open 3", "open 4"}},
        FaultRow{"MoreThanTwoFaults",
                 {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}},
                 {{1, 4, 7}, {2, 5, 8}, {3, 6, 9}},
                 {"compound 1 2 3 4 5 6 7 8 9"}},
        FaultRow{"ChannelThatOneSideDoesNotKnow", {{1, 14}}, {{1, 14, 20}}, {"short 1 14 20"}}),
    RowName<FaultRow>);

TEST(ThreeWiresInARing, AreTwoSwapsInAnyOrder) {
  const Diagnosis diagnosis = OfNets({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}, {{1, 2, 9}, {4, 5, 3}, {7, 8, 6}});
  EXPECT_THAT(
      NamesIn(diagnosis),
      ElementsAre("swapped 3 6 + swapped 6 9 | swapped 3 9 + swapped 3 6 | swapped 6 9 + swapped 3 9"));
}

TEST(CompoundFault, CountsOpensAndShorts) {
  const Diagnosis diagnosis = OfNets({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}, {{1, 4, 7}, {2, 5, 8}, {3, 6, 9}});
  const Fault& fault = diagnosis.findings.at(0).explanations.at(0).at(0);
  EXPECT_EQ(fault.opens, 6U);
  EXPECT_EQ(fault.shorts, 6U);
}

TEST(DiagnosisOfADevice, CountsTheNetsThatAgree) {
  const Diagnosis diagnosis = OfNets({{1, 14}, {2, 15}, {3}, {4, 17}}, {{1, 14}, {2, 15}, {3}, {4}, {17}});
  EXPECT_EQ(diagnosis.agreeing, 2U);
  EXPECT_EQ(diagnosis.expected.size(), 4U);
  EXPECT_EQ(diagnosis.measured.size(), 5U);
}

TEST(OtherExplanations, AreWhatComesInsteadOfAFault) {
  const Diagnosis diagnosis = OfNets({{1, 2, 3}}, {{1}, {2}, {3}});
  const Finding& finding = diagnosis.findings.at(0);
  const Explanation& first = finding.explanations.front();
  ASSERT_EQ(first.size(), 2U);
  for (const Fault& fault : first) {
    const std::vector<Fault> others = Alternatives(finding, fault);
    ASSERT_EQ(others.size(), 1U) << "contact 3 may be what is left, or what came off";
    EXPECT_THAT(others[0].channels, ElementsAre(3));
  }
}

TEST(NoChannels, AreNoFault) { EXPECT_THAT(OfNets({}, {}).findings, IsEmpty()); }

}  // namespace
}  // namespace kxbench::diagnosis
