#include <gmock/gmock.h>

#include "bench/documents/ReadDocument.h"
#include "bench/documents/Wiring.h"
#include "bench/documents/WiringJsonReader.h"
#include "tests/bench/RowName.h"
#include "tests/bench/documents/ListTexts.h"
#include "tests/bench/program/TemporaryFolder.h"

namespace kxbench::documents {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class NamedChannels : public testing::Test {
 protected:
  std::string Pins(std::int32_t last, const std::string& names) const {
    const wiring::ChannelNames channels(folder_.Write("p.ini", "[Scanner]\n" + names));
    std::string text;
    for (const auto& [channel, pin] : PinsOf(1, last, channels))
      text += (channel == 1 ? "" : " ") + PinText(pin);
    return text;
  }

  TemporaryFolder folder_;
};

TEST_F(NamedChannels, AreThePinsThatTheyShow) {
  EXPECT_EQ(Pins(4, "Relais1=X1.1\nRelais2=X1.2\nRelais3=S1.1\n"), "X1.1 X1.2 S1.1 4");
  EXPECT_EQ(Pins(3, "Relais1=A1-L\nRelais2=A2-54g\nRelais3=Masse\n"), "A.1 A.2 3");
  EXPECT_EQ(Pins(2, "Relais1=X1-1.2\nRelais2=X1-1.3\n"), "X1-1.2 X1-1.3");
}

TEST_F(NamedChannels, KeepTheirNumberWhereNamesDoNotTellThemApart) {
  EXPECT_EQ(Pins(3, "Relais1=X1.1\nRelais2=X1.1\nRelais3=X1.2\n"), "1 2 X1.2");
  EXPECT_EQ(Pins(2, "Relais1=.1\nRelais2=X1.\n"), "1 2");
}

TEST(WiringJsonTest, IsTheObjectForOtherPrograms) {
  Wiring wiring;
  wiring.pins = {{1, {"X1", "1"}}, {2, {"X2", "3"}}, {3, UnnamedPin(3)}, {4, {"X1", "\"2\""}}};
  wiring.nets = {{1, 2}};
  wiring.single = {3};
  wiring.suspended = {4};
  wiring.excluded = {{1, 3}};
  EXPECT_EQ(WiringJson(wiring),
            R"({"format":"wiring","version":1,"channels":{"1":"X1.1","2":"X2.3","3":"3","4":"X1.\"2\""},)"
            R"("nets":[["X1.1","X2.3"]],"single":["3"],"excluded":[["X1.1","3"]],"suspended":["X1.\"2\""]})"
            "\n");
}

TEST(WiringJsonTest, IsWrittenWhateverBytesANameHas) {
  Wiring wiring;
  wiring.pins = {{1, {"X\xFF", "1"}}};
  wiring.single = {1};
  EXPECT_THAT(WiringJson(wiring), HasSubstr("\"X\xEF\xBF\xBD.1\""));
}

TEST(WiringJsonTest, SaysWhenItIsReadWhatIsNotTakenOver) {
  const MappedDocument read = ReadWiringJson(
      "w.json",
      R"({"format":"wiring","version":1,"channels":{"1":"X1.1","2":"X1.2","3":"X1.3"},"nets":[["X1.1","X1.2"]],)"
      R"("single":[],"excluded":[],"suspended":["X1.3"]})");
  EXPECT_EQ(NetsText(read.document), "X1.1 X1.2");
  EXPECT_EQ(read.map.size(), 2U);
  EXPECT_EQ(read.document.warnings.size(), 1U);
}

TEST(WiringJsonTest, IsReadBackWithUnusedAndSuspendedChannels) {
  Wiring wiring;
  wiring.pins = {{1, {"X1", "1.2"}}, {2, {"X2", ""}}, {3, UnnamedPin(3)}, {4, {"X1", "4"}}};
  wiring.nets = {{1, 2}};
  wiring.single = {3};
  wiring.suspended = {4};
  wiring.excluded = {{1, 3}};
  const MappedDocument read = ReadWiringJson("w.json", WiringJson(wiring));
  EXPECT_EQ(NetsText(read.document), "X1.1.2 X2 | 3");
  EXPECT_EQ(read.map.size(), 3U);
}

TEST(WiringJsonTest, ReadsAChannelThatADamagedFileBothSuspendsAndConnects) {
  Wiring wiring;
  wiring.pins = {{1, UnnamedPin(1)}, {2, UnnamedPin(2)}};
  wiring.nets = {{1, 2}};
  wiring.suspended = {2};
  EXPECT_EQ(NetsText(ReadWiringJson("w.json", WiringJson(wiring)).document), "1 2");
}

struct BadJsonRow {
  const char* name;
  std::string text;
  const char* error;
};

/// An object of three channels with these members.
std::string ThreeChannels(const std::string& channels, const std::string& nets, const std::string& single) {
  return R"({"format":"wiring","version":1,"channels":{)" + channels + R"(},"nets":[)" + nets +
         R"(],"single":[)" + single + R"(],"excluded":[],"suspended":[]})";
}

constexpr const char* Three = R"("1":"X1.1","2":"X1.2","3":"X1.3")";

class BadWiringJson : public testing::TestWithParam<BadJsonRow> {};

