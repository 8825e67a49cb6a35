#include <gmock/gmock.h>

#include "bench/comparison/WiringComparison.h"
#include "bench/documents/WiringListReader.h"

namespace kxbench::comparison {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// An expectation of the channels 1 to `last`: what is in no net is connected to nothing.
ComparedSide Expectation(const std::string& name, std::int32_t last,
                         std::vector<std::vector<std::int32_t>> nets,
                         std::vector<std::int32_t> suspended = {}) {
  ComparedSide side;
  side.name = name;
  side.isExpectation = true;
  side.wiring.suspended = std::move(suspended);
  std::vector<bool> taken(static_cast<std::size_t>(last) + 1, false);
  for (const auto& net : nets) {
    for (const std::int32_t channel : net) taken[static_cast<std::size_t>(channel)] = true;
  }
  for (const std::int32_t channel : side.wiring.suspended) taken[static_cast<std::size_t>(channel)] = true;
  for (std::int32_t channel = 1; channel <= last; ++channel) {
    side.wiring.pins[channel] = documents::UnnamedPin(channel);
    if (!taken[static_cast<std::size_t>(channel)]) side.wiring.single.push_back(channel);
  }
  side.wiring.nets = std::move(nets);
  return side;
}

void Name(ComparedSide& side, std::int32_t channel, const documents::Pin& pin) {
  side.wiring.pins[channel] = pin;
  side.names[channel] = documents::PinText(pin);
}

ComparedSide Drawing(const std::string& rows) {
  ComparedSide side;
  side.name = "drawing.csv";
  side.hasChannels = false;
  side.wiring = documents::WiringOfPins(documents::ReadWiringList(side.name, "from,to\n" + rows));
  return side;
}

TEST(ComparedExpectations, AreEqualWithTheSameNets) {
  const WiringComparison comparison =
      Compare(Expectation("a.dat", 4, {{1, 3}}), Expectation("b.dat", 4, {{1, 3}}));
  EXPECT_TRUE(comparison.Equal());
  EXPECT_EQ(ComparisonReport(comparison), "a.dat against b.dat:\nequal; 1 net agrees\n");
}

TEST(ComparedExpectations, DifferInTheWordsOfDiagnosis) {
  const WiringComparison comparison =
      Compare(Expectation("learned.dat", 4, {{1, 4}, {2, 3}}), Expectation("drawn.dat", 4, {{1, 3}, {2, 4}}));
  EXPECT_FALSE(comparison.Equal());
  EXPECT_EQ(
      ComparisonReport(comparison),
      "learned.dat against drawn.dat:\n"
      "  swapped: the wires on 1 and 2, or their other ends on 3 and 4; two-ended wires do not tell which: "
      "look for the wrong end, exchange the two there\n"
      "    drawn.dat has (1, 3) (2, 4); learned.dat has (1, 4) (2, 3)\n"
      "different; 0 nets agree\n");
}

TEST(ComparedExpectations, TellTheSampleFromWhatShouldBe) {
  const ComparedSide whole = Expectation("whole.dat", 3, {{1, 2, 3}});
  const ComparedSide open = Expectation("open.dat", 3, {{1, 2}});
  EXPECT_EQ(Compare(open, whole).faults.findings.at(0).explanations[0][0].kind, diagnosis::FaultKind::Open);
  EXPECT_EQ(Compare(whole, open).faults.findings.at(0).explanations[0][0].kind, diagnosis::FaultKind::Short);
}

TEST(ComparedExpectations, TellSuspendedChannelsApart) {
  const ComparedSide all = Expectation("all.dat", 4, {{1, 3}, {2, 4}});
  const ComparedSide some = Expectation("some.dat", 4, {{2, 4}}, {1});
  const WiringComparison comparison = Compare(some, all);
  EXPECT_THAT(comparison.faults.findings, IsEmpty());
  EXPECT_THAT(comparison.suspended.a, ElementsAre("1"));
  EXPECT_FALSE(comparison.Equal());
  EXPECT_THAT(ComparisonReport(comparison), HasSubstr("  suspended in some.dat alone: 1\n"));
  EXPECT_TRUE(Compare(some, some).Equal());
}

TEST(ComparedExpectations, TellExcludedPairsApart) {
  ComparedSide some = Expectation("some.dat", 4, {{1, 3}});
  some.wiring.excluded = {{2, 4}};
  const ComparedSide all = Expectation("all.dat", 4, {{1, 3}});
  const WiringComparison comparison = Compare(all, some);
  EXPECT_THAT(comparison.excluded.b, ElementsAre("2 - 4"));
  EXPECT_FALSE(comparison.Equal());
  EXPECT_TRUE(Compare(some, some).Equal());
}

TEST(ComparedExpectations, DifferInTheirChannels) {
  const WiringComparison comparison =
      Compare(Expectation("a.dat", 3, {{1, 2}}), Expectation("b.dat", 5, {{1, 2}}));
  EXPECT_THAT(comparison.only.b, ElementsAre("4", "5"));
  EXPECT_FALSE(comparison.Equal());
}

TEST(ComparedExpectations, DifferInPairsOfWhichOneKnowsNothing) {
  ComparedSide a = Expectation("a.dat", 3, {{1, 2}});
  const ComparedSide b = a;
  a.unknownPairs = {{1, 3}, {2, 3}};
  EXPECT_FALSE(Compare(a, b).Equal());
  EXPECT_THAT(ComparisonReport(Compare(a, b)),
              HasSubstr("  unknown in a.dat: 2 pairs, neither connected nor open\n"));
  EXPECT_TRUE(Compare(a, a).Equal());
}

TEST(ComparedExpectations, DifferInAsManyUnknownPairsThatAreOthers) {
  ComparedSide a = Expectation("a.dat", 4, {});
  ComparedSide b = Expectation("b.dat", 4, {});
  a.unknownPairs = {{1, 2}};
  b.unknownPairs = {{3, 4}};
  const WiringComparison comparison = Compare(a, b);
  EXPECT_FALSE(comparison.Equal());
  EXPECT_EQ(comparison.unknown.a, 1U);
  EXPECT_EQ(comparison.unknown.b, 1U);
}

TEST(ComparedExpectations, DoNotDifferInUnknownPairsOfASuspendedChannel) {
  ComparedSide a = Expectation("a.dat", 4, {{1, 2}}, {3});
  ComparedSide b = Expectation("b.dat", 4, {{1, 2}});
  b.unknownPairs = {{2, 3}, {3, 4}};
  const WiringComparison comparison = Compare(a, b);
  EXPECT_FALSE(comparison.unknown.Any());
  EXPECT_THAT(comparison.suspended.a, ElementsAre("3"));
}

TEST(ComparedExpectations, DifferInPairsThatOneExpectsOpenAgainstItsConnections) {
  ComparedSide a = Expectation("a.dat", 3, {{1, 2, 3}});
  const ComparedSide b = Expectation("b.dat", 3, {{1, 2, 3}});
  a.contradictoryPairs = {{1, 3}};
  const WiringComparison comparison = Compare(b, a);
  EXPECT_FALSE(comparison.Equal());
  EXPECT_THAT(
      ComparisonReport(comparison),
      HasSubstr("  contradictory in a.dat: 1 pair, expected open though connections join them\ndifferent; "));
  EXPECT_THAT(ComparisonJson(comparison), HasSubstr(R"("contradictoryPairs":{"a":0,"b":1})"));
  EXPECT_TRUE(Compare(a, a).Equal());
}

TEST(ComparedWithADrawing, PairsAreThoseOfThePins) {
  ComparedSide learned = Expectation("learned.dat", 3, {});
  for (const std::int32_t channel : {1, 2, 3}) Name(learned, channel, {"A", std::to_string(channel)});
  learned.unknownPairs = {{1, 2}, {2, 3}};
  ComparedSide drawing = Drawing("A.3,\nA.1,\nA.2,\n");
  EXPECT_EQ(Compare(learned, drawing).unknown.a, 2U);
  EXPECT_FALSE(Compare(learned, drawing).Equal());
  drawing.unknownPairs = {{1, 3}, {2, 3}};
  EXPECT_TRUE(Compare(learned, drawing).Equal());
}

TEST(ComparedWithADrawing, MatchesPinsByTheNamesOfTheChannels) {
  ComparedSide learned = Expectation("learned.dat", 14, {{1, 14}});
  Name(learned, 1, {"A", "1"});
  Name(learned, 14, {"B", "7"});
  EXPECT_TRUE(Compare(learned, Drawing("A.1,B.7\n")).Equal());
  const WiringComparison comparison = Compare(learned, Drawing("A.1,\nB.7,\n"));
  EXPECT_THAT(ComparisonReport(comparison),
              HasSubstr("learned.dat against drawing.csv, pin by pin:\n  short: "));
  EXPECT_THAT(ComparisonReport(comparison), HasSubstr("drawing.csv has A.1 B.7; learned.dat has (A.1, B.7)"));
}

TEST(ComparedWithADrawing, PinsThatItDoesNotListAreNoDifferenceUnlessConnected) {
  ComparedSide learned = Expectation("learned.dat", 3, {{1, 2}});
  Name(learned, 1, {"A", "1"});
  Name(learned, 2, {"A", "2"});
  Name(learned, 3, {"A", "3"});
  const WiringComparison unused = Compare(learned, Drawing("A.1,A.2\n"));
  EXPECT_TRUE(unused.Equal());
  EXPECT_THAT(unused.onlySingle.a, ElementsAre("A.3"));
  const WiringComparison connected = Compare(learned, Drawing("A.1,A.3\n"));
  EXPECT_FALSE(connected.Equal());
  EXPECT_THAT(connected.only.a, ElementsAre("A.2"));
}

TEST(ComparedWithADrawing, ByChannelsCarriesTheNames) {
  ComparedSide learned = Expectation("learned.dat", 2, {});
  Name(learned, 1, {"A", "1"});
  ComparedSide mapped = Expectation("drawing.csv", 2, {{1, 2}});
  mapped.isExpectation = false;
  mapped.wiring.pins = {{1, {"X", "1"}}, {2, {"X", "2"}}};
  EXPECT_THAT(ComparisonReport(Compare(learned, mapped)),
              HasSubstr("open: the wire from 1 (A.1) to 2 (X.2);"));
}

TEST(ComparedWithADrawing, PinsAreTheSameThatAreCalledTheSame) {
  ComparedSide learned = Expectation("learned.dat", 2, {{1, 2}});
  Name(learned, 1, {"X1.3", "3"});
  Name(learned, 2, {"X2", "1"});
  ComparedSide drawing;
  drawing.name = "drawing.csv";
  drawing.hasChannels = false;
  drawing.wiring.pins = {{1, {"X1", "3.3"}}, {2, {"X2", "1"}}};
  drawing.wiring.nets = {{1, 2}};
  EXPECT_EQ(ComparisonReport(Compare(learned, drawing)),
            "learned.dat against drawing.csv, pin by pin:\nequal; 1 net agrees\n");
  EXPECT_TRUE(Compare(drawing, learned).Equal());
}

TEST(ComparedWithADrawing, AConnectorWithoutPinsIsNoChannelOfItsNumber) {
  ComparedSide mapped = Expectation("mapped.csv", 5, {{2, 5}});
  mapped.isExpectation = false;
  Name(mapped, 2, {"X2", "1"});
  Name(mapped, 5, {"3", ""});  // channel 3 has no pin, and is called 3 as well
  ComparedSide drawing;
  drawing.name = "drawing.csv";
  drawing.hasChannels = false;
  drawing.wiring.pins = {{1, {"3", ""}}, {2, {"X2", "1"}}};
  drawing.wiring.nets = {{1, 2}};
  EXPECT_TRUE(Compare(mapped, drawing).Equal());
  EXPECT_TRUE(Compare(drawing, mapped).Equal());
}

TEST(ComparedDrawings, AreComparedPinByPin) {
  const WiringComparison comparison =
      Compare(Drawing("X1.1,X2.1\nX1.2,X2.2\n"), Drawing("X1.2,X2.2\nX2.1,X1.1\n"));
  EXPECT_TRUE(comparison.Equal());
  EXPECT_FALSE(comparison.byChannel);
}

TEST(ComparisonForPrograms, IsOneObject) {
  const WiringComparison comparison =
      Compare(Expectation("a.dat", 3, {{1, 2}}, {3}), Expectation("b.dat", 3, {{1, 2}}));
  EXPECT_EQ(ComparisonJson(comparison),
            R"({"format":"comparison","version":1,"a":"a.dat","b":"b.dat","by":"channel","equal":false,)"
            R"("agreeing":1,"differences":[],"suspended":{"a":["3"],"b":[]},"excluded":{"a":[],"b":[]},)"
            R"("known":{"a":[],"b":[]},"knownUnconnected":{"a":[],"b":[]},"unknownPairs":{"a":0,"b":0},)"
            R"("contradictoryPairs":{"a":0,"b":0}})"
            "\n");
}

}  // namespace
}  // namespace kxbench::comparison
