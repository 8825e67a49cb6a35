#include <gmock/gmock.h>

#include "bench/documents/ChannelMap.h"
#include "bench/documents/WiringListReader.h"
#include "tests/bench/RowName.h"
#include "tests/bench/documents/ListTexts.h"

namespace kxbench::documents {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

WiringDocument List(const std::string& rows) { return ReadWiringList("list.csv", "from,to\n" + rows); }

std::vector<std::string> FaultsOf(const WiringDocument& document, const std::string& map) {
  try {
    WiringOf(document, ReadChannelMap("map.csv", map));
  } catch (const MapError& error) {
    return error.Lines();
  }
  return {};
}

struct MapRow {
  const char* name;
  std::string text;
};

class ReadingAMap : public testing::TestWithParam<MapRow> {};

TEST_P(ReadingAMap, GivesEachPinItsChannel) {
  const Wiring wiring = WiringOf(List("X1.1,X2.3\nX1.2,\n"), ReadChannelMap("map.csv", GetParam().text));
  EXPECT_EQ(ChannelsText(wiring), "4 6 | 5");
  EXPECT_EQ(PinText(wiring.pins.at(6)), "X2.3");
}

INSTANTIATE_TEST_SUITE_P(
    Maps, ReadingAMap,
    testing::Values(MapRow{"ThreeColumns", "connector,pin,channel\nX1,1,4\nX1,2,5\nX2,3,6\n"},
                    MapRow{"German", "Stecker;Pin;Kanal\nX1;1;4\nX1;2;5\nX2;3;6\n"},
                    MapRow{"PlaceAndChannel", "pin,channel\nX1.1,4\nX1.2,5\nX2.3,6\n"},
                    MapRow{"PlaceByName", "place,channel\nX1.1,4\nX1.2,5\nX2.3,6\n"},
                    MapRow{"ChannelFirst", "Kanal\tStecker\tKontakt\n4\tX1\t1\n5\tX1\t2\n6\tX2\t3\n"},
                    MapRow{"Headless", "X1.1,4\nX1.2,5\nX2.3,6\n"},
                    MapRow{"HeadlessThree", "X1;1;4\nX1;2;5\nX2;3;6\n"},
                    MapRow{"OtherColumns",
                           "net,connector,pin,channel,note\nN1,X1,1,4,\n,X1,2,5,\nN1,X2,3,6,x\n"},
                    MapRow{"LinesWithoutChannel", "connector,pin,channel\nX1,1,4\nX1,2,5\nX9,9,\nX2,3,6\n"}),
    RowName<MapRow>);

TEST(ChannelMapTest, TellsAllFaultsAtOnce) {
  const WiringDocument document = List("X1.1,X2.1\nX1.2,X2.2\nX1.3,X2.3\n");
  EXPECT_THAT(
      FaultsOf(document, "connector,pin,channel\nX1,1,1\nX1,2,1\nX1,1,7\nX2,9,8\nX2,1,4000\nX2,2,3\n"),
      ElementsAre("map.csv:3: channel 1 is used already, for X1.1 (line 2)",
                  "map.csv:4: X1.1 is on channel 1 already", "map.csv:5: X2.9 is not in the document",
                  "map.csv:6: 4000 is no channel: the tester has the channels 1 to 3072",
                  "list.csv:4:1: X1.3 is on no channel of map.csv",
                  "list.csv:4:6: X2.3 is on no channel of map.csv"));
}

TEST(ChannelMapTest, RefusesWhatIsNoChannel) {
  EXPECT_THAT(FaultsOf(List("X1.1,X2.1\n"), "connector,pin,channel\nX1,1,one\nX2,1,99999999999\n"),
              ElementsAre(StartsWith("map.csv:2:6: one is no channel"),
                          StartsWith("map.csv:3:6: 99999999999 is no")));
  EXPECT_THAT(
      FaultsOf(List("X1.1,X2.1\n"), "connector,pin,channel\nX1,1,0\nX2,1,3073\n"),
      ElementsAre(StartsWith("map.csv:2: 0 is no channel"), StartsWith("map.csv:3: 3073 is no channel")));
}

TEST(ChannelMapTest, RefusesMoreChannelsThanAnExpectationHas) {
  EXPECT_THAT(FaultsOf(List("X1.1,X2.1\n"), "connector,pin,channel\nX1,1,1\nX2,1,2401\n"),
              ElementsAre("the channels 1-2401 are more than an expectation can have, 2400"));
  EXPECT_THAT(FaultsOf(List("X1.1,X2.1\n"), "connector,pin,channel\nX1,1,673\nX2,1,3072\n"), ElementsAre());
}

TEST(ChannelMapTest, NeedsColumnsThatAreAMap) {
  EXPECT_THAT(RefusalOf([] { ReadChannelMap("map.csv", "from,to\nX1.1,X2.1\n"); }),
              StartsWith("map.csv:1: the columns of a map are"));
}

TEST(ChannelMapTest, ChannelsBetweenThatHaveNoPinAreTestedToBeOpen) {
  const Wiring wiring =
      WiringOf(List("X1.1,X2.1\n"), ReadChannelMap("map.csv", "connector,pin,channel\nX1,1,3\nX2,1,6\n"));
  EXPECT_EQ(ChannelsText(wiring), "3 6 | 4 | 5");
  EXPECT_EQ(PinText(wiring.pins.at(4)), "4");
  EXPECT_TRUE(wiring.suspended.empty());
}

TEST(AssignedChannels, FollowConnectorsAndTheNumbersOfTheirPins) {
  const ChannelMap map = AssignChannels(List("X2.10,X1.B\nX2.2,X1.A\nX2.GND,X1.3\nX2.02,\n"), 5);
  EXPECT_EQ(ChannelMapText(map),
            "connector,pin,channel\nX2,2,5\nX2,02,6\nX2,10,7\nX2,GND,8\nX1,3,9\nX1,B,10\nX1,A,11\n");
}

TEST(AssignedChannels, AreReadBackFromTheirText) {
  const WiringDocument document = List("\"a,b.1\",\"\"\"x\"\".1\"\n#c.1,Tür.ß\n");
  const ChannelMap map = AssignChannels(document, 1);
  const ChannelMap back = ReadChannelMap("map.csv", ChannelMapText(map));
  ASSERT_EQ(back.size(), map.size());
  for (std::size_t i = 0; i < map.size(); ++i) {
    EXPECT_EQ(back[i].pin, map[i].pin);
    EXPECT_EQ(back[i].channel, map[i].channel);
  }
}

TEST(AssignedChannels, StayWithinTheTester) {
  EXPECT_THROW(AssignChannels(List("X1.1,X2.1\n"), 3072), MapError);
  EXPECT_THROW(AssignChannels(List("X1.1,X2.1\n"), 0), MapError);
  EXPECT_THROW(AssignChannels(List("X1.1,X2.1\n"), 2147483647), MapError);
  EXPECT_EQ(AssignChannels(List("X1.1,X2.1\n"), 3071).back().channel, 3072);
  std::string rows;
  for (int pin = 1; pin <= 2401; ++pin) rows += "X1." + std::to_string(pin) + ",\n";
  EXPECT_THROW(AssignChannels(List(rows), 1), MapError);
}

TEST(AssignedChannels, SayWhatIsToBeWired) {
  std::vector<std::string> lines;
  for (const AdapterLine& line : AdapterLines(AssignChannels(List("X1.1,X2.7\nX1.2,\nX1.4,\nX1.S,\n"), 1))) {
    lines.push_back(line.connector + ": " + line.text);
  }
  EXPECT_THAT(lines, ElementsAre("X1: 1-2, 4, S on channels 1-4", "X2: 7 on channel 5"));
}

TEST(Splices, JoinTheirWiresAndVanish) {
  const WiringDocument document =
      WithSplices(List("X1.1,S1\nX2.1,S1\nS1,S2\nS2,X3.1\nX1.2,X2.2\n"), {"S1", "S2"});
  EXPECT_EQ(NetsText(document), "X1.1 X2.1 X3.1 | X1.2 X2.2");
  EXPECT_EQ(document.splices, 2U);
  EXPECT_EQ(document.wires, 5U);
}

TEST(Splices, AreTheConnectorsThatTheMapDoesNotKnow) {
  const ChannelMap map = ReadChannelMap("map.csv", "connector,pin,channel\nX1,1,1\nX2,1,2\n");
  EXPECT_THAT(ConnectorsWithoutChannel(List("X1.1,S1\nX1.2,S9.3\nX2.1,14\n"), map), ElementsAre("S1", "S9"));
}

TEST(Splices, AreNotTheConnectorsThatTheMapListsWithoutAChannel) {
  const ChannelMap map = ReadChannelMap("map.csv", "connector,pin,channel\nX1,1,1\nX2,1,\n");
  EXPECT_THAT(ConnectorsWithoutChannel(List("X1.1,X2.1\nX1.1,S9\n"), map), ElementsAre("S9"));
  EXPECT_THAT(FaultsOf(List("X1.1,X2.1\n"), "connector,pin,channel\nX1,1,1\nX2,1,\n"),
              ElementsAre("list.csv:2:6: X2.1 is on no channel of map.csv"));
}

TEST(ChannelMapTest, RefusesLinesThatLackTheirChannelOrHaveAFieldTooMany) {
  const auto refusal = [](const std::string& lines) {
    return RefusalOf([&] { ReadChannelMap("map.csv", "connector,pin,channel\nX1,1,1\n" + lines); });
  };
  EXPECT_THAT(refusal("X2,1\n"), StartsWith("map.csv:3: this line has 2 fields"));
  EXPECT_THAT(refusal("[Scanner]\nRelais1=X2.1\n"), StartsWith("map.csv:3: this line has 1 field"));
  EXPECT_THAT(refusal("X2,1,2,3\n"), StartsWith("map.csv:3:8: this field is past the last column"));
}

TEST(MapOfTheList, IsItsColumnOfChannels) {
  const auto map = MapInList("list.csv", "net,connector,pin,channel\nN1,X1,1,7\nN1,,,8\n");
  ASSERT_TRUE(map);
  EXPECT_EQ(ChannelMapText(*map), "connector,pin,channel\nX1,1,7\n,8,8\n");
  EXPECT_FALSE(MapInList("list.csv", "net,connector,pin\nN1,X1,1\n"));
  EXPECT_TRUE(MapOfNumbers(List("1,14\n")));
  EXPECT_FALSE(MapOfNumbers(List("1,X1.1\n")));
  EXPECT_THROW(MapOfNumbers(List("1,99999999999\n")), MapError);
}

}  // namespace
}  // namespace kxbench::documents
