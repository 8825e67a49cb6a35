#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/diagnosis/FaultText.h"
#include "tests/bench/RowName.h"

namespace kxbench::diagnosis {
namespace {

std::string Label(Channel channel) {
  return std::to_string(channel) + (channel < 10 ? " (A" + std::to_string(channel) + ")" : "");
}

struct TextRow {
  const char* name;
  Nets expected;
  Nets measured;
  const char* text;
};

class TextOfAFault : public testing::TestWithParam<TextRow> {};

TEST_P(TextOfAFault, IsWhatAFitterWouldSay) {
  Observation observation;
  observation.expected = GetParam().expected;
  observation.measured = GetParam().measured;
  const Diagnosis diagnosis = Diagnose(observation);
  EXPECT_EQ(FaultText(diagnosis.findings.at(0).explanations.at(0).at(0), Label), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, TextOfAFault,
    testing::Values(
        TextRow{"OpenWire",
                {{4, 17}},
                {{4}, {17}},
                "open: the wire from 4 (A4) to 17; look at its two contacts first, then along the wire"},
        TextRow{"ContactOff",
                {{4, 5, 17}},
                {{4, 5}, {17}},
                "open: 17 has come off 4 (A4) and 5 (A5); look at contact 17 first"},
        TextRow{"TwoParts",
                {{4, 5, 17, 18}},
                {{4, 5}, {17, 18}},
                "open: 4 (A4) and 5 (A5) have come off 17 and 18; look at the joint between these two groups "
                "first"},
        TextRow{"Short",
                {{1, 14}, {2, 15}},
                {{1, 2, 14, 15}},
                "short: 1 (A1) and 14, with 2 (A2) and 15; look between 1 (A1) and 2 (A2) first"},
        TextRow{"SwappedSomewhere",
                {{1, 14}, {4, 17}},
                {{1, 17}, {4, 14}},
                "swapped: the wires on 1 (A1) and 4 (A4), or their other ends on 14 and 17; two-ended wires "
                "do not tell which: look for the wrong end, exchange the two there"},
        TextRow{"SwappedHere",
                {{1, 2, 14}, {4, 17}},
                {{1, 2, 17}, {4, 14}},
                "swapped: the wires on 14 and 17; exchange these two"},
        TextRow{"Crossed",
                {{1, 2, 14, 15, 20}, {4, 5, 17, 18, 21}},
                {{1, 2, 17, 18, 20}, {4, 5, 14, 15, 21}},
                "crossed: two nets are on each other's contacts at 14, 15, 17 and 18; exchange them there"},
        TextRow{"Misplaced",
                {{1, 14}, {9}},
                {{9, 14}, {1}},
                "misplaced: the wire that belongs on 1 (A1) is on 9 (A9), which should be unused; move it to "
                "1 (A1)"},
        TextRow{"Compound",
                {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}},
                {{1, 4, 7}, {2, 5, 8}, {3, 6, 9}},
                "compound: 6 opens and 6 shorts in 3 nets, contacts 1 (A1), 2 (A2), 3 (A3), 4 (A4), 5 (A5) "
                "and 4 more; several faults hide each other: look at these nets contact by contact"}),
    RowName<TextRow>);

TEST(TextOfAPlug, SaysHowItIsWrong) {
  Fault fault;
  fault.plugs = {"X1", "X2"};
  fault.kind = FaultKind::PlugsExchanged;
  EXPECT_EQ(FaultText(fault, Label), "plugs exchanged: X1 and X2 are in each other's place; exchange them");
  fault.kind = FaultKind::PlugReversed;
  EXPECT_EQ(FaultText(fault, Label),
            "plug reversed: the contacts of X1 run from the last to the first; turn it round");
  fault.kind = FaultKind::PlugShifted;
  fault.shift = -2;
  EXPECT_EQ(FaultText(fault, Label),
            "plug shifted: every wire of X1 is 2 contacts too low; look at how X1 is plugged in or numbered "
            "first");
  fault.shift = 1;
  fault.around = true;
  EXPECT_EQ(FaultText(fault, Label),
            "plug shifted: every wire of X1 is 1 contact too high, those past the end at the other end; look "
            "at how X1 is plugged in or numbered first");
}

TEST(TextOfAMeasurement, HasItsUnit) {
  EXPECT_EQ(FaultText(VoltageFault(6, 12), Label),
            "voltage: 12 V on 6 (A6); remove the source and measure again, nothing else is known");
  Observation observation;
  observation.expected = {{6, 19}};
  observation.measured = {{6}, {19}};
  observation.resistances = {{6, 19, 25.12, {}}};
  EXPECT_EQ(FaultText(Diagnose(observation).findings[0].explanations[0][0], Label),
            "open, a joint of 25.12 Ohm: the wire from 6 (A6) to 19; look at its two contacts first, then "
            "along the "
            "wire");
  observation.measured = observation.expected;
  observation.resistances[0] = {6, 19, 3.5, 0.1};
  EXPECT_EQ(
      FaultText(Diagnose(observation).hints[0], Label),
      "high resistance: 6 (A6) to 19 has 3.5 Ohm instead of 0.1 Ohm; look at the joints of these contacts");
}

TEST(OtherExplanationsText, LeavesOutWhatIsSaidAlready) {
  Observation observation;
  observation.expected = {{1, 14}, {4, 17}};
  observation.measured = {{1, 17}, {4, 14}};
  Diagnosis diagnosis = Diagnose(observation);
  EXPECT_THAT(AlternativeTexts(diagnosis.findings[0], Label), testing::IsEmpty());
  EXPECT_EQ(EvidenceText(diagnosis.findings[0]), "expected (1, 14) (4, 17); measured (1, 17) (4, 14)");

  observation.expected = {{1, 2, 14, 15}};
  observation.measured = {{1, 2}, {14, 15}};
  diagnosis = Diagnose(observation);
  EXPECT_THAT(AlternativeTexts(diagnosis.findings[0], Label),
              testing::ElementsAre("or: open: 14 and 15 have come off 1 (A1) and 2 (A2); look at the joint "
                                   "between these two groups first"));
}

}  // namespace
}  // namespace kxbench::diagnosis
