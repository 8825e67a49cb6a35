#include <gmock/gmock.h>

#include "bench/documents/CsvScanner.h"
#include "bench/documents/WiringListReader.h"
#include "tests/bench/RowName.h"
#include "tests/bench/documents/ListTexts.h"

namespace kxbench::documents {
namespace {

using testing::HasSubstr;

struct ListRow {
  const char* name;
  std::string text;
  std::string nets;
  std::optional<std::string> columns = std::nullopt;
};

class WiringList : public testing::TestWithParam<ListRow> {};

TEST_P(WiringList, GivesItsNets) {
  EXPECT_EQ(NetsText(ReadWiringList("list.csv", GetParam().text, {GetParam().columns})), GetParam().nets);
}

INSTANTIATE_TEST_SUITE_P(
    FromTo, WiringList,
    testing::Values(
        ListRow{"Comma", "from,to\nX1.1,X2.1\nX1.2,X2.2\n", "X1.1 X2.1 | X1.2 X2.2"},
        ListRow{"Semicolon", "von;nach\nX1.1;X2.1\n", "X1.1 X2.1"},
        ListRow{"Tab", "From\tTo\nX1.1\tX2.1\n", "X1.1 X2.1"},
        ListRow{"CrLf", "from,to\r\nX1.1,X2.1\r\nX1.2,X2.2\r\n", "X1.1 X2.1 | X1.2 X2.2"},
        ListRow{"Cr", "from,to\rX1.1,X2.1\rX1.2,X2.2\r", "X1.1 X2.1 | X1.2 X2.2"},
        ListRow{"NoLastLineEnd", "from,to\nX1.1,X2.1", "X1.1 X2.1"},
        ListRow{"SeparatorLine", "sep=;\nfrom;to\nX1.1;X2.1\n", "X1.1 X2.1"},
        ListRow{"FourColumns", "from connector,from pin,to connector,to pin\nX1,1,X2,3\n", "X1.1 X2.3"},
        ListRow{"FourGermanColumns", "Von Stecker;Von Pin;Nach Stecker;Nach Pin\nX1;1;X2;3\n", "X1.1 X2.3"},
        ListRow{"RunTogether", "quellstecker;quellpin;zielstecker;zielpin\nX1;1;X2;3\n", "X1.1 X2.3"},
        ListRow{"CamelCase", "FromConnector,FromPin,ToConnector,ToPin\nX1,1,X2,3\n", "X1.1 X2.3"},
        ListRow{"Underscores", "from_connector,from_pin,to_connector,to_pin\nX1,1,X2,3\n", "X1.1 X2.3"},
        ListRow{"SidesByLetters", "Stecker A;Pin A;Stecker B;Pin B\nX1;1;X2;3\n", "X1.1 X2.3"},
        ListRow{"SidesByNumbers", "Connector 1,Pin 1,Connector 2,Pin 2\nX1,1,X2,3\n", "X1.1 X2.3"},
        ListRow{"SidesByOrder", "Stecker;Pin;Stecker;Pin\nX1;1;X2;3\n", "X1.1 X2.3"},
        ListRow{"PinBesideItsSide", "Wire,From,Pin,To,Pin\nW1,X1,1,X2,3\n", "X1.1 X2.3"},
        ListRow{"PinUnderNoName", "from,,to,\nX1,1,X2,3\n", "X1.1 X2.3"},
        ListRow{"BlankColumnsAtTheEnd", "from,to,,\nX1.1,X2.3,,\n", "X1.1 X2.3"},
        ListRow{"KontaktAndKammer", "Von Gerät;Kontakt;Nach Gerät;Kammer\nX1;1;X2;3\n", "X1.1 X2.3"},
        ListRow{"OtherColumns",
                "Nr.;Farbe;von;nach;Länge [mm];Bemerkung\n1;rot;X1.1;X2.1;200;\"lang; blau\"\n", "X1.1 X2.1"},
        ListRow{"Quoted", "from,to\n\"X1.1\",\"X2.\"\"A\"\"\"\n", "X1.1 X2.\"A\""},
        ListRow{"QuotedLineBreak", "from,to,note\nX1.1,X2.1,\"two\nlines\"\nX1.2,X2.2,\n",
                "X1.1 X2.1 | X1.2 X2.2"},
        ListRow{"LineBreakInAName", "from,to\n\"X\n 1.1\",\"X\t2.1\"\n", "X  1.1 X 2.1"},
        ListRow{"HeadOfTwoLines", "\"from\nconnector\",\"from\npin\",to connector,to pin\nX1,1,X2,3\n",
                "X1.1 X2.3"},
        ListRow{"Comments", "# a list\nfrom,to\n// and\n  # more\nX1.1,X2.1\n", "X1.1 X2.1"},
        ListRow{"QuotedHashIsNoComment", "from,to\n\"#1.1\",X2.1\n", "#1.1 X2.1"},
        ListRow{"EmptyLines", "\n\nfrom,to\n\n,\nX1.1,X2.1\n\n", "X1.1 X2.1"},
        ListRow{"BlanksAroundFields", " from , to \n X1.1 ,\tX2.1 \n", "X1.1 X2.1"},
        ListRow{"NoBreakSpaces", "from,to\nX1.1\xC2\xA0,\xC2\xA0X2.1\n", "X1.1 X2.1"},
        ListRow{"TitleAbove", "Cable 4711,,\nProject,X,\nfrom,to,note\nX1.1,X2.1,\n", "X1.1 X2.1"},
        ListRow{"EmptyEndIsASinglePin", "from,to\nX1.1,\nX1.2,X2.2\n", "X1.1 | X1.2 X2.2"},
        ListRow{"DashIsNoPin", "from,to\nX1.1,-\nX1.2,n.c.\nX1.3,frei\n", "X1.1 | X1.2 | X1.3"},
        ListRow{"ChannelNumbers", "from,to\n1,14\n2,15\n", "1 14 | 2 15"},
        ListRow{"ColonPins", "from,to\nX1:1,X2:3\nS-1,X2:4\n", "X1.1 X2.3 | X2.4 S-1"},
        ListRow{"HyphenPins", "from,to\nX1-1,X2-3\n", "X1.1 X2.3"},
        ListRow{"LastPointParts", "from,to\nA.X1.1,A.X2.3\n", "A.X1.1 A.X2.3"},
        ListRow{"LeadingZeros", "from,to\nX1.01,X2.1\n", "X1.01 X2.1"},
        ListRow{"Umlauts", "von;nach\nTür.Öffner;Gehäuse.ß\n", "Tür.Öffner Gehäuse.ß"},
        ListRow{"LatinOne", "von;nach\nT\xFCr.1;X2.1\n", "Tür.1 X2.1"},
        ListRow{"Euro", "von;nach\n\x80.1;X2.1\n", "€.1 X2.1"},
        ListRow{"ByteOrderMark",
                "\xEF\xBB\xBF"
                "from,to\nX1.1,X2.1\n",
                "X1.1 X2.1"},
        ListRow{"SeveralWiresOnAPin", "from,to\nX1.1,X2.1\nX1.1,X3.1\n", "X1.1 X2.1 X3.1"},
        ListRow{"SpliceColumn", "from,to,splice\nX1.1,,S1\nX2.1,,S1\n,X3.1,S1\nX1.2,X2.2,\n",
                "X1.1 X2.1 X3.1 | X1.2 X2.2"},
        ListRow{"GermanSpliceColumn", "von;nach;Spleiß\nX1.1;X4.1;S1\nX2.1;;S1\n", "X1.1 X4.1 X2.1"},
        ListRow{"SignalNamesDoNotJoin", "from,to,signal\nX1.1,X2.1,GND\nX1.2,X2.2,GND\n",
                "X1.1 X2.1 | X1.2 X2.2"},
        ListRow{"CapitalUmlaut", "VON GERÄT;KONTAKT;NACH GERÄT;KONTAKT\nX1;1;X2;1\nX1;2;X3;1\n",
                "X1.1 X2.1 | X1.2 X3.1"},
        ListRow{"NoPinAtTheOtherEnd",
                "from connector,from pin,to connector,to pin\nX1,1,X2,-\nX1,2,X2,-\nX1,3,X2,n.c.\n",
                "X1.1 | X1.2 | X1.3"},
        ListRow{"PolesOfABattery", "von Stecker;von Pin;nach Stecker;nach Pin\nB;+;X2;1\nB;-;X2;2\n",
                "B.+ X2.1 | B.- X2.2"},
        ListRow{"ConnectorWithoutAnyPin", "from connector,from pin,to connector,to pin\nX1,1,S1,\nX1,2,S1,\n",
                "X1.1 X1.2 S1"},
        ListRow{"ChannelNumbersBesideLineNumbers", "Nr.;Pin A;Pin B\n1;1;14\n2;2;15\n", "1 14 | 2 15"},
        ListRow{"WholePlacesBesideAnUnknownColumn", "Strang;Pin A;Pin B\nW1;X1.1;X2.1\n", "X1.1 X2.1"},
        ListRow{"ConnectorsWithNamesOfHeads", "net;pins\nN1;Pin.54g;X2.1\n", "Pin.54g X2.1"},
        ListRow{"HeadAgain", "from,to\nX1.1,X2.1\nfrom,to\nX1.2,X2.2\n", "X1.1 X2.1 | X1.2 X2.2"},
        ListRow{"DoubledWire", "from,to\nX1.1,X2.1\nX2.1,X1.1\n", "X1.1 X2.1"}),
    RowName<ListRow>);

INSTANTIATE_TEST_SUITE_P(
    Nets, WiringList,
    testing::Values(
        ListRow{"PinOnEachLine", "net,connector,pin\nGND,X1,1\nGND,X2,3\n12V,X1,2\n", "X1.1 X2.3 | X1.2"},
        ListRow{"GermanPinOnEachLine", "Stecker;Pin;Netz\nX1;1;GND\nX2;3;GND\n", "X1.1 X2.3"},
        ListRow{"SignalJoinsWhereThereIsNoNet", "Stecker;Pin;Signal\nX1;1;GND\nX2;3;GND\n", "X1.1 X2.3"},
        ListRow{"NetGoesBeforeSignal", "connector,pin,signal,net\nX1,1,a,N1\nX2,3,b,N1\n", "X1.1 X2.3"},
        ListRow{"WholePlaces", "pin,net\nX1.1,GND\nX2.3,GND\n", "X1.1 X2.3"},
        ListRow{"SteckerSlashPin", "Stecker/Pin;Potential\nX1.1;GND\nX2.3;GND\n", "X1.1 X2.3"},
        ListRow{"NoNetIsASinglePin", "net,connector,pin\n,X1,1\n,X2,3\n", "X1.1 | X2.3"},
        ListRow{"NotConnectedIsNoNet", "net,connector,pin\nNC,X1,1\nNC,X2,3\n-,X3,1\n", "X1.1 | X2.3 | X3.1"},
        ListRow{"PointBesidePins", "net,connector,pin\nN1,X1,\nN1,X1,1\n,X1,2\n", "X1 X1.1 | X1.2"},
        ListRow{"ConnectorThatIsCalledOpen", "net,connector,pin\nN1,open,-\nN1,--,nc\n", "open.- --.nc"},
        ListRow{"NetOnEachLine", "net,pins\nGND,X1.1,X2.3,X3.4\n12V,X1.2\n", "X1.1 X2.3 X3.4 | X1.2"},
        ListRow{"NumberedPins", "Netz;Pin 1;Pin 2;Pin 3\nGND;X1.1;X2.3;X3.4\n12V;X1.2;X2.4;\n",
                "X1.1 X2.3 X3.4 | X1.2 X2.4"},
        ListRow{"PinsInOneField", "net;pins\nGND;X1.1, X2.3, X3.4\n12V;X1.2 X2.4\n",
                "X1.1 X2.3 X3.4 | X1.2 X2.4"},
        ListRow{"NetsWithoutNames", "Pins\nX1.1;X2.3\nX1.2;X2.4\n", "X1.1 X2.3 | X1.2 X2.4"},
        ListRow{"SameNameOnTwoLines", "net,pins\nGND,X1.1,X2.3\nGND,X3.1\n", "X1.1 X2.3 X3.1"},
        ListRow{"RemarksAmongNumberedPins", "Netz;Pin 1;Pin 2;Pin 3;;Pin 4\nA;X1.1;X1.2;;rot;X2.4\n",
                "X1.1 X1.2 X2.4"},
        ListRow{"UnconnectedLine", "net,pins\nfrei,X1.1,X2.3\n", "X1.1 | X2.3"},
        ListRow{"ChannelsAreWhatHasNoName", "net,connector,pin,channel\nN1,,,1\nN1,X1,3,14\n", "1 X1.3"}),
    RowName<ListRow>);

INSTANTIATE_TEST_SUITE_P(
    GivenColumns, WiringList,
    testing::Values(ListRow{"Headless", "X1.1,X2.1\nX1.2,X2.2\n", "X1.1 X2.1 | X1.2 X2.2", "from,to"},
                    ListRow{"HeadlessFour", "7;X1;1;X2;3\n", "X1.1 X2.3",
                            "-,from-connector,from-pin,to-connector,to-pin"},
                    ListRow{"German", "X1.1;X2.1\n", "X1.1 X2.1", "von,nach"},
                    ListRow{"FirstLineOfWords", "Gerät 1;1;Gerät 2;1\nGerät 1;2;Gerät 2;2\n",
                            "Gerät 1.1 Gerät 2.1 | Gerät 1.2 Gerät 2.2",
                            "from-connector,from-pin,to-connector,to-pin"},
                    ListRow{"WordsThroughout", "Stecker A,Pin 1,Netz\nStecker B,Pin 1,Netz\n",
                            "Stecker A.Pin 1 Stecker B.Pin 1", "connector,pin,net"},
                    ListRow{"HeadOfTwoRowsIsSkipped", "Von;;Nach;\nStecker;Pin;Stecker;Pin\nX1;1;X2;1\n",
                            "X1.1 X2.1", "from-connector,from-pin,to-connector,to-pin"},
                    ListRow{"HeadIsSkipped", "from,to\nX1.1,X2.1\n", "X1.1 X2.1", "from,to"},
                    ListRow{"ByHead", "Startpunkt;Menge;Endpunkt\nX1.1;2;X2.1\n", "X1.1 X2.1",
                            "from=Startpunkt,to=endpunkt"},
                    ListRow{"Nets", "GND,X1.1,X2.1,X3.1\n", "X1.1 X2.1 X3.1", "net,pins"}),
    RowName<ListRow>);

struct BadListRow {
  const char* name;
  std::string text;
  std::string error;
  std::optional<std::string> columns = std::nullopt;
};

class BadWiringList : public testing::TestWithParam<BadListRow> {};

TEST_P(BadWiringList, IsRefusedWithItsPlace) {
  const std::string error =
      RefusalOf([] { ReadWiringList("list.csv", GetParam().text, {GetParam().columns}); });
  EXPECT_THAT(error, testing::StartsWith(GetParam().error));
}

const std::string Long(5000, 'x');

INSTANTIATE_TEST_SUITE_P(
    Lists, BadWiringList,
    testing::Values(
        BadListRow{"Empty", "", "list.csv: there is nothing in it"},
        BadListRow{"CommentsAlone", "# nothing\n\n", "list.csv: there is nothing in it"},
        BadListRow{"NoHead", "X1.1,X2.1\nX1.2,X2.2\n", "list.csv:1: this line does not name the columns"},
        BadListRow{"OneSideAlone", "from,colour\nX1.1,red\n",
                   "list.csv:1: this line does not name the columns"},
        BadListRow{"PinsWithoutNets", "connector,pin\nX1,1\n",
                   "list.csv:1: this line does not name the columns"},
        BadListRow{"QuoteNotClosed", "from,to\nX1.1,X2.1\nX1.2,\"X2.2\nX1.3,X2.3\n",
                   "list.csv:3:6: this quote is not closed"},
        BadListRow{"QuoteNotClosedInTheHead", "\"from,to\nX1.1,X2.1\n",
                   "list.csv:1:1: this quote is not closed"},
        BadListRow{"TextAfterAQuote", "from,to\n\"X1.1\"x,X2.1\n", "list.csv:2:7: after a closing quote"},
        BadListRow{"NulByte", std::string("from,to\nX1.1,X2\0.1\n", 18), "list.csv:2:8: there is a NUL byte"},
        BadListRow{"NulBytesEverywhere", std::string("f\0r\0o\0m\0", 8), "list.csv:1:2: there is a NUL byte"},
        BadListRow{"ControlCharacter", "from,to\nX1.1,X2\x07.1\n",
                   "list.csv:2:8: there is a control character"},
        BadListRow{"GiantField", "from,to\nX1.1," + Long + "\n",
                   "list.csv:2:6: this field is longer than 4096 bytes"},
        BadListRow{"GiantQuotedField", "from,to\nX1.1,\"" + Long + "\"\n",
                   "list.csv:2:6: this field is longer than 4096 bytes: is its quote not closed?"},
        BadListRow{"TooManyFields", "from,to\nX1.1" + std::string(2000, ',') + "\n",
                   "list.csv:2: this line has more than 1024 fields"},
        BadListRow{"FieldMissing", "from,to\nX1.1,X2.1\nX1.2\n",
                   "list.csv:3: this line has 1 field; the columns that count are 2"},
        BadListRow{"PinMissing", "from connector,from pin,to connector,to pin\nX1,1,X2\n",
                   "list.csv:2: this line has 3 fields; the columns that count are 4"},
        BadListRow{"FieldTooMany", "from,to\nX1.1,X2.1,X3.1\n",
                   "list.csv:2:11: this field is past the last column"},
        BadListRow{"PinOnNoConnector", "from connector,from pin,to connector,to pin\nX1,1,,3\n",
                   "list.csv:2:7: pin 3 is on no connector"},
        BadListRow{"ColumnCountsCharacters", "von;nach\nTür.1;\"x\n",
                   "list.csv:2:7: this quote is not closed"},
        BadListRow{"NetLineWithoutPin", "net,pins\nGND,-\n", "list.csv:2: this line names no pin"},
        BadListRow{"NetWithoutPin", "net,connector,pin\nGND,,\n", "list.csv:2: this line names no pin"},
        BadListRow{"ConnectorsInAnUnknownColumn", "Signal;Ort;Pin\nGND;X1;1\nGND;X2;1\n",
                   "list.csv:1: column 3 (Pin) has no connectors: do they stand in column 2 (Ort)?"},
        BadListRow{"ConnectorsOfBothSidesInUnknownColumns", "Ort A;Pin A;Ort B;Pin B\nX1;1;X2;1\n",
                   "list.csv:1: column 2 (Pin A) has no connectors: do they stand in column 1 (Ort A)?"},
        BadListRow{"ConnectorsOfOneSide", "net;connector;pin 1;pin 2\nA;X1;1;2\n",
                   "list.csv:1: column 4 (pin 2) has no connectors, the other side has."},
        BadListRow{"PinsInAnUnknownColumn", "From;Position;To;Position\nX1;1;X2;1\n",
                   "list.csv:1: column 1 (From) has no pins: do they stand in column 2 (Position)?"},
        BadListRow{"SeveralPinsOfAConnector", "connector,pins,net\nX1,\"1,2,3\",GND\n",
                   "list.csv:1:11: column 2 (pins) is for several pins"},
        BadListRow{"NumbersAreNoHead", "Stecker 1,1,Netz 1\nStecker 1,2,Netz 1\n",
                   "list.csv:1: this line does not name the columns"},
        BadListRow{"HeadOfTwoRows", "Von;;Nach;\nStecker;Pin;Stecker;Pin\nX1;1;X2;1\n",
                   "list.csv:2: this line looks like a head, as the one above it does"},
        BadListRow{"OnePinLeftOut", "from connector,from pin,to connector,to pin\nX1,1,X2,\nX1,2,X2,2\n",
                   "list.csv:2:6: X2 stands here without a pin, elsewhere with one"},
        BadListRow{"MarkedAsUtf8",
                   "\xEF\xBB\xBF"
                   "from,to\nK\xE4.1,X1.1\nK\xFC.1,X2.1\n",
                   "list.csv:2:2: there is no character here"},
        BadListRow{"UnknownColumnWord", "X1.1,X2.1\n", "--columns: colur is no kind of column", "from,colur"},
        BadListRow{"ColumnsOfOneSide", "X1.1,X2.1\n", "--columns: from names neither", "from"},
        BadListRow{"ColumnsMixed", "a,b\nX1.1,X2.1\n", "--columns: either all columns", "from=a,to"},
        BadListRow{"TwoColumnsForOneSide", "from,to,to\nX1.1,X2.1,X3.1\n",
                   "list.csv:1:9: columns 2 (to) and 3 (to) say the same: say with --columns"},
        BadListRow{"SameNameForConnectorAndPin", "von;von;nach;nach\nX1;1;X2;1\n",
                   "list.csv:1:5: columns 1 (von) and 2 (von) say the same"},
        BadListRow{"DeviceConnectorAndPin",
                   "from device,from connector,from pin,to connector,to pin\nECU,X1,1,X2,1\n",
                   "list.csv:1:13: columns 1 (from device) and 2 (from connector) say the same"},
        BadListRow{"TwoPinsOfOneSide", "from connector,from pin,from pin,to connector,to pin\nX1,1,2,X2,1\n",
                   "list.csv:1:25: columns 2 (from pin) and 3 (from pin) say the same"},
        BadListRow{"ThreePins", "connector,pin,connector,pin,connector,pin\nX1,1,X2,1,X3,1\n",
                   "list.csv:1:29: columns 3 (connector) and 5 (connector) say the same"},
        BadListRow{"TwoNets", "net,net,connector,pin\nA,B,X1,1\n",
                   "list.csv:1:5: columns 1 (net) and 2 (net) say the same"},
        BadListRow{"TwoChannels", "connector,pin,net,channel,channel\nX1,1,A,1,2\n",
                   "list.csv:1:27: columns 4 (channel) and 5 (channel) say the same"},
        BadListRow{"TwoSplices", "from,to,splice,splice\nX1.1,X2.1,S1,S2\n",
                   "list.csv:1:16: columns 3 (splice) and 4 (splice) say the same"},
        BadListRow{"AskedTwice", "X1.1,X2.1,X3.1\n", "--columns: columns 2 and 3 say the same", "from,to,to"},
        BadListRow{"ColumnsNotThere", "a,b\nX1.1,X2.1\n", "list.csv:1: no line holds the columns",
                   "from=a,to=c"}),
    RowName<BadListRow>);

TEST(WiringListTest, TellsWhatStandsAboveTheHead) {
  const WiringDocument document = ReadWiringList("list.csv", "Cable 4711,\nfrom,to\nX1.1,X2.1\n");
  ASSERT_EQ(document.warnings.size(), 1U);
  EXPECT_EQ(PlaceText(document.warnings[0].place), "list.csv:2");
}

TEST(WiringListTest, WarnsOfAWireThatEndsWhereItBegins) {
  const WiringDocument document = ReadWiringList("list.csv", "from,to\nX1.1,X1.1\n");
  ASSERT_EQ(document.warnings.size(), 1U);
  EXPECT_EQ(PlaceText(document.warnings[0].place), "list.csv:2");
}

struct WarnedListRow {
  const char* name;
  std::string text;
  std::string warning;
  std::optional<std::string> columns = std::nullopt;
};

class WarnedWiringList : public testing::TestWithParam<WarnedListRow> {};

TEST_P(WarnedWiringList, TellsItOnceWithItsPlace) {
  const WiringDocument document = ReadWiringList("list.csv", GetParam().text, {GetParam().columns});
  ASSERT_EQ(document.warnings.size(), 1U);
  EXPECT_EQ(PlaceText(document.warnings[0].place) + ": " + document.warnings[0].text, GetParam().warning);
}

INSTANTIATE_TEST_SUITE_P(
    , WarnedWiringList,
    testing::Values(
        WarnedListRow{"PresumedHead", "from,to\nX1.1,X2.1\n",
                      "list.csv:1: this line was taken for a head, and not read", "from,to"},
        WarnedListRow{"HeadAgain", "from,to\nX1.1,X2.1\nfrom,to\nX1.2,X2.2\nfrom,to\nX1.3,X2.3\n",
                      "list.csv:3: the head once more: not read"},
        WarnedListRow{
            "EndsWithoutPin", "from connector,from pin,to connector,to pin\nX1,1,X2,-\nX1,2,X2,n.c.\n",
            "list.csv:2:9: ends whose pin says that nothing is connected, and that lead nowhere: 2"},
        WarnedListRow{"PinOfTwoNets", "net,pins\nA,X1.1,X2.1\nB,X1.1,X3.1\n",
                      "list.csv:3:3: this pin is in the nets A and B: they are one"}),
    RowName<WarnedListRow>);

TEST(WiringListTest, CountsWhatItHas) {
  const WiringDocument document =
      ReadWiringList("list.csv", "from,to,splice,net\nX1.1,,S1,GND\nX2.1,,S1,\nX1.2,X2.2,,12V\nX1.3,,,\n");
  EXPECT_EQ(document.connectors, 2U);
  EXPECT_EQ(document.pins.size(), 5U);
  EXPECT_EQ(document.splices, 1U);
  EXPECT_EQ(document.wires, 3U);
  EXPECT_EQ(document.nets.at(0).name, "GND");
  EXPECT_EQ(PlaceText(document.pins.at(1).place), "list.csv:4:1");
}

TEST(WiringListTest, ReadsTheUtf16OfSpreadsheets) {
  std::string text = "\xFF\xFE";
  for (const char c : std::string("from\tto\nX1.1\tX2.1\n")) text += {c, '\0'};
  EXPECT_EQ(NetsText(ReadWiringList("list.csv", text)), "X1.1 X2.1");
}

constexpr const char* ListToDamage =
    "\xEF\xBB\xBF# list\nvon Stecker;von Pin;nach Stecker;nach "
    "Pin;Spleiß\r\nX1;1;X2;\"3\"\"a\";\nX1;2;;;S1\nTür;7;X2;4;S1\n";

/// A document or a DocumentError: nothing else comes of it.
void ReadDamaged(const std::string& text) {
  RefusalOf([&text] {
    const WiringDocument document = ReadWiringList("list.csv", text);
    std::size_t pins = 0;
    for (const DocumentNet& net : document.nets) pins += net.pins.size();
    EXPECT_EQ(pins, document.pins.size()) << text;
  });
}

TEST(DamagedWiringList, IsReadOrRefusedWhereverItEnds) {
  const std::string text = ListToDamage;
  for (std::size_t size = 0; size <= text.size(); ++size) ReadDamaged(text.substr(0, size));
}

TEST(DamagedWiringList, IsReadOrRefusedWhateverAByteBecomes) {
  const std::string text = ListToDamage;
  // What means something to the reader; that the others do no harm either was tried once.
  const std::string values("\0\t\n\r \"#,-./:;=1Aa\x80\xA0\xBB\xC3\xE2\xEF\xF0\xFE\xFF", 26);
  for (std::size_t i = 0; i < text.size(); ++i) {
    for (const char value : values) {
      std::string damaged = text;
      damaged[i] = value;
      ReadDamaged(damaged);
    }
  }
}

TEST(CsvFieldTest, IsQuotedWhereItWouldBeReadOtherwise) {
  EXPECT_EQ(CsvField("X1.3"), "X1.3");
  EXPECT_EQ(CsvField("a,b"), "\"a,b\"");
  EXPECT_EQ(CsvField("5\""), "\"5\"\"\"");
  EXPECT_EQ(CsvField("#1"), "\"#1\"");
  EXPECT_EQ(CsvField("//"), "\"//\"");
}

TEST(WiringListReader, BlanksThatDoNotBreakAreNoPartOfAConnector) {
  const WiringDocument document = ReadWiringList("list.csv", "net,pins\nN1,X1\u00A0.1,X2.1\n");
  ASSERT_EQ(document.pins.size(), 2U);
  EXPECT_EQ(document.pins[0].pin, (Pin{"X1", "1"}));
}

}  // namespace
}  // namespace kxbench::documents
