#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "bench/diagnosis/FaultText.h"
#include "bench/diagnosis/Plugs.h"
#include "tests/bench/RowName.h"
#include "tests/bench/diagnosis/GeneratedFaults.h"

namespace kxbench::diagnosis {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;

/// Plugs A (channels 1 to 4), B (5 to 8) and C (9 to 12), pins 1 to 4.
std::map<Channel, wiring::Contact> ThreePlugs() {
  std::map<Channel, wiring::Contact> contacts;
  for (Channel channel = 1; channel <= 12; ++channel) {
    const std::int32_t pin = (channel - 1) % 4 + 1;
    contacts[channel] = {std::string(1, static_cast<char>('A' + (channel - 1) / 4)), std::to_string(pin),
                         pin};
  }
  return contacts;
}

/// A1-B1, A2-B2, A3-C1-C2, A4-C3, B3-B4; C4 unused.
Nets Harness() { return {{1, 5}, {2, 6}, {3, 9, 10}, {4, 11}, {7, 8}, {12}}; }

Diagnosis With(const std::vector<Move>& moves) {
  Fault fault;
  fault.kind = FaultKind::PlugShifted;
  fault.moves = moves;
  Observation observation;
  observation.expected = Harness();
  observation.measured = Applied(Explanation{fault}, Harness());
  observation.contacts = ThreePlugs();
  return Diagnose(observation);
}

std::vector<std::string> Texts(const Diagnosis& diagnosis) {
  std::vector<std::string> texts;
  for (const Finding& finding : diagnosis.findings) {
    for (const Explanation& explanation : finding.explanations) {
      std::string text;
      for (const Fault& fault : explanation) {
        text += KindWord(fault.kind);
        for (const std::string& plug : fault.plugs) text += " " + plug;
        if (fault.kind == FaultKind::PlugShifted) {
          text += " " + std::to_string(fault.shift) + (fault.around ? " around" : "");
        }
      }
      texts.push_back(text);
    }
  }
  return texts;
}

TEST(TwoPlugsInEachOthersPlace, AreNamed) {
  const Diagnosis diagnosis = With({{1, 9}, {2, 10}, {3, 11}, {4, 12}, {9, 1}, {10, 2}, {11, 3}, {12, 4}});
  EXPECT_THAT(Texts(diagnosis), ElementsAre("plugs-exchanged A C"));
  EXPECT_THAT(diagnosis.findings[0].explanations[0][0].channels, ElementsAre(1, 2, 3, 4, 9, 10, 11, 12));
  EXPECT_TRUE(testkit::AllFit(diagnosis));
}

TEST(PlugTheWrongWayRound, IsNamed) {
  const Diagnosis diagnosis = With({{1, 4}, {2, 3}, {3, 2}, {4, 1}});
  EXPECT_THAT(Texts(diagnosis), ElementsAre("plug-reversed A"));
}

struct ShiftRow {
  const char* name;
  std::vector<Move> moves;
  const char* named;
};

class ShiftedPlug : public testing::TestWithParam<ShiftRow> {};

TEST_P(ShiftedPlug, IsNamed) {
  const Diagnosis diagnosis = With(GetParam().moves);
  EXPECT_THAT(Texts(diagnosis), Contains(GetParam().named));
  EXPECT_EQ(diagnosis.findings.size(), 1U);
  EXPECT_TRUE(testkit::AllFit(diagnosis));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ShiftedPlug,
    testing::Values(ShiftRow{"ByOne", {{1, 2}, {2, 3}, {3, 4}, {4, {}}}, "plug-shifted A 1"},
                    ShiftRow{"Back", {{1, {}}, {2, {}}, {3, 1}, {4, 2}}, "plug-shifted A -2"},
                    ShiftRow{"Around", {{1, 2}, {2, 3}, {3, 4}, {4, 1}}, "plug-shifted A 1 around"}),
    RowName<ShiftRow>);

TEST(WrongPlug, BesideAnotherFaultIsNamedToo) {
  Fault fault;
  fault.kind = FaultKind::PlugReversed;
  fault.moves = {{1, 4}, {2, 3}, {3, 2}, {4, 1}};
  Observation observation;
  observation.expected = Harness();
  observation.measured = Applied(Explanation{fault}, Harness());
  std::erase(observation.measured, Net{7, 8});
  observation.measured.push_back({7});
  observation.measured.push_back({8});
  observation.contacts = ThreePlugs();
  EXPECT_THAT(Texts(Diagnose(observation)), ElementsAre("plug-reversed A", "open", "open"));
}

TEST(SwappedWires, OfAPlugWithTwoContactsComeBeforeThePlug) {
  Observation observation;
  observation.expected = {{1, 3, 4}, {2, 5, 6}};
  observation.measured = {{2, 3, 4}, {1, 5, 6}};
  observation.contacts = {{1, {"A", "1", 1}}, {2, {"A", "2", 2}}};
  EXPECT_THAT(Texts(Diagnose(observation)),
              ElementsAre("swapped", "plug-reversed A", "plug-shifted A 1 around"));
}

TEST(OpenWire, IsNoPlugThatLiesBesideItsContacts) {
  Observation observation;
  observation.expected = {{1, 5}, {2}, {3}};
  observation.measured = {{1}, {5}, {2}, {3}};
  observation.contacts = {{1, {"A", "1", 1}}, {2, {"A", "2", 2}}, {3, {"A", "3", 3}}};
  EXPECT_THAT(Texts(Diagnose(observation)), ElementsAre("open", "open"));
}

TEST(PinsWithGaps, AreShiftedByNumberAndByPlace) {
  const Plug plug{"A", {{1, "1", 1}, {2, "3", 3}, {3, "4", 4}}};
  std::vector<std::vector<Move>> shifts;
  for (const Fault& fault : WrongPlugs(plug)) {
    if (fault.kind == FaultKind::PlugShifted && fault.shift == 1 && !fault.around)
      shifts.push_back(fault.moves);
  }
  const std::vector<Move> byPlace = {{1, 2}, {2, 3}, {3, {}}};
  const std::vector<Move> byNumber = {{1, {}}, {2, 3}, {3, {}}};
  EXPECT_THAT(shifts, ElementsAre(byPlace, byNumber));
}

TEST(ContactsWithoutANumber, StayWhereTheyAreWhenOthersHaveOne) {
  const Plug plug{"A", {{1, "1", 1}, {2, "2", 2}, {9, "shell", {}}}};
  for (const Fault& fault : WrongPlugs(plug)) {
    for (const Move& move : fault.moves) EXPECT_NE(move.from, 9);
  }
}

TEST(PinNumbersBeyondAnyPlug, AreNotTriedOneByOne) {
  const Plug plug{"A", {{1, "1", 1}, {2, "2000000000", 2'000'000'000}}};
  EXPECT_LT(WrongPlugs(plug).size(), 10U);
}

TEST(PlugsOfAHarness, HaveTwoContactsAndMoreInTheirOrder) {
  const std::vector<Plug> plugs =
      PlugsOf({{5, {"X", "10", 10}}, {6, {"X", "9", 9}}, {7, {"Y", "1", 1}}, {8, {"X", "S", std::nullopt}}});
  ASSERT_EQ(plugs.size(), 1U);
  std::vector<std::string> pins;
  for (const PlugPin& pin : plugs[0].pins) pins.push_back(pin.name);
  EXPECT_THAT(pins, ElementsAre("9", "10", "S"));
}

}  // namespace
}  // namespace kxbench::diagnosis
