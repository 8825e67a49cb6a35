#include <gmock/gmock.h>

#include "bench/documents/WireVizReader.h"
#include "tests/bench/RowName.h"
#include "tests/bench/documents/DocumentTexts.h"

namespace kxbench::documents {
namespace {

using testing::HasSubstr;

struct ReadableWireViz {
  std::string name;
  std::string sections;  // besides those of Parts
  std::string nets;
};

// Connectors and cables that the rows use. F is a ferrule, W has two wires and a shield.
constexpr const char* Parts = R"(
connectors:
  X1: {pincount: 4, pinlabels: [GND, VCC, RX, TX]}
  X2: {pincount: 4}
  X3: {pins: [a, b, ON, 007]}
  X4: {pinlabels: [GND, GND, SIG]}
  T: {pincount: 2}
  F: {style: simple}
cables:
  W: {wirecount: 2, shield: true}
  C: {colors: [RD, BK, BK], wirelabels: [plus, minus, screen]}
  D: {wirecount: 12, color_code: DIN}
  B: {category: bundle, wirecount: 3, colors: [YE, GN]}
)";

class ReadableWireVizTest : public testing::TestWithParam<ReadableWireViz> {};

TEST_P(ReadableWireVizTest, GivesTheNets) {
  const WiringDocument document = ReadWireViz({{{"w.yml", Parts + GetParam().sections}}});
  EXPECT_EQ(ConnectedNets(document), GetParam().nets);
}

INSTANTIATE_TEST_SUITE_P(
    Sets, ReadableWireVizTest,
    testing::Values(
        ReadableWireViz{"OnePath", "connections: [[X1: 1, W: 1, X2: 3]]", "X1.1 X2.3"},
        ReadableWireViz{"Lists", "connections: [[X1: [1, 2], W: [2, 1], X2: [3, 4]]]",
                        "X1.1 X2.3; X1.2 X2.4"},
        ReadableWireViz{
            "BlockStyle",
            "connections:\n  -\n    - X1:\n      - 1\n      - 2\n    - W: [1, 2]\n    - X2: [1, 2]\n",
            "X1.1 X2.1; X1.2 X2.2"},
        ReadableWireViz{"RangeUp", "connections: [[X1: [1-3], D: [2-4], X2: [2-4]]]",
                        "X1.1 X2.2; X1.2 X2.3; X1.3 X2.4"},
        ReadableWireViz{"RangeDown", "connections: [[X1: [1-4], D: [1-4], X2: [4-1]]]",
                        "X1.1 X2.4; X1.2 X2.3; X1.3 X2.2; X1.4 X2.1"},
        ReadableWireViz{"RangeOfOne", "connections: [[X1: 2-2, D: 1, X2: 1]]", "X1.2 X2.1"},
        ReadableWireViz{"RangeWithBlanks", "connections: [[X1: [1 - 2], W: [1, 2], X2: [1-2]]]",
                        "X1.1 X2.1; X1.2 X2.2"},
        ReadableWireViz{"RangesAndPins", "connections: [[X1: [4, 1-2], D: [1-3], X2: [1-3]]]",
                        "X1.1 X2.2; X1.2 X2.3; X1.4 X2.1"},
        ReadableWireViz{"PinLabels", "connections: [[X1: [GND, TX], W: [1, 2], X2: [1, 2]]]",
                        "X1.1 X2.1; X1.4 X2.2"},
        ReadableWireViz{"PinNames", "connections: [[X3: [a, b], W: [1, 2], X2: [1, 2]]]",
                        "X3.a X2.1; X3.b X2.2"},
        ReadableWireViz{"ScalarsAreTexts", "connections: [[X3: [ON, 007], W: [1, 2], X2: [1, 2]]]",
                        "X3.ON X2.1; X3.007 X2.2"},
        ReadableWireViz{"UniqueLabelBesideOthers", "connections: [[X4: SIG, W: 1, X2: 1]]", "X4.3 X2.1"},
        ReadableWireViz{"WireByColor", "connections: [[X1: 1, C: RD, X2: 1], [X3: a, C: 1, X3: b]]",
                        "X1.1 X2.1 X3.a X3.b"},
        ReadableWireViz{"WireByLabel", "connections: [[X1: 1, C: minus, X2: 1], [X3: a, C: 2, X3: b]]",
                        "X1.1 X2.1 X3.a X3.b"},
        ReadableWireViz{"WireByColorOfACode", "connections: [[X1: 1, D: RDBU, X2: 1], [X3: a, D: 12, X3: b]]",
                        "X1.1 X2.1 X3.a X3.b"},
        ReadableWireViz{"WireByColorOfARepeatedList",
                        "connections: [[X1: 1, B: GN, X2: 1], [X3: a, B: 2, X3: b]]", "X1.1 X2.1 X3.a X3.b"},
        ReadableWireViz{"Shield", "connections: [[X1: 1, W: s, X2: 1]]", "X1.1 X2.1"},
        ReadableWireViz{"ShieldIsNoWire", "connections: [[X1: 1, W: s, X2: 1], [X1: 2, W: 1, X2: 2]]",
                        "X1.1 X2.1; X1.2 X2.2"},
        ReadableWireViz{"TwoCablesInARow",
                        "connections: [[X1: [1, 2], W: [1, 2], X2: [1, 2], C: [1, 2], X3: [a, b]]]",
                        "X1.1 X2.1 X3.a; X1.2 X2.2 X3.b"},
        ReadableWireViz{"EndsOfAWireInTwoSets", "connections: [[X1: 1, W: 1], [W: 1, X2: 1]]", "X1.1 X2.1"},
        ReadableWireViz{"OpenWires", "connections: [[W: [1, 2], X1: [1, 2]], [X2: 1, C: 1]]", ""},
        ReadableWireViz{"SimpleConnectorByName", "connections: [[X1: 1, W: 1, F]]", "X1.1 F.1"},
        ReadableWireViz{"SimpleConnectorForEachPath", "connections: [[X1: [1, 2], W: [1, 2], F]]",
                        "X1.1 X1.2 F.1"},
        ReadableWireViz{"UnnamedForEachPath", "connections: [[X1: [1, 2], W: [1, 2], F.]]",
                        "X1.1 __F_1.1; X1.2 __F_2.1"},
        ReadableWireViz{"UnnamedGoOnCounting", "connections: [[X1: 1, W: 1, F.], [X2: 1, C: 1, F.]]",
                        "X1.1 __F_1.1; X2.1 __F_2.1"},
        ReadableWireViz{"OneUnnamedWithPins", "connections: [[X1: [1, 2], W: [1, 2], T.: [2, 1]]]",
                        "X1.1 __T_1.2; X1.2 __T_1.1"},
        ReadableWireViz{"NamedInstances",
                        "connections: [[T.U1: [1, 2], C.C1: [1, 2], T.U2: [1, 2]], [U2: 1, C.C2: 1, X1: 1]]",
                        "U1.1 U2.1 X1.1; U1.2 U2.2"},
        ReadableWireViz{"ListOfConnectors",
                        "connections: [[X1: [1-3], C: [1-3], [F.F1, F.F2, F.]], [F1, C.C1: 1, F2]]",
                        "X1.1 X1.2 F1.1 F2.1; X1.3 __F_1.1"},
        ReadableWireViz{
            "CablesFromATemplate",
            "connections: [[X1: [1, 2], W.: [1, 2], X2: [1, 2]], [X1: [3, 4], W.: [1, 2], X2: [3, 4]]]",
            "X1.1 X2.1; X1.2 X2.2; X1.3 X2.3; X1.4 X2.4"},
        ReadableWireViz{"OtherSeparator",
                        "options: {template_separator: '/'}\nconnections: [[T/U.1: 1, W: 1, X1: 1]]",
                        "U.1.1 X1.1"},
        ReadableWireViz{"PinArrows", "connections: [[X1: [1-4], [-->, <--, <-->, --], X2: [4-1]]]",
                        "X1.1 X2.4; X1.2 X2.3; X1.3 X2.2; X1.4 X2.1"},
        ReadableWireViz{"ShortPinArrow", "connections: [[X1: 1, '->', X2: 1]]", "X1.1 X2.1"},
        ReadableWireViz{"OneArrowForAllPaths", "connections: [[X1: [1, 2], <-->, X2: [2, 1]]]",
                        "X1.1 X2.2; X1.2 X2.1"},
        ReadableWireViz{"ConnectorArrow", "connections: [[X1, ==>, X2]]",
                        "X1.1 X2.1; X1.2 X2.2; X1.3 X2.3; X1.4 X2.4"},
        ReadableWireViz{"ConnectorArrowBothWays", "connections: [[T.U1, <=>, T.U2]]", "U1.1 U2.1; U1.2 U2.2"},
        ReadableWireViz{"ConnectorArrowByPinIds", "connections: [[X2, ==, T.U1]]", "X2.1 U1.1; X2.2 U1.2"},
        ReadableWireViz{"ConnectorArrowBetweenWires",
                        "connections: [[F.F1, C: 1, X1: 1, <==, X2: 3, W: 1, F.F2]]",
                        "F1.1 X1.1 X2.1; X1.2 X2.2; X1.3 X2.3 F2.1; X1.4 X2.4"},
        ReadableWireViz{"ConnectorAlone", "connections: [[X1]]", ""}),
    RowName<ReadableWireViz>);

std::string NetsOfText(const std::string& text) { return ConnectedNets(ReadWireViz({{{"w.yml", text}}})); }

TEST(WireVizReaderTest, LoopsConnectPinsOfEveryInstanceAndAreNoWires) {
  const WiringDocument document = ReadWireViz({{{"w.yml",
                                                 "connectors: {T: {pinlabels: [A, B, C], loops: [[1, B]]}}\n"
                                                 "connections: [[T.U1], [T.U2: 3]]\n"}}});
  EXPECT_EQ(ConnectedNets(document), "U1.1 U1.2; U2.1 U2.2");
  EXPECT_EQ(document.wires, 0U);
}

TEST(WireVizReaderTest, ALoopWithANameMayHaveMorePins) {
  EXPECT_EQ(NetsOfText("connectors: {X: {pincount: 7, loops: [LO1: [1, 5, 7]]}}\nconnections: [[X]]"),
            "X.1 X.5 X.7");
}

TEST(WireVizReaderTest, ShortsConnectPinsAsLoopsDo) {
  EXPECT_EQ(
      NetsOfText("connectors: {X: {pincount: 7, shorts: [SH1: [1, 5], SH2: [2, 6, 7]]}}\nconnections: [[X]]"),
      "X.1 X.5; X.2 X.6 X.7");
}

TEST(WireVizReaderTest, AllPinsOfAConnectorAreListedWiredOrNot) {
  const WiringDocument document =
      ReadWireViz({{{"w.yml", std::string(Parts) + "connections: [[X3: b, W: 1, F.]]"}}});
  EXPECT_EQ(AllPins(document), "X3.a X3.b X3.ON X3.007 __F_1.1");
  EXPECT_EQ(document.connectors, 2U);
  EXPECT_EQ(document.wires, 1U);
}

TEST(WireVizReaderTest, PinsStandWhereTheyAreDefinedAndThoseOfATemplateWhereTheyAreMade) {
  const WiringDocument document = ReadWireViz({{{"w.yml",
                                                 "connectors:\n"
                                                 "  X1:\n"
                                                 "    pins: [a,\n"
                                                 "           b]\n"
                                                 "connections:\n"
                                                 "  - - X1\n"
                                                 "  - - X1.U\n"}}});
  ASSERT_EQ(document.pins.size(), 4U);
  EXPECT_EQ(PlaceText(document.pins[1].place), "w.yml:4:12");
  EXPECT_EQ(PlaceText(document.pins[2].place), "w.yml:7:7");
}

TEST(WireVizReaderTest, AWireWithThreeEndsIsOneWire) {
  const WiringDocument document =
      ReadWireViz({{{"w.yml", std::string(Parts) + "connections: [[X1: 1, W: 1, X2: 1], [W: 1, X1: 2]]"}}});
  EXPECT_EQ(ConnectedNets(document), "X1.1 X1.2 X2.1");
  EXPECT_EQ(document.wires, 1U);
}

TEST(WireVizReaderTest, MergeKeysAndAliasesGiveAttributes) {
  EXPECT_EQ(NetsOfText("templates: [&four {pincount: 4}, &labels {pinlabels: [A, B, C, D]}]\n"
                       "connectors:\n"
                       "  X1: &own\n"
                       "    <<: *four\n"
                       "    <<: *labels\n"
                       "  X2: {<<: [*four, *labels], pinlabels: [D, C, B, A]}\n"
                       "  X3: *own\n"
                       "cables: {W: {wirecount: 4}}\n"
                       "connections: [[X1: &all [A, D], W: [1, 2], X2: *all], [X3: D, W: 3, X2: 2]]\n"),
            "X1.1 X2.4; X1.4 X2.1; X2.2 X3.4");
}

TEST(WireVizReaderTest, FilesInFrontShareTheirAnchors) {
  const WiringDocument document =
      ReadWireViz({{{"parts.yml", "connectors:\n  X1: &x {pincount: 2}\n  X2: *x\n"},
                    {"wires.yml", "cables: {W: {wirecount: 2}}"},
                    {"w.yml", "connections:\n  - [X1: [1-2], W: [1-2], X2: [2-1]]\n"}}});
  EXPECT_EQ(ConnectedNets(document), "X1.1 X2.2; X1.2 X2.1");
  EXPECT_EQ(PlaceText(document.pins[0].place), "parts.yml:2:3");
}

TEST(WireVizReaderTest, ErrorsNameTheFileTheyAreIn) {
  const WireVizSources sources{
      {{"parts.yml", "connectors:\n  X1: {pincount: 2}"},
       {"w.yml", "# Stück\ncables: {W: {wirecount: 2}}\nconnections: [[X1: 3, W: 1]]\n"}}};
  EXPECT_EQ(RefusalOf([&] { ReadWireViz(sources); }), "w.yml:3:20: X1 has no pin 3: it has 2, 1 to 2");
}

TEST(WireVizReaderTest, ColumnsCountCharacters) {
  const std::string text =
      "connectors: {Stück: {pincount: 1}}\ncables: {W: {wirecount: 1}}\nconnections: [[Stück: 1, W: 7]]";
  EXPECT_EQ(RefusalOf([&] { ReadWireViz({{{"w.yml", text}}}); }), "w.yml:3:29: W has no wire 7: it has 1");
}

TEST(WireVizReaderTest, OtherEncodingsAndLineEndsAreRead) {
  EXPECT_EQ(NetsOfText("\xEF\xBB\xBF"
                       "connectors: {\"K\xC3\xBC\": {pincount: 2, loops: [[1, 2]]}}\r\nconnections:\r\n  - "
                       "[\"K\xC3\xBC\"]\r\n"),
            "Kü.1 Kü.2");
  EXPECT_EQ(NetsOfText("connectors: {K\xFC: {pincount: 2, loops: [[1, 2]]}}\nconnections: [[K\xFC]]\n"),
            "Kü.1 Kü.2");
}

TEST(WireVizReaderTest, WhatMeansNothingElsewhereIsAText) {
  const WiringDocument document =
      ReadWireViz({{{"w.yml",
                     "connectors: {~: {pins: [null, &n NULL, &t ~, ! Null, &e !!str ~x]}}\n"
                     "connections: [[~: [*n, *t], --, ~: [null, ~x]]]\n"}}});
  EXPECT_EQ(AllPins(document), "~.null ~.NULL ~.~ ~.Null ~.~x");
  EXPECT_EQ(ConnectedNets(document), "~.null ~.NULL; ~.~ ~.~x");
}

// The parser gives an empty value the place of what comes next.
TEST(WireVizReaderTest, AnEmptyAttributeBeforeAKeyCalledNullIsEmpty) {
  for (const char* const next : {"null", "nullable", "~", "~x", "&a null", "!!str null"}) {
    for (const char* const empty : {"loops:\n", "loops: &n\n", "loops: # c\n"}) {
      const std::string text =
          "connections: [[X]]\nconnectors:\n  X:\n    pincount: 1\n    pinlabels: []\n    " +
          std::string(empty) + "  " + next + ": 1\n";
      SCOPED_TRACE(text);
      EXPECT_EQ(AllPins(ReadWireViz({{{"w.yml", text}}})), "X.1");
    }
  }
}

TEST(WireVizReaderTest, AnEmptySectionBeforeAKeyCalledNullIsEmpty) {
  for (const char* const next : {"null", "nullable", "~", "~x", "&a null", "!!str null"}) {
    for (const char* const empty : {"cables:\n", "cables: &n\n", "cables: # c\n"}) {
      const std::string text =
          "connections: [[X]]\nconnectors: {X: {pincount: 1}}\n" + std::string(empty) + next + ": 1\n";
      EXPECT_EQ(AllPins(ReadWireViz({{{"w.yml", text}}})), "X.1") << text;
    }
  }
}

TEST(WireVizReaderTest, QuotesThatAreClosedOrAreNoneAreRead) {
  for (const char* const notes : {"\"5 inch\"",
                                  "5\" inch",
                                  "it's",
                                  "|\n      \"not closed",
                                  ">-\n      'not closed",
                                  "1 # \"not closed",
                                  "\"a \\\" b\"",
                                  "'it''s'",
                                  "\"a\\\\\"",
                                  "''",
                                  "&a \"x\"",
                                  "!!str 'x'",
                                  "&a !!str\n      'x'",
                                  "\"x\n      y\"",
                                  "\"x'\"",
                                  "'x\"'",
                                  "&a' x",
                                  "!x' y",
                                  "[a'b, c\"]",
                                  "\n    \"color\": 'RD'"}) {
    for (const char* const end : {"", "\n", "\r\n", "\n# it's\n"}) {
      const std::string text =
          std::string("connections: [[X]]\nconnectors:\n  X:\n    pincount: 1\n    notes: ") + notes + end;
      EXPECT_EQ(RefusalOf([&] { ReadWireViz({{{"w.yml", text}}}); }), "") << text;
    }
  }
}

struct WarnedWireViz {
  std::string name;
  std::string text;
  std::string warnings;
};

class WarnedWireVizTest : public testing::TestWithParam<WarnedWireViz> {};

TEST_P(WarnedWireVizTest, SaysWhatItTakesForGranted) {
  EXPECT_EQ(WarningLines(ReadWireViz({{{"w.yml", GetParam().text}}})), GetParam().warnings);
}

// In line 3. Pins 1 to 3 of L are joined.
WarnedWireViz WireSets(const std::string& name, const std::string& sets, const std::string& warnings) {
  return {name,
          "connectors: {X: {pincount: 3}, Y: {pincount: 3}, L: {pincount: 4, loops: [[1, 2], [3, 2]]}}\n"
          "cables: {W: {wirecount: 2, shield: true}}\nconnections: [[L], [Y], " +
              sets + "]",
          warnings};
}

INSTANTIATE_TEST_SUITE_P(
    Documents, WarnedWireVizTest,
    testing::Values(
        WarnedWireViz{"Nothing", "connectors: {X: {pincount: 1}}\nconnections: [[X]]", ""},
        WarnedWireViz{
            "Mated", "connectors: {X: {pincount: 2}, Y: {pins: [2, 3]}}\nconnections: [[X, ==>, Y]]",
            "w.yml:2:19: X and Y are mated: pins of the same name are taken as connected, not X.1, Y.3\n"},
        WarnedWireViz{
            "MatedWithPins",
            "connectors: {X: {pincount: 2}, Y: {pincount: 2}}\nconnections: [[X: [1, 2], ==>, Y: [2, 1]]]",
            "w.yml:2:27: X and Y are mated: pins of the same name are taken as connected; the pins written "
            "beside the arrow are not used for that\n"},
        WireSets("WireTypedTwice", "[X: [1, 2], W: [1, 1], Y: [1, 2]], [X: 3, W: 1, Y: 3]",
                 "w.yml:3:41: wire 1 of W has more than two ends: all its pins are connected\n"),
        WireSets("WireOfThreeSets", "[X: 1, W: 2, Y: 1], [W: 2, L: 1]",
                 "w.yml:3:49: wire 2 of W has more than two ends: all its pins are connected\n"),
        WireSets("WireAtALoop", "[L: [1, 2], W: [1, 1], X: [1, 1]], [W: 1, L: 3]", ""),
        WireSets("EndsOfAWireInThreeSets", "[X: 1, W: 1], [W: 1, Y: 1], [X: 1, W: 1, Y: 1]", ""),
        WireSets("WiresOfATemplate",
                 "[X: [1, 2], W.: [1, 2], Y: [1, 2]], [X: 3, W.V: 1, Y: 3], [X: 1, W.U: 1, Y: 3]", ""),
        WireSets("ShieldWithThreeEnds", "[X: [1, 2], W: [s, s], Y: [1, 2]]", ""),
        WarnedWireViz{
            "NameAloneOfAConnector",
            "connectors: {X: {pincount: 2}}\ncables: {W: {wirecount: 2}}\nconnections: [[X, W: [1-2]]]",
            "w.yml:3:16: X is named alone: pin 1 is taken of its 2 pins\n"},
        WarnedWireViz{"NameAloneOfACable",
                      "connectors: {X: {pincount: 1}}\ncables: {W: {wirecount: 2}}\nconnections: [[X, W]]",
                      "w.yml:3:19: W is named alone: wire 1 is taken of its 2 wires\n"},
        WarnedWireViz{"Unused", "connectors: {X: {pincount: 1}, Y: {}}\ncables: {W: {}}\nconnections: [[X]]",
                      "w.yml:1:32: connector Y is in no connection set: it is not part of the harness\n"
                      "w.yml:2:10: cable W is in no connection set: it is not part of the harness\n"},
        WarnedWireViz{"SameKeyTwice",
                      "connectors:\n  X: {pincount: 1}\n  X: {pincount: 2}\nconnections: [[X]]",
                      "w.yml:2:3: X is given once more further down: only the last one counts\n"},
        WarnedWireViz{"KeysThatDifferInBlanks",
                      "connectors:\n  \"X \": {pincount: 1}\n  X: {pincount: 2}\nconnections: [[X: 2]]",
                      "w.yml:2:3: X is given once more further down: only the last one counts\n"},
        WarnedWireViz{
            "ThreeKeysThatDifferInBlanks",
            "cables:\n  W: {wirecount: 1}\n  ' W': {wirecount: 2}\n  W: {wirecount: 3}\nconnectors: "
            "{X: {pincount: 1}}\nconnections: [[X, W: 3]]",
            "w.yml:2:3: W is given once more further down: only the last one counts\n"
            "w.yml:3:3: W is given once more further down: only the last one counts\n"},
        WarnedWireViz{
            "UnitsOfACable",
            "connectors: {X: {pincount: 1}}\ncables: {W: {wirecount: 1, gauge_unit: mm2, length_unit: "
            "m}}\nconnections: [[X, W]]",
            ""},
        WarnedWireViz{"UnknownAttribute",
                      "connectors: {X: {pincount: 1, pinlables: [A]}}\nconnections: [[X]]",
                      "w.yml:1:31: attribute pinlables of X is not known and has no effect\n"},
        WarnedWireViz{"MoreLabelsThanPins",
                      "connectors: {X: {pincount: 1, pinlabels: [A, B]}}\nconnections: [[X]]",
                      "w.yml:1:46: X has 1 pins and 2 labels: the last ones have no pin\n"},
        WarnedWireViz{"LabelLikeANumber",
                      "connectors: {X: {pincount: 1}}\ncables: {W: {wirecount: 2, wirelabels: [2, "
                      "1]}}\nconnections: [[X: 1, W: 2]]",
                      "w.yml:3:25: 2 of W is taken as the label of wire 1, not as the wire's number\n"}),
    RowName<WarnedWireViz>);

}  // namespace
}  // namespace kxbench::documents
