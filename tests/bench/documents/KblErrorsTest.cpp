#include <gmock/gmock.h>

#include "tests/bench/RowName.h"
#include "tests/bench/documents/DocumentTexts.h"
#include "tests/bench/documents/KblText.h"

namespace kxbench::documents {
namespace {

using testing::HasSubstr;

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
        WarnedKbl{
            "CavityThatIsNotListed",
            TwoConnectors().Connector("X3", "H", {"2"}).Connector("X4", "H", {"1", "2"}),
            "7:1: cavities of housings that their connectors do not list, not taken as pins: 3, the first "
            "here"},
        WarnedKbl{
            "ContactsAndNoSlots",
            TwoConnectors().InHarness(
                "<Connector_occurrence><Id>R</Id><Part>H</Part><Contact_points id='r'><Id>1</Id>"
                "</Contact_points></Connector_occurrence>"),
            "7:1: cavities of housings that their connectors do not list, not taken as pins: 3, the first "
            "here"},
        WarnedKbl{
            "SlotWithoutCavities", KblText(TwoConnectors()).Connector("X3", "H", {}),
            "7:1: cavities of housings that their connectors do not list, not taken as pins: 3, the first "
            "here"},
        WarnedKbl{
            "PointsOfOneId",
            TwoConnectors().InHarness(
                "<Connector_occurrence><Id>R</Id><Contact_points id='q1'><Id>1</Id></Contact_points>"
                "<Contact_points id='q2'><Id>1</Id></Contact_points><Contact_points id='q3'/>"
                "</Connector_occurrence>"),
            "7:84: contact points without a cavity and without an Id of their own, called by their id in "
            "the file: 2, the first here"},
        WarnedKbl{
            "PointCalledAsACavity",
            TwoConnectors().InHarness(
                "<Connector_occurrence><Id>R</Id><Contact_points id='q'><Id>1</Id></Contact_points>"
                "<Slots><Cavities><Part>H.1</Part></Cavities></Slots></Connector_occurrence>"),
            "7:33: contact points without a cavity and without an Id of their own, called by their id in "
            "the file: 1"},
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
        BadKbl{"NoPins", "<KBL_container>\n <Harness/></KBL_container>", ":2:2: the document has no pins"},
        BadKbl{
            "UnknownEncoding", "<?xml version='1.0' encoding='windows-1251'?>\n<KBL_container/>",
            ":1:31: the encoding windows-1251 is not read: only UTF-8, UTF-16, ISO-8859-1, Windows-1252 and "
            "US-ASCII are"},
        BadKbl{"UnknownEncodingInSecondLine",
               "<?xml version='1.0'\n encoding = \"Shift_JIS\" standalone='yes'?>",
               ":2:14: the encoding Shift_JIS is not read: only UTF-8, UTF-16, ISO-8859-1, Windows-1252 and "
               "US-ASCII are"},
        BadKbl{"UnknownEncodingWithAMark",
               "\xEF\xBB\xBF<?xml version='1.0' encoding='latin2'?><KBL_container/>",
               ":1:31: the encoding latin2 is not read: only UTF-8, UTF-16, ISO-8859-1, Windows-1252 and "
               "US-ASCII are"},
        BadKbl{"NoUtf8", "<?xml version='1.0' encoding='utf-8'?>\n<KBL_container id='\xC3\xA4\xE4'/>",
               ":2:21: this is not UTF-8, which the file says it is"},
        BadKbl{"NoUtf16", "<?xml version='1.0' encoding='UTF-16'?>\n<KBL_container id='\xE4'/>",
               ":2:20: this is not UTF-16, which the file says it is"},
        BadKbl{"NoUtf8InSpiteOfTheMark", "\xEF\xBB\xBF<KBL_container id='\xE4'/>",
               ":1:20: this is not UTF-8, which the file says it is"},
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
                  ":7:78: cavity 1 of X3 is there twice"),
        BadKbl{
            "NumberTwiceInOneSlot",
            KblText()
                .InContainer("<Connector_housing id='H'><Slots id='s'><Id>A</Id>"
                             "<Cavities id='a'><Cavity_number>2</Cavity_number></Cavities>"
                             "<Cavities id='b'><Cavity_number>2</Cavity_number></Cavities></Slots>"
                             "</Connector_housing>")
                .InHarness("<Connector_occurrence><Id>X</Id><Part>H</Part><Slots><Part>s</Part>\n"
                           "<Cavities><Part>a</Part></Cavities>\n<Cavities><Part>b</Part></Cavities></Slots>"
                           "</Connector_occurrence>")
                .Text(),
            ":7:1: cavity 2 of X is there twice"},
        InHarness(
            "CavityTwiceInOneOfTwoSlots",
            "<Connector_occurrence><Id>X3</Id><Slots><Cavities><Part>H.1</Part></Cavities></Slots><Slots>"
            "<Cavities><Part>H.2</Part></Cavities><Cavities><Part>H.2</Part></Cavities></Slots>"
            "</Connector_occurrence>",
            ":7:130: cavity 2_2 of X3 is there twice"),
        InHarness("NullAsId", "<Connector_occurrence><Id>/NULL</Id></Connector_occurrence>",
                  ":7:1: a connector without an Id"),
        BadKbl{"NullAsNumber", KblText().Housing("H", {"/NULL"}).Connector("X", "H", {"/NULL"}).Text(),
               ":5:193: cavity H./NULL needs a Cavity_number of one line"},
        BadKbl{"NumberOfAHousingAlone",
               KblText()
                   .Housing("H", {""})
                   .InHarness("<Connector_occurrence><Id>X</Id><Part>H</Part>"
                              "</Connector_occurrence>")
                   .Text(),
               ":3:43: cavity H. needs a Cavity_number of one line"},
        InHarness("EntityInAReference",
                  "<Connection>\n<Extremities><Contact_point>X&a;</Contact_point></Extremities></Connection>",
                  ":8:14: the entity &a is not known: only XML's own entities are read"),
        InHarness("EntityInAnId", "<General_wire_occurrence id='&a;'/>",
                  ":7:1: the entity &a is not known: only XML's own entities are read"),
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
        InHarness("OccurrenceInPlaceOfACavity",
                  "<Connector_occurrence id='o'><Id>X3</Id><Part>H</Part></Connector_occurrence>\n"
                  "<Connector_occurrence><Id>R</Id><Contact_points id='p'>"
                  "<Contacted_cavity>o</Contacted_cavity></Contact_points></Connector_occurrence>",
                  ":8:56: no connector has a cavity with the id o"),
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
  EXPECT_EQ(RefusalOf([&] { ReadKblText(text + "</Harness></KBL_container>"); }),
            "h.kbl:1:16: the document has no pins");
  EXPECT_EQ(RefusalOf([&] { ReadKblText("<!DOCTYPE k " + std::string(300'000, '[')); }),
            "h.kbl:1:300012: this is no XML: Error parsing document type declaration");
}

TEST(HostileKblTest, ConnectorsThatListNothingDoNotMultiplyWithoutEnd) {
  KblText kbl;
  std::vector<std::string> cavities;
  for (int i = 0; i < 3'000; ++i) cavities.push_back(std::to_string(i));
  kbl.Housing("H", cavities);
  for (int i = 0; i < 10; ++i)
    kbl.InHarness("<Connector_occurrence><Id>X" + std::to_string(i) +
                  "</Id><Part>H</Part></Connector_occurrence>");
  EXPECT_EQ(ReadKblText(kbl.Text()).pins.size(), 30'000U);
  kbl.InHarness("<Connector_occurrence><Id>Y</Id><Part>H</Part></Connector_occurrence>");
  EXPECT_EQ(RefusalOf([&] { ReadKblText(kbl.Text()); }),
            "h.kbl:15:1: the document is too large: more than 30,000 pins of connectors that list none");
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