TEST_P(BadWiringJson, IsRefused) {
  EXPECT_THAT(RefusalOf([] { ReadWiringJson("w.json", GetParam().text); }), StartsWith(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, BadWiringJson,
    testing::Values(
        BadJsonRow{"CutOff", "{\"format\": \"wiring\",\n \"version\": 1", "w.json:2:"},
        BadJsonRow{"OtherFormat", "{\"format\": \"diagnosis\"}", "w.json: this is no object of the format"},
        BadJsonRow{"List", "[]", "w.json: this is no object of the format"},
        BadJsonRow{"OtherVersion", R"({"format":"wiring","version":2})", "w.json: its version is not 1"},
        BadJsonRow{"NoNets", R"({"format":"wiring","version":1,"channels":{}})",
                   "w.json: there is no \"nets\""},
        BadJsonRow{"NetsAreText", R"({"format":"wiring","version":1,"channels":{},"nets":"x"})",
                   "w.json: there is no \"nets\""},
        BadJsonRow{"PinIsANumber", R"({"format":"wiring","version":1,"channels":{"1":2},"nets":[]})",
                   "w.json: a pin is no text"},
        BadJsonRow{"ChannelIsNone", R"({"format":"wiring","version":1,"channels":{"x":"X1.1"},"nets":[]})",
                   "w.json: x in \"channels\" is no channel"},
        BadJsonRow{"EmptyNet", R"({"format":"wiring","version":1,"channels":{},"nets":[[]]})",
                   "w.json: a net is no list of pins"},
        BadJsonRow{"OnePinOnTwoChannels",
                   ThreeChannels(R"("1":"X1.1","2":"X1.2","3":"X1.1")", R"(["X1.1","X1.2"])", ""),
                   "w.json: X1.1 is the pin of channel 1 and of channel 3"},
        BadJsonRow{"OneChannelTwice",
                   ThreeChannels(R"("1":"X1.1","2":"X1.2","2":"X1.3")", R"(["X1.1","X1.2","X1.3"])", ""),
                   "w.json: there are two members \"2\" in one object"},
        BadJsonRow{"OneChannelTwiceInOtherDigits",
                   ThreeChannels(R"("1":"X1.1","2":"X1.2","02":"X1.3")", R"(["X1.1","X1.2","X1.3"])", ""),
                   "w.json: channel 2 is twice in \"channels\""},
        BadJsonRow{"OneMemberTwice",
                   R"({"format":"wiring","version":1,"nets":[["X1.1"]],"channels":{},"nets":[]})",
                   "w.json: there are two members \"nets\" in one object"},
        BadJsonRow{"AChannelThatNothingIsSaidOf", ThreeChannels(Three, R"(["X1.1","X1.2"])", ""),
                   "w.json: X1.3, the pin of channel 3, is in no net, not in \"single\" and not in"},
        BadJsonRow{"APinInTwoNets", ThreeChannels(Three, R"(["X1.1","X1.2"],["X1.3","X1.2"])", ""),
                   "w.json: X1.2 is twice in \"nets\""},
        BadJsonRow{"APinTwiceInANet", ThreeChannels(Three, R"(["X1.1","X1.2","X1.1"])", R"("X1.3")"),
                   "w.json: X1.1 is twice in \"nets\""},
        BadJsonRow{"APinInANetAndSingle", ThreeChannels(Three, R"(["X1.1","X1.2"])", R"("X1.3","X1.1")"),
                   "w.json: X1.1 is in \"nets\" and in \"single\""},
        BadJsonRow{"APinTwiceInSingle", ThreeChannels(Three, R"(["X1.1","X1.2"])", R"("X1.3","X1.3")"),
                   "w.json: X1.3 is twice in \"single\""}),
    RowName<BadJsonRow>);

struct FormatOfRow {
  const char* name;
  std::string content;
  DocumentFormat format;
};

class ContentOfADocument : public testing::TestWithParam<FormatOfRow> {};

TEST_P(ContentOfADocument, ShowsItsFormat) { EXPECT_EQ(FormatOf(GetParam().content), GetParam().format); }

INSTANTIATE_TEST_SUITE_P(
    Contents, ContentOfADocument,
    testing::Values(FormatOfRow{"List", "from,to\nX1.1,X2.1\n", DocumentFormat::Csv},
                    FormatOfRow{"Empty", "", DocumentFormat::Csv},
                    FormatOfRow{"WireViz", "# harness\nconnectors:\n  X1:\n", DocumentFormat::WireViz},
                    FormatOfRow{"WireVizTemplatesFirst", "templates:\n  - &a\nconnections:\n",
                                DocumentFormat::WireViz},
                    FormatOfRow{"Xml", "<?xml version=\"1.0\"?><kbl/>", DocumentFormat::Kbl},
                    FormatOfRow{"XmlWithMark", "\xEF\xBB\xBF\n <a/>", DocumentFormat::Kbl},
                    FormatOfRow{"XmlInUtf16", std::string("\xFF\xFE<\0a\0/\0>\0", 10), DocumentFormat::Kbl},
                    FormatOfRow{"Json", "\n{\"format\": \"wiring\"}", DocumentFormat::Json}),
    RowName<FormatOfRow>);

TEST(ContentOfAnExpectation, IsTold) {
  EXPECT_TRUE(IsExpectation("[BEREICH]\r\nSTART=1\r\n"));
  EXPECT_TRUE(IsExpectation("[X]\ny=1\n[DATEN]\n"));
  EXPECT_FALSE(IsExpectation("from,to\nX1.1,[DATEN]\n"));
}

}  // namespace
}  // namespace kxbench::documents
