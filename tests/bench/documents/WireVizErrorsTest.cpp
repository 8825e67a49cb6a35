#include <gmock/gmock.h>

#include "bench/documents/WireVizReader.h"
#include "tests/bench/RowName.h"
#include "tests/bench/documents/DocumentTexts.h"

namespace kxbench::documents {
namespace {

struct BadWireViz {
  std::string name;
  std::string text;
  std::string refusal;  // without the file's name
};

class BadWireVizTest : public testing::TestWithParam<BadWireViz> {};

TEST_P(BadWireVizTest, IsRefusedAtItsPlace) {
  EXPECT_EQ(RefusalOf([&] { ReadWireViz({{{"w.yml", GetParam().text}}}); }), "w.yml" + GetParam().refusal);
}

BadWireViz Sections(const std::string& name, const std::string& text, const std::string& refusal) {
  return {name, text, refusal};
}

// One connection set in line 5; X and Y have 4 pins, W has 2 wires, C a wire of each of three colours.
BadWireViz Set(const std::string& name, const std::string& set, const std::string& refusal) {
  return {name,
          "connectors: {X: {pincount: 4, pinlabels: [GND, SIG, GND]}, Y: {pinlabels: [a, b, 1, 2]}, F: "
          "{style: simple}}\n"
          "cables:\n"
          "  W: {wirecount: 2}\n"
          "  C: {colors: [RD, BK, BK, GN], wirelabels: [GN, up], shield: true}\nconnections: [" +
              set + "]\n",
          refusal};
}

BadWireViz Connector(const std::string& name, const std::string& attributes, const std::string& refusal) {
  return {name, "connectors:\n  X: " + attributes + "\nconnections: [[X]]\n", refusal};
}

BadWireViz Cable(const std::string& name, const std::string& attributes, const std::string& refusal) {
  return {name, "cables:\n  W: " + attributes + "\nconnections: [[W]]\n", refusal};
}

INSTANTIATE_TEST_SUITE_P(
    Documents, BadWireVizTest,
    testing::Values(
        Sections("Empty", "", ": the document is empty"),
        Sections("Comment", "# nothing\n", ": the document is empty"),
        Sections("NoMap", "[1, 2]", ":1:1: this is no WireViz document: it has no sections"),
        Sections("JustText", "hello", ":1:1: this is no WireViz document: it has no sections"),
        Sections("NoConnections", "connectors: {X: {pincount: 1}}",
                 ":1:1: there is no section connections: nothing is connected"),
        Sections("EmptyConnections", "connections:\n",
                 ":1:1: section connections is empty: nothing is connected"),
        Sections("ConnectionsWithoutASet", "connectors: {X: {pincount: 2}}\nconnections: []\n",
                 ":2:1: section connections is empty: nothing is connected"),
        Sections("EscapeOfANextLine", "connectors: {X: {pins: [\"a\\N\"]}}\nconnections: [[X]]\n",
                 ":1:25: the escapes \\N and \\_ are not read: write the character itself"),
        Sections("EscapeOfABlank", "connectors: {\"X\\_\": {pincount: 1}}\nconnections: [[X]]\n",
                 ":1:14: the escapes \\N and \\_ are not read: write the character itself"),
        Sections("ConnectionsIsAMap", "connections: {X: 1}",
                 ":1:14: section connections must be a list of connection sets"),
        Sections("ConnectorsIsAList", "connectors: [X]\nconnections: [[X]]",
                 ":1:13: section connectors must be a map"),
        Sections("CablesIsAText", "cables: W\nconnections: [[W]]", ":1:9: section cables must be a map"),
        Sections("SeparatorIsEmpty", "options: {template_separator: ''}\nconnections: [[W]]",
                 ":1:31: template_separator must be a text"),
        Sections("TwoDocuments", "connections: []\n---\nconnections: []\n",
                 ":2:1: there is a second document in the file: there must be one"),
        Sections("ControlCharacter", "connections:\n  - \x04\n",
                 ":2:5: a control character: this is no text"),
        Sections("EscapeOfHalfACharacter", "connections: \"\\ä\"",
                 ":1:17: this is no YAML: unknown escape character: \uFFFD"),
        Sections("NameWithALineBreak", "connectors: {\"X\\n\": {pins: 1}}\nconnections: [[X]]",
                 ":1:28: pins of X must be a list"),
        Sections("IndentedByATab", "connectors:\n\tX: {pincount: 1}\n",
                 ":2:3: this is no YAML: illegal map value (the line is indented by a tab; YAML takes blanks "
                 "alone)"),
        Sections("IndentedOtherwise", "connectors:\n  X: {pincount: 1}\n   Y: {pincount: 1}\n",
                 ":3:4: this is no YAML: end of map not found (is the line indented as those above that it "
                 "belongs to?)"),
        Sections("ListNotClosed", "connections:\n- - X: [1, 2\n  - W: 1\n",
                 ":3:6: this is no YAML: end of sequence flow not found (is a [ not closed, or a comma "
                 "missing?)"),
        Sections(
            "MapNotClosed", "connectors: {X: {pincount: 1\nconnections: []\n",
            ":2:12: this is no YAML: end of map flow not found (is a { not closed, or a comma missing?)"),
        Sections("SectionTwice",
                 "connectors: {X: {pincount: 1}}\nconnections: [[X]]\nconnectors: {Y: "
                 "{pincount: 1}}\n",
                 ":2:16: X is neither a connector nor a cable nor an arrow; section connectors of w.yml:1:1 "
                 "does not count, because there is another one further down"),
        Sections("UnknownAlias", "connections: *x",
                 ":1:14: this is no YAML: the referenced anchor is not defined"),
        Sections("AliasInItself", "connections: &x [*x]", ":1:18: an alias inside of what it names"),
        Sections("MergeOfAText", "connections: [[X]]\nconnectors: {X: {<<: yes}}",
                 ":2:22: a merge key (<<) takes a map or a list of maps"),
        Sections("MergeOfAListOfTexts", "connections: [[X]]\nconnectors: {X: {<<: [yes]}}",
                 ":2:23: a merge key (<<) takes a map or a list of maps"),
        Sections("KeyIsAList", "connections: [[X]]\nconnectors: {[X]: {}}", ":2:14: a key must be a text")),
    RowName<BadWireViz>);

INSTANTIATE_TEST_SUITE_P(
    Sets, BadWireVizTest,
    testing::Values(
        Set("SetIsNoList", "X", ":5:15: a connection set must be a list of connectors and cables"),
        Set("SetIsEmpty", "[]", ":5:15: a connection set must be a list of connectors and cables"),
        Set("PathsOfUnequalLength", "[X: [1, 2], W: [1, 2], Y: a]",
            ":5:38: this item has 1 path, the item before it has 2"),
        Set("RangeOfUnequalLength", "[X: [1-3],\n W: [1-2]]",
            ":6:2: this item has 2 paths, the item in line 5 has 3"),
        Set("ListOfUnequalLength", "[X: [1-3], C: [1, 2, 4], [F., F.]]",
            ":5:40: this item has 2 paths, the item before it has 3"),
        Set("UnknownPin", "[X: 5, W: 1]", ":5:19: X has no pin 5: it has 4, 1 to 4"),
        Set("PinZero", "[X: 0, W: 1]", ":5:19: X has no pin 0: it has 4, 1 to 4"),
        Set("UnknownPinInARange", "[X: [3-5], C: [1-3]]", ":5:20: X has no pin 5: it has 4, 1 to 4"),
        Set("UnknownLabel", "[X: VCC, W: 1]", ":5:19: X has no pin VCC: it has 4, 1 to 4"),
        Set("LabelOfTwoPins", "[X: GND, W: 1]", ":5:19: X has 2 pins labelled GND: say which by its number"),
        Set("PinAndLabelOfAnother", "[Y: 1, W: 1]", ":5:19: 1 of Y is a pin and the label of another, pin 3"),
        Set("UnknownPinOfAConnectorAlone", "[X: 5]", ":5:19: X has no pin 5: it has 4, 1 to 4"),
        Set("Wire7Of2", "[X: 1, W: 7, Y: a]", ":5:25: W has no wire 7: it has 2"),
        Set("WireZero", "[X: 1, W: 0]", ":5:25: W has no wire 0: it has 2"),
        Set("WireWithAZeroInFront", "[X: 1, W: 02]", ":5:25: W has no wire 02: it has 2"),
        Set("UnknownColor", "[X: 1, C: YE]", ":5:25: C has no wire YE: it has 4"),
        Set("ColorOfTwoWires", "[X: 1, C: BK]", ":5:25: C has 2 wires BK: say which by its number"),
        Set("ColorAndLabelOfAnother", "[X: 1, C: GN]",
            ":5:25: GN of C is the colour of one wire and the label of another"),
        Set("ShieldWithoutOne", "[X: 1, W: s]", ":5:25: W has no shield: s is none of its wires"),
        Set("ConnectorInPlaceOfACable", "[X: 1, Y: a, W: 1]",
            ":5:22: Y is a connector, but after a connector there must be a cable or an arrow"),
        Set("CableAfterACable", "[X: 1, W: 1, C: 1]",
            ":5:28: C is a cable, but after a cable there must be a connector"),
        Set("ArrowAfterACable", "[X: 1, W: 1, --, Y: a]",
            ":5:28: an arrow, but after a cable there must be a connector"),
        Set("ArrowAtTheStart", "[--, X: 1]", ":5:16: an arrow must stand between two connectors"),
        Set("ArrowAtTheEnd", "[X: 1, ==>]", ":5:22: an arrow must stand between two connectors"),
        Set("ArrowWithPins", "[X: 1, --: 1, Y: a]", ":5:22: an arrow has no pins"),
        Set("CableInAListOfConnectors", "[[F, W], C: [1, 2]]",
            ":5:20: a cable in a list that begins with a connector"),
        Set("UnknownName", "[X: 1, V: 1]", ":5:22: V is neither a connector nor a cable nor an arrow"),
        Set("UnknownTemplate", "[V.X1: 1, W: 1]", ":5:16: V is neither a connector nor a cable nor an arrow"),
        Set("TwoSeparators", "[X.Y.Z: 1, W: 1]",
            ":5:16: X.Y.Z has more than one . between template and name"),
        Set("MadeFromAnotherTemplate", "[X.U: 1, W: 1, Y.U: a]",
            ":5:30: U is made from X already and cannot be made from Y"),
        Set("NoPins", "[X: , W: 1]", ":5:16: a pin or a wire is missing here"),
        Set("UnknownPinBesideAConnectorArrow", "[X: 5, ==>, Y: a]",
            ":5:19: X has no pin 5: it has 4, 1 to 4"),
        Set("UnknownPinPastAConnectorArrow", "[X: [1, 2], ==>, Y: [a, c]]",
            ":5:39: Y has no pin c: it has 4, 1 to 4"),
        Set("EmptyListOfPins", "[X: [], W: 1]", ":5:19: no pin and no wire is named here"),
        Set("EmptyListOfNames", "[[], W: 1]", ":5:16: an empty list in a connection set"),
        Set("ListInAListOfPins", "[X: [[1, 2]], W: 1]", ":5:20: a pin or a wire must be a text"),
        Set("TwoConnectorsInOneItem", "[{X: 1, Y: a}, W: 1]",
            ":5:16: one connector or cable, and its pins, was expected"),
        Set("NameWithALineBreak", "[\"X\\nY\": 1]",
            ":5:16: a connector, a cable or an arrow must be a text of one line"),
        Set("EndlessRange", "[X: 1-999999999999]",
            ":5:19: the document is too large: more than 500000 pins and wires in connection sets"),
        Set("RangeOfNumbersNoComputerHas", "[X: 1-99999999999999999999999]",
            ":5:19: X has no pin 1-99999999999999999999999: it has 4, 1 to 4")),
    RowName<BadWireViz>);

INSTANTIATE_TEST_SUITE_P(
    Parts, BadWireVizTest,
    testing::Values(
        Connector("NoPinsAtAll", "{type: D-Sub}",
                  ":2:3: connector X needs pincount, pins, pinlabels or pincolors"),
        Connector("NoAttributes", "", ":2:3: connector X needs pincount, pins, pinlabels or pincolors"),
        Connector("AttributesAreAText", "D-Sub", ":2:6: X needs a map of attributes"),
        Connector("PinTwice", "{pins: [1, 2, 1]}", ":2:20: pin 1 of X is there twice"),
        Connector("PinsIsANumber", "{pins: 4}", ":2:13: pins of X must be a list"),
        Connector("PinIsAMap", "{pins: [1: 2]}", ":2:14: a pin must be a text"),
        Connector("PinWithoutName", "{pins: [1, '']}", ":2:17: a pin is missing here"),
        Connector("LabelIsAList", "{pinlabels: [[A]]}", ":2:19: pinlabels of X holds texts and nothing else"),
        Connector("PincountIsAText", "{pincount: four}",
                  ":2:17: pincount of X must be a whole number, not four"),
        Connector("PincountIsAList", "{pincount: [4]}", ":2:17: pincount of X must be a whole number"),
        Connector("PincountIsNegative", "{pincount: -4}",
                  ":2:17: pincount of X must be a whole number, not -4"),
        Connector("PincountIsOctal", "{pincount: 010}",
                  ":2:17: pincount of X must have no zero in front, which makes it octal: 010"),
        Connector("PincountIsHuge", "{pincount: 10001}", ":2:17: pincount of X is more than 10000"),
        Connector("PincountIsBeyondNumbers", "{pincount: 99999999999999999999}",
                  ":2:17: pincount of X is more than 10000"),
        Connector("SimpleWithTwoPins", "{style: simple, pincount: 2}",
                  ":2:32: X has style simple and can have one pin only"),
        Connector("SimpleWithTwoPinNames", "{style: simple, pins: [1, 2]}",
                  ":2:28: X has style simple and can have one pin only"),
        Connector("MorePinsCountedThanNamed", "{pincount: 6, pins: [1, 2, 3]}",
                  ":2:17: pincount of X is 6, but pins has 3"),
        Connector("FewerPinsCountedThanNamed", "{pincount: 1, pins: [1, 2, 3]}",
                  ":2:17: pincount of X is 1, but pins has 3"),
        Connector("NoPinsCountedButNamed", "{pincount: 0, pins: [1]}",
                  ":2:17: pincount of X is 0, but pins has 1"),
        Connector("StyleIsAList", "{style: [simple]}", ":2:14: style of X must be a text"),
        Connector("LoopOfOne", "{pincount: 2, loops: [[1]]}",
                  ":2:28: one of the loops of X must be a list of two pins"),
        Connector("LoopOfThree", "{pincount: 3, loops: [[1, 2, 3]]}",
                  ":2:28: one of the loops of X must be a list of two pins"),
        Connector("LoopIsAText", "{pincount: 3, loops: [1, 2]}",
                  ":2:28: one of the loops of X must be a list of two pins"),
        Connector("LoopOfAnUnknownPin", "{pincount: 2, loops: [[1, 3]]}",
                  ":2:32: X has no pin 3: it has 2, 1 to 2"),
        Connector("UnknownPinOfASinglePin", "{pincount: 1, loops: [[1, 3]]}",
                  ":2:32: X has no pin 3: it has 1, 1"),
        Connector("OldNameOfLabels", "{pinout: [A]}",
                  ":2:7: attribute pinout of X is called pinlabels today"),
        Connector("OldNameOfPins", "{pinnumbers: [A]}",
                  ":2:7: attribute pinnumbers of X is called pins today"),
        Cable("NoWires", "{type: LiYY}", ":2:3: cable W needs wirecount or colors"),
        Cable("ColorCodeAlone", "{color_code: DIN}", ":2:3: cable W needs wirecount or colors"),
        Cable("UnknownColorCode", "{wirecount: 2, color_code: DAN}", ":2:33: color_code DAN is not known"),
        Cable("ColorsIsAText", "{colors: BK}", ":2:15: colors of W must be a list"),
        Cable("ColorIsAList", "{colors: [[BK]]}", ":2:16: colors of W holds texts and nothing else"),
        Cable("WirecountIsHuge", "{wirecount: 999999}", ":2:18: wirecount of W is more than 10000"),
        Cable("ColorCodeIsAList", "{wirecount: 2, color_code: [DIN]}",
              ":2:33: color_code of W must be a text"),
        Cable("ShieldIsAList", "{wirecount: 2, shield: [a]}", ":2:29: shield of W must be a text"),
        Cable("ShieldIsAMap", "{wirecount: 2, shield: {color: SN}}", ":2:29: shield of W must be a text"),
        Cable("LabelOfTheShield", "{wirecount: 2, shield: true, wirelabels: [s]}",
              ":2:3: cable W has a shield: s cannot be the label of a wire too")),
    RowName<BadWireViz>);

// The connector's notes begin in line 4, column 12.
BadWireViz Notes(const std::string& name, const std::string& notes, const std::string& refusal) {
  return {name, "connections: [[X]]\nconnectors:\n  X:\n    notes: " + notes, refusal};
}

constexpr const char* NotClosed = ":4:12: this is no YAML: the quote is not closed in this file";

INSTANTIATE_TEST_SUITE_P(
    QuotesNotClosed, BadWireVizTest,
    testing::Values(Notes("Double", "\"see drawing\n    pincount: 2\n", NotClosed),
                    Notes("Single", "'see drawing\n    pincount: 2\n", NotClosed),
                    Notes("WithoutALineEnd", "\"see drawing", NotClosed),
                    Notes("WindowsLineEnds", "\"see drawing\r\n    pincount: 2\r\n", NotClosed),
                    Notes("BlanksAtTheEnd", "'see drawing\n\n   ", NotClosed),
                    Notes("LastQuoteIsDoubled", "'see drawing''\n", NotClosed),
                    Notes("LastQuoteIsEscaped", "\"see drawing\\\"\n", NotClosed),
                    Notes("OtherQuotesInside", "\"see 'drawing' it's\n", NotClosed),
                    Notes("PastAnAnchorAndATag", "&n !!str # c\n           \"see drawing\n",
                          ":5:12: this is no YAML: the quote is not closed in this file"),
                    Notes("InAList", "[a, 'see drawing\n",
                          ":4:16: this is no YAML: the quote is not closed in this file"),
                    Notes("InAMap", "{a: 1, \"see drawing\n",
                          ":4:19: this is no YAML: the quote is not closed in this file"),
                    Notes("WithoutAComma", "['a' 'see drawing\n",
                          ":4:17: this is no YAML: the quote is not closed in this file"),
                    Notes("InPlaceOfAnItem", "\n    - a\n    'see drawing\n",
                          ":6:5: this is no YAML: the quote is not closed in this file"),
                    Notes("AsAKey", "a\n    'see drawing\n",
                          ":5:5: this is no YAML: the quote is not closed in this file"),
                    Sections("FromTheStart", "'see drawing\n",
                             ":1:1: this is no YAML: the quote is not closed in this file")),
    RowName<BadWireViz>);

struct FileInFront {
  std::string name;
  std::string text;
  std::string document;
};

class QuoteOfAFileInFrontTest : public testing::TestWithParam<FileInFront> {};

TEST_P(QuoteOfAFileInFrontTest, IsClosedInThatFile) {
  const WireVizSources sources{{{"parts.yml", GetParam().text}, {"w.yml", GetParam().document}}};
  EXPECT_EQ(RefusalOf([&] { ReadWireViz(sources); }),
            "parts.yml:2:8: this is no YAML: the quote is not closed in this file");
}

INSTANTIATE_TEST_SUITE_P(Files, QuoteOfAFileInFrontTest,
                         testing::Values(FileInFront{"Never", "a: 1\nnotes: \"b\n", "connections: [[X]]\n"},
                                         FileInFront{"WithoutALineEnd", "a: 1\nnotes: \"b",
                                                     "connections: [[X]]\n"},
                                         FileInFront{"NeverBeforeAMarkOfADocument", "a: 1\nnotes: \"b\n",
                                                     "---\nconnections: [[X]]\n"},
                                         FileInFront{"InTheNextFile", "a: 1\nnotes: 'b\n",
                                                     "other: 'c'\nconnections: [[X]]\nlast: ''\n"},
                                         FileInFront{"InTheNextFileAsWholeText", "a: 1\nnotes: \"b\n",
                                                     "connections: [[X]]\n#\"\nconnections: [[Y]]\n"}),
                         RowName<FileInFront>);

INSTANTIATE_TEST_SUITE_P(
    EmptyValues, BadWireVizTest,
    testing::Values(
        Sections("PinsOfAKey", "connections:\n  - - X:\n    - W: 1\n  - - Y\n",
                 ":2:7: a pin or a wire is missing here"),
        Sections("PinsOfAnAnchoredKey", "connections:\n  - - &x X:\n    - W: 1\n",
                 ":2:7: a pin or a wire is missing here"),
        Sections("ItemOfASet", "connections:\n  -\n    -   # - nothing\n\n    # - Y\n    - W\n",
                 ":3:5: a connector, a cable or an arrow is missing here"),
        Sections("PinInBrackets", "connections:\n  - - X: [1,, 2]\n    - W: 1\n",
                 ":2:13: a pin or a wire is missing here"),
        Sections("SetAtTheEnd", "connections:\n  -\n",
                 ":2:3: a connection set must be a list of connectors and cables"),
        Sections("SetAtTheEndWithoutALineEnd", "connections:\n  -",
                 ":2:3: a connection set must be a list of connectors and cables"),
        Sections("ItemOfAnInnerList", "connections:\n  - -\n  - [Y]\n",
                 ":2:5: a connector, a cable or an arrow is missing here"),
        Sections("OptionBeforeAnAnchoredKey",
                 "options:\n  template_separator:\n&x other: 1\nconnections: [[X]]\n",
                 ":2:3: template_separator must be a text"),
        Sections("SetBeforeASection", "connections:\n-\nnull: 1\n",
                 ":2:1: a connection set must be a list of connectors and cables"),
        Sections("ListNotClosedAtTheEnd", "connections: [[X]\n\n",
                 ":1:18: this is no YAML: end of sequence flow not found (is a [ not closed, or a comma "
                 "missing?)")),
    RowName<BadWireViz>);

TEST(HostileWireVizTest, DeepNestingIsRefused) {
  for (const char* const open : {"[", "{a: ", "- "}) {
    std::string text = "connections: ";
    if (*open == '-') text += '\n';
    for (int i = 0; i < 100'000; ++i) text += open;
    EXPECT_THAT(RefusalOf([&] { ReadWireViz({{{"w.yml", text}}}); }), testing::HasSubstr("w.yml:")) << open;
  }
}

TEST(HostileWireVizTest, MergeKeysThatMultiplyAreRefused) {
  std::string text = "m0: &m0 {pincount: 1}\n";
  for (int i = 1; i < 60; ++i) {
    const std::string below = "*m" + std::to_string(i - 1);
    text += "m" + std::to_string(i) + ": &m" + std::to_string(i) + " {<<: [" + below + ", " + below + "]}\n";
  }
  text += "connectors: {X: *m59}\nconnections: [[X]]\n";
  EXPECT_THAT(RefusalOf([&] {
                ReadWireViz({{{"w.yml", text}}});
              }),
              testing::HasSubstr("the document asks for too much work"));
}

TEST(HostileWireVizTest, AliasesThatMultiplyCostNothing) {
  std::string text = "a0: &a0 [x, x]\n";
  for (int i = 1; i < 90; ++i) {
    const std::string below = "*a" + std::to_string(i - 1);
    text += "a" + std::to_string(i) + ": &a" + std::to_string(i) + " [" + below + ", " + below + "]\n";
  }
  const WiringDocument document =
      ReadWireViz({{{"w.yml", text + "connectors: {X: {pincount: 1}}\nconnections: [[X]]\n"}}});
  EXPECT_EQ(AllPins(document), "X.1");
}

TEST(HostileWireVizTest, TemplatesThatMultiplyAreRefused) {
  std::string text = "connectors: {X: {pincount: 9999}}\ncables: {W: {wirecount: 1}}\nconnections:\n";
  for (int i = 0; i < 20; ++i) text += "  - [X., W: 1]\n";
  EXPECT_EQ(RefusalOf([&] {
              ReadWireViz({{{"w.yml", text}}});
            }),
            "w.yml:7:6: the document is too large: more than 30000 pins");
}

}  // namespace
}  // namespace kxbench::documents
