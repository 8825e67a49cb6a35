#include <gmock/gmock.h>

#include "tests/bench/documents/DocumentTexts.h"
#include "tests/bench/documents/KblText.h"

namespace kxbench::documents {
namespace {

using testing::HasSubstr;
using testing::Not;

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

TEST(KblReaderTest, ABoxThatListsNothingHasThePinsOfItsPartWithoutTheSockets) {
  KblText kbl = FuseBox();
  kbl.InHarness("<Component_box_occurrence><Id>G</Id><Part>B</Part></Component_box_occurrence>");
  const WiringDocument document = ReadKblText(kbl.Text());
  EXPECT_EQ(AllPins(document), "X1.1 X1.2 X1.3 X2.1 X2.2 X2.3 F.K_1 F.K_2 F.L_1 G.K_1 G.K_2 G.L_1");
  EXPECT_EQ(ConnectedNets(document), "F.K_1 F.L_1; G.K_1 G.L_1");
  EXPECT_THAT(WarningLines(document), Not(HasSubstr("do not list")));
}

TEST(KblReaderTest, SocketsNeedNotBeListed) {
  KblText kbl = FuseBox();
  kbl.InHarness(
      "<Component_box_occurrence><Id>G</Id><Part>B</Part><Component_box_connectors><Slots><Cavities>"
      "<Part>k1</Part></Cavities><Cavities><Part>k2</Part></Cavities></Slots></Component_box_connectors>"
      "<Component_box_connectors><Slots><Cavities><Part>l1</Part></Cavities></Slots>"
      "</Component_box_connectors></Component_box_occurrence>");
  EXPECT_THAT(WarningLines(ReadKblText(kbl.Text())), Not(HasSubstr("do not list")));
}

TEST(KblReaderTest, ListedSocketsDoNotMakeUpForCavities) {
  KblText kbl = FuseBox();
  kbl.InHarness(
      "<Component_box_occurrence><Id>G</Id><Part>B</Part><Component_box_connectors><Slots><Cavities>"
      "<Part>k1</Part></Cavities></Slots></Component_box_connectors><Component_slots><Component_cavities>"
      "<Part>s1</Part></Component_cavities></Component_slots></Component_box_occurrence>");
  EXPECT_THAT(WarningLines(ReadKblText(kbl.Text())), HasSubstr("do not list, not taken as pins: 2, "));
}

TEST(KblReaderTest, ASocketIsAPinWhereAContactPointIsInIt) {
  const std::string point =
      "<Contact_points id='p'><Contacted_cavity>f.s2</Contacted_cavity></Contact_points>";
  const WiringDocument document = ReadKblText(FuseBox(point).Wire({"X1:1", "p"}).Text());
  EXPECT_EQ(ConnectedNets(document), "X1.1 F.K_2 F.S_2; F.K_1 F.L_1");
  EXPECT_EQ(ConnectedNets(ReadKblText(FuseBox(point).Text())), "F.K_1 F.L_1; F.K_2 F.S_2");
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

/// The text with every `what` replaced.
std::string Replaced(std::string text, const std::string& what, const std::string& by) {
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
    text.replace(at, what.size(), by);
  return text;
}

std::string InUtf16(const std::string& ascii, bool bigEndian) {
  std::string text;
  for (const char c : ascii) text += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
  return text;
}

TEST(KblReaderTest, OtherEncodingsAreRead) {
  const std::string text = TwoConnectors().Connector("Kü", "H", {"1"}).Wire({"X1:1", "Kü:1"}).Text();
  EXPECT_EQ(ConnectedNets(ReadKblText("\xEF\xBB\xBF" + text)), "X1.1 Kü.1");
  const std::string bytes = Replaced(text, "ü", "\xFC");
  EXPECT_EQ(ConnectedNets(ReadKblText(Replaced(bytes, " encoding=\"UTF-8\"", ""))), "X1.1 Kü.1");
  for (const char* const name : {"ISO-8859-1", "windows-1252", "US-ASCII"})
    EXPECT_EQ(ConnectedNets(ReadKblText(Replaced(bytes, "UTF-8", name))), "X1.1 Kü.1") << name;
}

TEST(KblReaderTest, Utf16IsReadByItsMark) {
  const std::string text =
      Replaced(TwoConnectors().Wire({"X1:1", "X2:1"}).Text(), "encoding=\"UTF-8\"", "encoding = 'utf-16'");
  EXPECT_EQ(ConnectedNets(ReadKblText("\xFE\xFF" + InUtf16(text, true))), "X1.1 X2.1");
  EXPECT_EQ(ConnectedNets(ReadKblText("\xFF\xFE" + InUtf16(text, false))), "X1.1 X2.1");
  for (const bool bigEndian : {false, true}) {
    EXPECT_EQ(RefusalOf([&] { ReadKblText(InUtf16(text, bigEndian)); }),
              "h.kbl:1:1: there is a NUL byte: this is no text, or UTF-16 without its mark");
  }
}

/// X1 with the cavities 1 and 10, X2 with 1; `wired` is where the wire of X2 ends.
std::string TenOrOne(const std::string& wired) {
  return KblText()
      .Housing("H", {"1", "10"})
      .Connector("X1", "H", {"1", "10"})
      .Connector("X2", "H", {"1", "10"})
      .Wire({wired, "X2:1"})
      .Text();
}

TEST(KblReaderTest, ReferencesAreReadWhole) {
  for (const char* const reference :
       {"X1:1<!-- was 7 -->0", "X1:1<![CDATA[0]]>", "<![CDATA[X1:1]]>0", "X1:1<?pi was='7'?>0",
        "<!-- was 7 -->X1:10", "X1&#58;1&#x30;", " X1:1<![CDATA[]]>0\n"}) {
    EXPECT_EQ(ConnectedNets(ReadKblText(TenOrOne(reference))), "X1.10 X2.1") << reference;
  }
}

TEST(KblReaderTest, ReferencesOfEveryKindAreReadWhole) {
  const std::string text = TenOrOne("X1:10");
  for (const char* const reference :
       {"<Contacted_cavity>X1/10", "<Part>H.10", "<Wire>w1", "<Contact_point>X1:10", "<Part>H.s"}) {
    ASSERT_THAT(text, HasSubstr(reference));
    std::string cut = reference;
    cut.insert(cut.size() - 1, "<!-- -->");
    const WiringDocument document = ReadKblText(Replaced(text, reference, cut));
    EXPECT_EQ(ConnectedNets(document), "X1.10 X2.1") << reference;
    EXPECT_EQ(WarningLines(document), "") << reference;
  }
  EXPECT_EQ(ConnectedNets(ReadKblText(
                Replaced(FuseBox().Text(), "<Component_cavities>s1", "<Component_cavities>s<!-- -->1"))),
            "F.K_1 F.L_1");
}

TEST(KblReaderTest, BlanksBetweenCommentsPartReferences) {
  KblText kbl;
  kbl.Housing("H", {"1", "2"});
  kbl.InHarness(
      "<Connector_occurrence><Id>X<!-- a --> <!-- b -->1</Id><Contact_points id='a'><Contacted_cavity>c1"
      "<!-- and -->\n<!-- also -->c2</Contacted_cavity></Contact_points><Slots><Cavities id='c1'>"
      "<Part>H.1</Part></Cavities><Cavities id='c2'><Part>H.2</Part></Cavities></Slots>"
      "</Connector_occurrence>");
  EXPECT_EQ(ConnectedNets(ReadKblText(kbl.Text())), "X 1.1 X 1.2");
}

TEST(KblReaderTest, IdsAreReadAsXmlWritesThem) {
  const std::string text = TenOrOne("X1:10");
  for (const auto& [id, written] : std::vector<std::pair<std::string, std::string>>{
           {"\"H.10\"", "\"&#72;.10\""}, {"\"X1/10\"", "\"X1/1&#x30;\""}, {"\"w1\"", "\"w&#49;\""}}) {
    const WiringDocument document = ReadKblText(Replaced(text, id, written));
    EXPECT_EQ(ConnectedNets(document), "X1.10 X2.1") << written;
    EXPECT_EQ(WarningLines(document), "") << written;
  }
}

TEST(KblReaderTest, ConnectorsStandInTheOrderOfTheDocument) {
  KblText kbl;
  kbl.Housing("H", {"1"});
  kbl.InHarness(
      "<Connector_occurrence><Id>R1</Id><Contact_points id='r'><Id>M6</Id></Contact_points>"
      "</Connector_occurrence>");
  kbl.Connector("X1", "H", {"1"});
  kbl.InHarness(
      "<Connector_occurrence><Id>R2</Id><Contact_points id='q'><Id>M8</Id></Contact_points>"
      "</Connector_occurrence><Connector_occurrence><Id>E</Id></Connector_occurrence>");
  const WiringDocument document = ReadKblText(kbl.Connector("X2", "H", {"1"}).Text());
  EXPECT_EQ(AllPins(document), "R1.M6 X1.1 R2.M8 X2.1");
  EXPECT_EQ(document.connectors, 4U);
}

TEST(KblReaderTest, AConnectorThatListsNothingHasThePinsOfItsHousing) {
  KblText kbl = TwoConnectors();
  for (const char* const name : {"X3", "X4"}) {
    kbl.InHarness("<Connector_occurrence><Id>" + std::string(name) +
                  "</Id><Part>H</Part></Connector_occurrence>");
  }
  const WiringDocument document = ReadKblText(kbl.Wire({"X1:1", "X2:1"}).Text());
  EXPECT_EQ(AllPins(document), "X1.1 X1.2 X1.3 X2.1 X2.2 X2.3 X3.1 X3.2 X3.3 X4.1 X4.2 X4.3");
  EXPECT_EQ(ConnectedNets(document), "X1.1 X2.1");
  EXPECT_EQ(PlaceText(document.pins.back().place), "h.kbl:8:1");
  EXPECT_EQ(WarningLines(document), "");
}

TEST(KblReaderTest, ASpliceNeedsNoPinsOfItsHousing) {
  const WiringDocument document =
      ReadKblText(TwoConnectors()
                      .InHarness("<Connector_occurrence id='s'><Id>S</Id><Usage>splice</Usage><Part>H</Part>"
                                 "<Contact_points id='a'/><Contact_points id='b'/></Connector_occurrence>")
                      .Wire({"X1:1", "a"})
                      .Wire({"X2:1", "b"})
                      .Text());
  EXPECT_EQ(ConnectedNets(document), "X1.1 X2.1");
  EXPECT_EQ(WarningLines(document), "");
}

TEST(KblReaderTest, NullIsNoValue) {
  KblText kbl = TwoConnectors();
  kbl.Connector("/NULL", "H", {"1"}, "splice");
  kbl.InHarness(
      "<Connector_occurrence><Id>R</Id><Usage>/NULL</Usage><Contact_points id='r'><Id>/NULL</Id>"
      "</Contact_points></Connector_occurrence>");
  const WiringDocument document =
      ReadKblText(kbl.Wire({"X1:1", "/NULL:1"}, "/NULL").Wire({"/NULL:1", "r"}, " /NULL ").Text());
  EXPECT_EQ(ConnectedNets(document), "X1.1 R.r");
  EXPECT_EQ(document.nets.front().name, "");
}

TEST(KblReaderTest, TextsWithNullInThemAreValues) {
  const WiringDocument document =
      ReadKblText(KblText().Housing("H", {"/NULL1"}).Connector("NULL", "H", {"/NULL1"}).Text());
  EXPECT_EQ(AllPins(document), "NULL./NULL1");
}

}  // namespace
}  // namespace kxbench::documents
