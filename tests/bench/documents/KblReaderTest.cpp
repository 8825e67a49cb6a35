#include <gmock/gmock.h>

#include "bench/documents/KblReader.h"
#include "tests/bench/RowName.h"
#include "tests/bench/documents/DocumentTexts.h"
#include "tests/bench/documents/KblText.h"

namespace kxbench::documents {
namespace {

using testing::HasSubstr;

WiringDocument ReadKblText(const std::string& text) { return ReadKbl("h.kbl", text); }

/// Two connectors of three cavities.
KblText TwoConnectors() {
  return KblText()
      .Housing("H", {"1", "2", "3"})
      .Connector("X1", "H", {"1", "2", "3"})
      .Connector("X2", "H", {"1", "2", "3"});
}

TEST(KblReaderTest, WiresConnectCavities) {
  const WiringDocument document =
      ReadKblText(TwoConnectors().Wire({"X1:1", "X2:3"}, "GND").Wire({"X1:2", "X2:2"}).Text());
  EXPECT_EQ(ConnectedNets(document), "X1.1 X2.3; X1.2 X2.2");
  EXPECT_EQ(AllPins(document), "X1.1 X1.2 X1.3 X2.1 X2.2 X2.3");
  EXPECT_EQ(document.nets.front().name, "GND");
  EXPECT_EQ(document.connectors, 2U);
  EXPECT_EQ(document.wires, 2U);
  EXPECT_EQ(WarningLines(document), "");
}

TEST(KblReaderTest, TwoWiresInOneCavityAreOneNet) {
  EXPECT_EQ(ConnectedNets(ReadKblText(TwoConnectors().Wire({"X1:1", "X2:1"}).Wire({"X1:1", "X2:2"}).Text())),
            "X1.1 X2.1 X2.2");
}

TEST(KblReaderTest, TwoContactPointsOfOneCavityAreOnePin) {
  KblText kbl;
  kbl.Housing("H", {"1"}).Connector("X2", "H", {"1"}).Connector("X3", "H", {"1"});
  kbl.InHarness(
      "<Connector_occurrence><Id>X1</Id><Contact_points "
      "id='a'><Id>A</Id><Contacted_cavity>c</Contacted_cavity></Contact_points>"
      "<Contact_points id='b'><Id>B</Id><Contacted_cavity>c</Contacted_cavity></Contact_points>"
      "<Slots><Cavities id='c'><Part>H.1</Part></Cavities></Slots></Connector_occurrence>");
  EXPECT_EQ(ConnectedNets(ReadKblText(kbl.Wire({"a", "X2:1"}).Wire({"b", "X3:1"}).Text())), "X2.1 X3.1 X1.1");
}

TEST(KblReaderTest, OneContactInSeveralCavitiesConnectsThem) {
  KblText kbl;
  kbl.Housing("H", {"1", "2", "3"});
  kbl.InHarness(
      "<Connector_occurrence><Id>X1</Id><Contact_points id='a'><Contacted_cavity>c1\n "
      "c3</Contacted_cavity></Contact_points>"
      "<Slots><Cavities id='c1'><Part>H.1</Part></Cavities><Cavities id='c2'><Part>H.2</Part></Cavities>"
      "<Cavities id='c3'><Part>H.3</Part></Cavities></Slots></Connector_occurrence>");
  const WiringDocument document = ReadKblText(kbl.Text());
  EXPECT_EQ(ConnectedNets(document), "X1.1 X1.3");
  EXPECT_EQ(document.wires, 0U);
}

TEST(KblReaderTest, AWireMayHaveContactsAlongItsWay) {
  const WiringDocument document = ReadKblText(TwoConnectors().Wire({"X1:1", "X2:1", "X2:2"}).Text());
  EXPECT_EQ(ConnectedNets(document), "X1.1 X2.1 X2.2");
  EXPECT_EQ(document.wires, 1U);
}

TEST(KblReaderTest, SplicesJoinTheirWiresAndVanish) {
  const WiringDocument document = ReadKblText(TwoConnectors()
                                                  .Housing("C", {"1", "2"})
                                                  .Connector("S1", "C", {"1", "2"}, "splice")
                                                  .Wire({"X1:1", "S1:1"})
                                                  .Wire({"X2:1", "S1:2"})
                                                  .Wire({"X2:2", "S1:2"})
                                                  .Text());
  EXPECT_EQ(ConnectedNets(document), "X1.1 X2.1 X2.2");
  EXPECT_EQ(document.connectors, 2U);
  EXPECT_EQ(document.splices, 1U);
}

TEST(KblReaderTest, ASpliceDoesNotSwallowAConnectorOrASpliceOfItsName) {
  KblText kbl = TwoConnectors();
  for (const char* const id : {"s1", "s2"}) {
    kbl.InHarness("<Connector_occurrence id='" + std::string(id) +
                  "'><Id>X1</Id><Usage>Splice</Usage><Contact_points id='" + id +
                  "p'/></Connector_occurrence>");
  }
  kbl.Wire({"X1:1", "s1p"}).Wire({"X2:1", "s1p"}).Wire({"X1:2", "s2p"}).Wire({"X2:2", "s2p"});
  const WiringDocument document = ReadKblText(kbl.Text());
  EXPECT_EQ(ConnectedNets(document), "X1.1 X2.1; X1.2 X2.2");
  EXPECT_EQ(document.splices, 2U);
}

TEST(KblReaderTest, CoresOfACableAreWires) {
  KblText kbl = TwoConnectors();
  kbl.InHarness(
      "<General_wire_occurrence id='w'><Special_wire_id>W1</Special_wire_id><Core_occurrence id='c1'/>"
      "<Core_occurrence id='c2'/></General_wire_occurrence>");
  const WiringDocument document =
      ReadKblText(kbl.Connection("c1", {"X1:1", "X2:2"}).Connection("c2", {"X1:2", "X2:1"}).Text());
  EXPECT_EQ(ConnectedNets(document), "X1.1 X2.2; X1.2 X2.1");
  EXPECT_EQ(WarningLines(document), "");
}

TEST(KblReaderTest, ContactPointsWithoutACavityArePins) {
  KblText kbl = TwoConnectors();
  kbl.InHarness(
      "<Connector_occurrence><Id>R1</Id><Usage>ring terminal</Usage><Contact_points id='r'><Id>M6</Id>"
      "</Contact_points><Contact_points id='q'/></Connector_occurrence>");
  EXPECT_EQ(ConnectedNets(ReadKblText(kbl.Wire({"X1:1", "r"}).Wire({"X1:2", "q"}).Text())),
            "X1.1 R1.M6; X1.2 R1.q");
}

TEST(KblReaderTest, CavitiesOfSeveralSlotsAreToldApart) {
  KblText kbl;
  kbl.InContainer(
      "<Connector_housing id='H'><Slots id='sa'><Id>A</Id><Cavities "
      "id='a1'><Cavity_number>1</Cavity_number></Cavities></Slots>"
      "<Slots id='sb'><Cavities "
      "id='b1'><Cavity_number>1</Cavity_number></Cavities></Slots></Connector_housing>");
  kbl.InHarness(
      "<Connector_occurrence><Id>X1</Id><Slots><Part>sa</Part><Cavities><Part>a1</Part></Cavities></Slots>"
      "<Slots><Part>sb</Part><Cavities><Part>b1</Part></Cavities></Slots></Connector_occurrence>");
  const WiringDocument document = ReadKblText(kbl.Text());
  EXPECT_EQ(AllPins(document), "X1.A_1 X1.2_1");
  EXPECT_THAT(WarningLines(document), HasSubstr("X1 has cavities of the same number in several slots"));
}

TEST(KblReaderTest, ComponentBoxesHaveConnectors) {
  for (const std::string slots : {"Slots", "Integrated_slots"}) {
    KblText kbl = TwoConnectors();
    kbl.InContainer("<Component_box id='B'><Component_box_connectors id='bc'><Id>K</Id><" + slots +
                    " id='bs'>" + "<Cavities id='b1'><Cavity_number>1</Cavity_number></Cavities></" + slots +
                    "></Component_box_connectors></Component_box>");
    kbl.InHarness(
        "<Component_box_occurrence><Id>F1</Id><Part>B</Part><Component_box_connectors><Part>bc</Part><Slots>"
        "<Part>bs</Part><Cavities id='f1'><Part>b1</Part></Cavities></Slots></Component_box_connectors>"
        "<Contact_points id='fp'><Contacted_cavity>f1</Contacted_cavity></Contact_points>"
        "</Component_box_occurrence>");
    const WiringDocument document = ReadKblText(kbl.Wire({"X1:1", "fp"}).Text());
    EXPECT_EQ(ConnectedNets(document), "X1.1 F1.1") << slots;
    EXPECT_THAT(WarningLines(document),
                HasSubstr("component boxes, whose fuses and relays are taken as not fitted: 1\n"))
        << slots;
  }
}

/// A box with the connectors K (cavities 1 and 2) and L (1), and two sockets of a fuse. K1 and L1 lead to the
/// first socket, by two connections, K2 leads to the other one.
KblText FuseBox(const std::string& contactPoints = {}) {
  const auto cavity = [](const std::string& element, const std::string& id, const std::string& number) {
    return "<" + element + " id='" + id + "'><Cavity_number>" + number + "</Cavity_number></" + element + ">";
  };
  const auto used = [](const std::string& element, const std::string& id) {
    return "<" + element + " id='f." + id + "'><Part>" + id + "</Part></" + element + ">";
  };
  KblText kbl = TwoConnectors();
  kbl.InContainer(
      "<Component_box id='B'><Component_box_connectors id='k'><Id>K</Id><Integrated_slots id='ks'>"
      "<Id>default</Id>" +
      cavity("Cavities", "k1", "1") + cavity("Cavities", "k2", "2") +
      "</Integrated_slots></Component_box_connectors><Component_box_connectors id='l'><Id>L</Id>"
      "<Integrated_slots id='ls'><Id>default</Id>" +
      cavity("Cavities", "l1", "1") +
      "</Integrated_slots></Component_box_connectors><Component_slots id='s'><Id>S</Id>" +
      cavity("Component_cavities", "s1", "1") + cavity("Component_cavities", "s2", "2") +
      "</Component_slots>"
      "<Connections><Cavities>k1</Cavities><Component_cavities>s1</Component_cavities></Connections>"
      "<Connections><Cavities>k2</Cavities><Component_cavities>s2</Component_cavities></Connections>"
      "<Connections><Cavities>l1</Cavities><Component_cavities>\ns1 </Component_cavities>"
      "</Connections></Component_box>");
  return kbl.InHarness(
      "<Component_box_occurrence><Id>F</Id><Part>B</Part><Component_box_connectors><Part>k</Part><Slots>"
      "<Part>ks</Part>" +
      used("Cavities", "k1") + used("Cavities", "k2") +
      "</Slots></Component_box_connectors><Component_box_connectors><Part>l</Part><Slots><Part>ls</Part>" +
      used("Cavities", "l1") + "</Slots></Component_box_connectors><Component_slots><Part>s</Part>" +
      used("Component_cavities", "s1") + used("Component_cavities", "s2") + "</Component_slots>" +
      contactPoints + "</Component_box_occurrence>");
}

TEST(KblReaderTest, TheInsideOfAComponentBoxConnectsItsCavities) {
  const WiringDocument document = ReadKblText(FuseBox().Text());
  EXPECT_EQ(ConnectedNets(document), "F.K_1 F.L_1");
  EXPECT_EQ(AllPins(document), "X1.1 X1.2 X1.3 X2.1 X2.2 X2.3 F.K_1 F.K_2 F.L_1");
  EXPECT_EQ(document.wires, 0U);
}

TEST(KblReaderTest, TwoComponentBoxesOfOnePartAreApart) {
  KblText kbl = FuseBox();
  kbl.InHarness(
      "<Component_box_occurrence><Id>G</Id><Part>B</Part><Component_box_connectors><Slots><Cavities>"
      "<Part>k1</Part></Cavities><Cavities><Part>k2</Part></Cavities></Slots></Component_box_connectors>"
      "</Component_box_occurrence>");
  EXPECT_EQ(ConnectedNets(ReadKblText(kbl.Text())), "F.K_1 F.L_1");
}

TEST(KblReaderTest, ASocketIsAPinWhereAWireEndsOnIt) {
  const std::string point =
      "<Contact_points id='p'><Contacted_cavity>f.s2</Contacted_cavity></Contact_points>";
  const WiringDocument document = ReadKblText(FuseBox(point).Wire({"X1:1", "p"}).Text());
  EXPECT_EQ(ConnectedNets(document), "X1.1 F.K_2 F.S_2; F.K_1 F.L_1");
}

TEST(KblReaderTest, NamesAreReadAsXmlWritesThem) {
  KblText kbl;
  kbl.Housing("H", {"1"});
  kbl.InHarness(
      "<Connector_occurrence><Id> X&amp;&#x59;<![CDATA[<1>]]><!-- no -->&#228; </Id><Slots><Cavities>"
      "<Part> H.1 </Part></Cavities></Slots></Connector_occurrence>");
  EXPECT_EQ(AllPins(ReadKblText(kbl.Text())), "X&Y<1>ä.1");
}

TEST(KblReaderTest, PrefixesOfTheNamespaceDoNotMatter) {
  std::string text = TwoConnectors().Wire({"X1:1", "X2:3"}).Text();
  std::string bare = text;
  for (std::size_t at = bare.find("kbl:KBL"); at != std::string::npos; at = bare.find("kbl:KBL"))
    bare.erase(at, 4);
  EXPECT_EQ(ConnectedNets(ReadKblText(bare)), "X1.1 X2.3");
  for (const std::string name :
       {"Harness", "Connection", "Extremities", "Contact_point", "Slots", "Cavities", "Id", "Part"}) {
    for (const std::string open : {"<", "</"}) {
      std::string prefixed;
      std::string_view rest = text;
      for (std::size_t at = rest.find(open + name + (name == "Connection" ? ">" : ""));
           at != std::string_view::npos; at = rest.find(open + name + (name == "Connection" ? ">" : ""))) {
        prefixed += std::string(rest.substr(0, at)) + open + "kbl:";
        rest.remove_prefix(at + open.size());
      }
      text = prefixed + std::string(rest);
    }
  }
  EXPECT_EQ(ConnectedNets(ReadKblText(text)), "X1.1 X2.3");
}

TEST(KblReaderTest, PinsStandWhereTheirCavityIs) {
  const WiringDocument document = ReadKblText(
      "<KBL_container>\n<Connector_housing><Slots><Cavities "
      "id='c'><Cavity_number>1</Cavity_number></Cavities></Slots>"
      "</Connector_housing><Harness><Connector_occurrence><Id>Ü&amp;1</Id><Slots>\n"
      "<!-- Ä --> "
      "<Cavities\nid='x'><Part>c</Part></Cavities></Slots></Connector_occurrence></Harness></KBL_container>");
  EXPECT_EQ(PlaceText(document.pins.at(0).place), "h.kbl:3:12");
}

TEST(KblReaderTest, OtherEncodingsAreRead) {
  std::string text = TwoConnectors().Connector("K\xC3\xBC", "H", {"1"}).Wire({"X1:1", "K\xC3\xBC:1"}).Text();
  EXPECT_EQ(ConnectedNets(ReadKblText("\xEF\xBB\xBF" + text)), "X1.1 Kü.1");
  for (std::size_t at = text.find("\xC3\xBC"); at != std::string::npos; at = text.find("\xC3\xBC"))
    text.replace(at, 2, "\xFC");
  EXPECT_EQ(ConnectedNets(ReadKblText(text)), "X1.1 Kü.1");
}

struct WarnedKbl {
  std::string name;
  KblText text;
  std::string warning;
};

class WarnedKblTest : public testing::TestWithParam<WarnedKbl> {};

TEST_P(WarnedKblTest, SaysWhatItTakesForGranted) {
  EXPECT_EQ(WarningLines(ReadKblText(GetParam().text.Text())), "h.kbl:" + GetParam().warning + '\n');
}

// The harness begins in line 4, and two connectors stand in lines 5 and 6.
INSTANTIATE_TEST_SUITE_P(
    Harnesses, WarnedKblTest,
    testing::Values(
        WarnedKbl{"Modules",
                  TwoConnectors().InHarness("<Module id='m'/><Module id='n'/><Harness_configuration/>"),
                  "7:1: modules and configurations, whose variants are taken together: 3, the first here"},
        WarnedKbl{"AssemblyPart", TwoConnectors().InHarness("<Assembly_part_occurrence/>"),
                  "7:1: assembly parts, whose insides are not read: 1"},
        WarnedKbl{"ConnectorTwice",
                  TwoConnectors().InHarness("<Connector_occurrence><Id>X1</Id></Connector_occurrence>"),
                  "7:1: X1 is there more than once: taken as one connector"},
        WarnedKbl{"OneEnd", TwoConnectors().Wire({"X1:1"}), "8:1: connections with fewer than two ends: 1"},
        WarnedKbl{"NoWire", TwoConnectors().Connection("w", {"X1:1", "X2:1"}),
                  "7:1: connections without a wire that the harness has: 1"},
        WarnedKbl{"WireUsedTwice", TwoConnectors().Wire({"X1:1", "X2:1"}).Connection("w1", {"X1:2", "X2:2"}),
                  "9:1: connections by the wire of another, taken as wires of their own: 1"},
        WarnedKbl{"MatedCavities",
                  TwoConnectors().InHarness(
                      "<Connector_occurrence><Id>X3</Id><Slots><Cavities><Part>H.1</Part>"
                      "<Mated_cavities>X1/1</Mated_cavities></Cavities></Slots></Connector_occurrence>"),
                  "7:41: cavities mated with others, not taken as connected: 1"},
        WarnedKbl{"MatedSlots",
                  TwoConnectors().InHarness(
                      "<Connector_occurrence><Id>X3</Id><Slots><Mated_slots>X1/s</Mated_slots><Cavities>"
                      "<Part>H.1</Part></Cavities></Slots></Connector_occurrence>"),
                  "7:72: cavities mated with others, not taken as connected: 1"}),
    RowName<WarnedKbl>);

struct BadKbl {
  std::string name;
  std::string text;
  std::string refusal;  // without the file's name
};

class BadKblTest : public testing::TestWithParam<BadKbl> {};

TEST_P(BadKblTest, IsRefusedAtItsPlace) {
  EXPECT_EQ(RefusalOf([&] { ReadKblText(GetParam().text); }), "h.kbl" + GetParam().refusal);
}

INSTANTIATE_TEST_SUITE_P(
    Documents, BadKblTest,
    testing::Values(
        BadKbl{"Empty", "", ":1:1: this is no XML: No document element found"},
        BadKbl{"JustText", "hello", ":1:5: this is no XML: No document element found"},
        BadKbl{"OtherRoot", "<?xml version='1.0'?>\n<html/>",
               ":2:1: this is no KBL: the outermost element is html, not KBL_container"},
        BadKbl{"NoHarness", "<KBL_container/>", ":1:1: there is no Harness in the document"},
        BadKbl{"TwoRoots", "<KBL_container/>\n<KBL_container/>",
               ":2:1: this is no XML: a second outermost element"},
        BadKbl{"CutOff", "<KBL_container>\n<Harness>", ":2:9: this is no XML: Start-end tags mismatch"},
        BadKbl{"WrongEnd", "<KBL_container>\n<Harness></Harnes>",
               ":2:12: this is no XML: Start-end tags mismatch"},
        BadKbl{"ControlCharacter", std::string("<KBL_container>\n\0</KBL_container>", 34),
               ":2:1: a control character: this is no text"},
        BadKbl{"EntityOfItsOwn", "<!DOCTYPE k [<!ENTITY a 'b'>]>\n<KBL_container/>",
               ":1:1: the file has a document type with declarations or a link: entities are not read"},
        BadKbl{"LinkToADocumentType", "<!DOCTYPE k SYSTEM 'file:///etc/passwd'>\n<KBL_container/>",
               ":1:1: the file has a document type with declarations or a link: entities are not read"},
        BadKbl{"PublicDocumentType", "<!DOCTYPE k PUBLIC\n'a' 'b'>\n<KBL_container/>",
               ":1:1: the file has a document type with declarations or a link: entities are not read"},
        BadKbl{"NameOfADocumentType", "<!DOCTYPE KBL_container>\n<KBL_container/>",
               ":2:1: there is no Harness in the document"},
        BadKbl{"UnknownEntity",
               KblText().InHarness("<Connector_occurrence><Id>&a;</Id></Connector_occurrence>").Text(),
               ":4:23: the entity &a is not known: only XML's own entities are read"},
        BadKbl{"LongEntity",
               KblText()
                   .InHarness("<Connector_occurrence><Id>&aaaaaaaaaaaaaaaaaaaäöü\n" + std::string(99, 'b') +
                              ";</Id></Connector_occurrence>")
                   .Text(),
               ":4:23: the entity &aaaaaaaaaaaaaaaaaaaäöü " + std::string(37, 'b') +
                   "... is not known: only XML's own entities are read"},
        BadKbl{"EntityThatIsNoCharacter",
               KblText().InHarness("<Connector_occurrence><Id>&#xD800;</Id></Connector_occurrence>").Text(),
               ":4:23: the entity &#xD800 is not known: only XML's own entities are read"}),
    RowName<BadKbl>);

BadKbl InHarness(const std::string& name, const std::string& text, const std::string& refusal) {
  return {name, TwoConnectors().InHarness(text).Text(), refusal};
}

INSTANTIATE_TEST_SUITE_P(
    Harnesses, BadKblTest,
    testing::Values(
        InHarness("ConnectorWithoutId", "<Connector_occurrence/>", ":7:1: a connector without an Id"),
        InHarness("ConnectorWithAnEmptyId", "<Connector_occurrence><Id> </Id></Connector_occurrence>",
                  ":7:1: a connector without an Id"),
        InHarness("IdOfTwoLines", "<Connector_occurrence><Id>a\nb</Id></Connector_occurrence>",
                  ":7:1: an Id must be a text of one line"),
        InHarness("UnknownCavity",
                  "<Connector_occurrence><Id>X3</Id><Slots><Cavities><Part>H.9</Part></Cavities></Slots></"
                  "Connector_occurrence>",
                  ":7:41: no housing has a cavity with the id H.9"),
        BadKbl{
            "UnknownCavityInABox",
            TwoConnectors()
                .InContainer("<Component_box id='B'><Connections><Cavities>H.1 H.9</Cavities></Connections>"
                             "</Component_box>")
                .Text(),
            ":4:36: no housing has a cavity with the id H.9"},
        InHarness("CavityWithoutPart",
                  "<Connector_occurrence><Id>X3</Id><Slots><Cavities/></Slots></Connector_occurrence>",
                  ":7:41: a cavity without its Part"),
        InHarness("CavityTwice",
                  "<Connector_occurrence><Id>X3</Id><Slots><Cavities><Part>H.1</Part></"
                  "Cavities><Cavities><Part>H.1</Part>"
                  "</Cavities></Slots></Connector_occurrence>",
                  ":7:78: cavity 1_1 of X3 is there twice"),
        InHarness(
            "CavityIdTwice",
            "<Connector_occurrence><Id>X3</Id><Slots><Cavities id='X1/1'><Part>H.1</Part></Cavities></Slots>"
            "</Connector_occurrence>",
            ":7:41: id X1/1 is there twice"),
        InHarness(
            "PointOfAnUnknownCavity",
            "<Connector_occurrence><Id>X3</Id><Contact_points id='p'><Contacted_cavity>X9</Contacted_cavity>"
            "</Contact_points></Connector_occurrence>",
            ":7:57: no connector has a cavity with the id X9"),
        InHarness("PointIdTwice",
                  "<Connector_occurrence><Id>X3</Id><Contact_points "
                  "id='X1:1'><Id>a</Id></Contact_points></Connector_occurrence>",
                  ":7:34: id X1:1 is there twice"),
        InHarness("PointWithNeitherCavityNorName",
                  "<Connector_occurrence><Id>X3</Id><Contact_points/></Connector_occurrence>",
                  ":7:34: a contact point of X3 without a cavity needs an Id of its own"),
        InHarness("WireIdTwice", "<General_wire_occurrence id='w'/><General_wire_occurrence id='w'/>",
                  ":7:34: id w is there twice"),
        InHarness("ExtremityWithoutPoint", "<Connection><Extremities/></Connection>",
                  ":7:13: an extremity without its Contact_point"),
        InHarness("ExtremityOfAnUnknownPoint",
                  "<Connection>\n<Extremities><Contact_point>X1:9</Contact_point></Extremities></Connection>",
                  ":8:1: no connector has a contact point with the id X1:9"),
        BadKbl{"HousingIdTwice", KblText().Housing("H", {"1"}).Housing("H", {"2"}).Text(),
               ":4:27: id H.s is there twice"},
        BadKbl{"CavityWithoutNumber", KblText().Housing("H", {""}).Connector("X", "H", {""}).Text(),
               ":5:178: cavity H. needs a Cavity_number of one line"},
        BadKbl{"CavityNumberOfTwoLines",
               KblText().Housing("H", {"1\n2"}).Connector("X", "H", {"1\n2"}).Text(),
               ":10:70: cavity H.1 2 needs a Cavity_number of one line"}),
    RowName<BadKbl>);

TEST(HostileKblTest, NestingCostsNoStack) {
  std::string text = "<KBL_container><Harness>";
  for (int i = 0; i < 300'000; ++i) text += "<Slots>";
  EXPECT_THAT(RefusalOf([&] { ReadKblText(text); }), HasSubstr("this is no XML"));
  for (int i = 0; i < 300'000; ++i) text += "</Slots>";
  EXPECT_EQ(AllPins(ReadKblText(text + "</Harness></KBL_container>")), "");
  EXPECT_EQ(RefusalOf([&] { ReadKblText("<!DOCTYPE k " + std::string(300'000, '[')); }),
            "h.kbl:1:300012: this is no XML: Error parsing document type declaration");
}

TEST(HostileKblTest, PlacesInOneVeryLongLineAreFoundAtOnce) {
  KblText kbl;
  std::vector<std::string> cavities;
  for (int i = 0; i < 20'000; ++i) cavities.push_back(std::to_string(i));
  std::string text = kbl.Housing("H", cavities).Connector("X1", "H", cavities).Text();
  std::erase(text, '\n');
  const WiringDocument document = ReadKblText(text);
  const std::size_t at = text.find("<Cavities id=\"X1/19999\"");
  EXPECT_EQ(PlaceText(document.pins.back().place), "h.kbl:1:" + std::to_string(at + 1));
}

}  // namespace
}  // namespace kxbench::documents
