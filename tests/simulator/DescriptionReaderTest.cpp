#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "simulator/DescriptionLimits.h"
#include "simulator/DescriptionReader.h"
#include "tests/simulator/Bench.h"
#include "text/Paths.h"

namespace simulator {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

DeviceDescription Parse(std::string_view text) { return ParseDeviceDescription(text, "device"); }

/// "a-b:ohm" for every resistor, points as channel numbers (inner nodes from 241).
std::vector<std::string> Resistors(const DeviceDescription& description) {
  std::vector<std::string> texts;
  for (const Resistor& resistor : description.resistors) {
    texts.push_back(std::to_string(resistor.a + 1) + "-" + std::to_string(resistor.b + 1) + ":" +
                    std::to_string(resistor.ohm).substr(0, 4));
  }
  return texts;
}

int FittedCards(const DeviceDescription& description) {
  return static_cast<int>(std::count(description.fittedCards.begin(), description.fittedCards.end(), true));
}

TEST(DeviceDescription, EmptyTextIsOneCardWithNothingConnected) {
  const DeviceDescription description = Parse("");
  EXPECT_EQ(FittedCards(description), 1);
  EXPECT_THAT(description.resistors, IsEmpty());
  EXPECT_EQ(description.generation, 2);
  EXPECT_EQ(description.leakageOhm, Infinity);
  EXPECT_FALSE(description.missingFirstCardIsError);
}

TEST(DeviceDescription, LineEndsAndByteOrderMarkDoNotMatter) {
  const auto expected = ElementsAre("1-2:0.10", "3-4:0.20");
  EXPECT_THAT(Resistors(Parse("wire 1 2\nwire 3 4 0.2")), expected);
  EXPECT_THAT(Resistors(Parse("wire 1 2\r\nwire 3 4 0.2\r\n")), expected);
  EXPECT_THAT(Resistors(Parse("\xEF\xBB\xBFwire 1 2\n\nwire 3 4 0.2\n")), expected);
}

TEST(DeviceDescription, CardsReachToTheHighestChannelByDefault) {
  EXPECT_EQ(FittedCards(Parse("wire 1 48")), 1);
  EXPECT_EQ(FittedCards(Parse("wire 1 49")), 2);
  EXPECT_EQ(FittedCards(Parse("wire 1 240")), 5);
  EXPECT_EQ(FittedCards(Parse("cards 3\nwire 1 2")), 3);
  EXPECT_EQ(FittedCards(Parse("cards 0")), 0);
}

TEST(DeviceDescription, MissingCardLeavesAGap) {
  EXPECT_THAT(Parse("cards 3\nmissing-card 2").fittedCards, ElementsAre(true, false, true, false, false));
  EXPECT_THAT(Parse("missing-card 3").fittedCards, ElementsAre(true, true, false, false, false));
}

TEST(DeviceDescription, SettingsOfTheTester) {
  const DeviceDescription description = Parse(
      "generation 1\n"
      "terminator 2 49\n"
      "missing-first-card error\n"
      "contact-resistance 20m\n"
      "resistance-noise 10mOhm 0.001\n"
      "voltage-noise 5mV 0.01\n"
      "seed 42\n"
      "drift -0.5 3\n"
      "leakage 500M\n");
  EXPECT_EQ(description.generation, 1);
  ASSERT_TRUE(description.terminator);
  EXPECT_EQ(description.terminator->card, 1);
  EXPECT_EQ(description.terminator->relay, 48);
  EXPECT_TRUE(description.missingFirstCardIsError);
  EXPECT_EQ(description.contactOhm, 0.02);
  EXPECT_EQ(description.resistanceNoise.absolute, 0.01);
  EXPECT_EQ(description.resistanceNoise.relative, 0.001);
  EXPECT_EQ(description.voltageNoise.absolute, 0.005);
  EXPECT_EQ(description.voltageNoise.relative, 0.01);
  EXPECT_EQ(description.seed, 42U);
  EXPECT_EQ(description.drift.fraction, -0.5);
  EXPECT_EQ(description.drift.readings, 3.0);
  EXPECT_EQ(description.leakageOhm, 500e6);
}

TEST(DeviceDescription, FaultsOfTheTester) {
  const DeviceDescription description = Parse(
      "stuck-open 3 0\n"
      "stuck-closed 49 1\n"
      "fail-call 7 \"Karte 1 ausgefallen: Überlast\"\n"
      "fail-from 9 \"unplugged\"\n");
  ASSERT_EQ(description.stuckRelays.size(), 2U);
  EXPECT_FALSE(description.stuckRelays[0].closed);
  EXPECT_EQ(description.stuckRelays[0].relay, 2);
  EXPECT_TRUE(description.stuckRelays[1].closed);
  EXPECT_EQ(description.stuckRelays[1].card, 1);
  EXPECT_EQ(description.stuckRelays[1].line, 1);
  EXPECT_EQ(description.stuckRelays[1].relay, 0);
  ASSERT_EQ(description.callFaults.size(), 2U);
  EXPECT_EQ(description.callFaults[0].last, 7);
  EXPECT_EQ(description.callFaults[0].text, "Karte 1 ausgefallen: Überlast");
  EXPECT_EQ(description.callFaults[1].first, 9);
  EXPECT_GT(description.callFaults[1].last, 1'000'000);
}

TEST(DeviceDescription, NamesStandForChannelsAndInnerNodes) {
  const DeviceDescription description = Parse(
      "channel X1.1 1\n"
      "channel Masse/Rück 20\n"
      "node splice PS_ON#\n"
      "wire X1.1 splice\n"
      "wire splice Masse/Rück\n"
      "wire PS_ON# 5\n");
  EXPECT_THAT(Resistors(description), ElementsAre("1-241:0.10", "241-20:0.10", "242-5:0.10"));
  EXPECT_EQ(description.innerNodes, 2);
}

TEST(DeviceDescription, NetMeetsInASplice) {
  EXPECT_THAT(Resistors(Parse("net 1 5 9")), ElementsAre("1-241:0.05", "5-241:0.05", "9-241:0.05"));
  EXPECT_THAT(Resistors(Parse("net 1 5 each 1")), ElementsAre("1-241:1.00", "5-241:1.00"));
}

TEST(DeviceDescription, Capacitances) {
  const DeviceDescription description = Parse(
      "capacitor 13 12 24 tau 0.5\n"
      "charge 3 -5V tau never series 10\n");
  ASSERT_EQ(description.capacitors.size(), 2U);
  const Capacitor& capacitor = description.capacitors[0];
  EXPECT_EQ(capacitor.a, 12);
  EXPECT_EQ(capacitor.b, 11);
  EXPECT_EQ(capacitor.volts, 24.0);
  EXPECT_EQ(capacitor.tauSeconds, 0.5);
  EXPECT_EQ(capacitor.seriesOhm, 0.1);
  const Capacitor& charge = description.capacitors[1];
  EXPECT_EQ(charge.a, 2);
  EXPECT_EQ(charge.b, GroundPoint);
  EXPECT_EQ(charge.volts, -5.0);
  EXPECT_EQ(charge.tauSeconds, Infinity);
  EXPECT_EQ(charge.seriesOhm, 10.0);
}

TEST(DeviceDescription, CutRemovesWhatRunsBetweenTwoPoints) {
  EXPECT_THAT(Resistors(Parse("wire 1 2\nwire 2 1 5\nwire 1 3\ncut 1 2")), ElementsAre("1-3:0.10"));
}

TEST(DeviceDescription, DisconnectTakesAPointOffEverything) {
  const DeviceDescription description = Parse("net 1 2 3\nwire 1 9\ncapacitor 1 4 5 tau 1\ndisconnect 1");
  EXPECT_THAT(Resistors(description), ElementsAre("2-241:0.05", "3-241:0.05"));
  EXPECT_THAT(description.capacitors, IsEmpty());
}

TEST(DeviceDescription, SwapExchangesTwoPoints) {
  const DeviceDescription description = Parse("wire 1 11\nwire 2 12\nwire 1 2 7\ncharge 2 5 tau 1\nswap 1 2");
  EXPECT_THAT(Resistors(description), ElementsAre("2-11:0.10", "1-12:0.10", "2-1:7.00"));
  EXPECT_EQ(description.capacitors[0].a, 0);
}

TEST(DeviceDescription, JointStandsBeforeEverythingAtThePoint) {
  EXPECT_THAT(Resistors(Parse("wire 1 2\nwire 3 1\njoint 1 25")),
              ElementsAre("241-2:0.10", "3-241:0.10", "1-241:25.0"));
}

struct MistakeRow {
  const char* name;
  const char* text;
  const char* message;
};

class MistakeTest : public testing::TestWithParam<MistakeRow> {};

TEST_P(MistakeTest, IsNamedWithItsPlace) {
  try {
    Parse(GetParam().text);
    FAIL() << "accepted";
  } catch (const DescriptionError& error) {
    EXPECT_STREQ(error.what(), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Statements, MistakeTest,
    testing::Values(
        MistakeRow{"UnknownKeyword", "# a\nwire 1 2\nwier 3 4\n", "device:3:1: unknown keyword 'wier'"},
        MistakeRow{"QuotedKeyword", "\"wire\" 1 2", "device:1:1: unknown keyword 'wire'"},
        MistakeRow{"TooFewWords", "wire 1", "device:1:1: expected: wire POINT POINT [OHM]"},
        MistakeRow{"TooManyWords", "wire 1 2 3 4", "device:1:12: expected: wire POINT POINT [OHM]"},
        MistakeRow{"BlankBeforeUnit", "resistor 1 2 47 kOhm",
                   "device:1:17: expected: resistor POINT POINT OHM"},
        MistakeRow{"SettingTwice", "cards 1\ncards 2", "device:2:1: 'cards' is given twice in this file"},
        MistakeRow{"NotUtf8",
                   "wire 1 2\n# R\xFC"
                   "ck",
                   "device:2:1: the line is not UTF-8"},
        MistakeRow{"ChannelZero", "wire 0 1", "device:1:6: '0' is no channel number (1 to 240)"},
        MistakeRow{"ChannelTooHigh", "wire 1 241", "device:1:8: '241' is no channel number (1 to 240)"},
        MistakeRow{"ChannelWithLetters", "wire 1 2a", "device:1:8: '2a' is no channel number (1 to 240)"},
        MistakeRow{"UnknownPoint", "wire 1 X2",
                   "device:1:8: there is no point 'X2' (declare it with 'channel' or 'node' first)"},
        MistakeRow{"NameTaken", "node a\nchannel a 3", "device:2:9: the name 'a' is already taken"},
        MistakeRow{"ReservedName", "node tau", "device:1:6: 'tau' cannot be the name of a point"},
        MistakeRow{"NumberAsName", "node 7up", "device:1:6: '7up' cannot be the name of a point"},
        MistakeRow{"WireToItself", "channel a 3\nwire a 3", "device:2:8: 'a' and '3' are one point"},
        MistakeRow{
            "DecimalComma", "wire 1 2 0,1",
            "device:1:10: '0,1' is no resistance from 1 mOhm to 1 TOhm (for instance 0.1, 2.2k, 10MOhm)"},
        MistakeRow{
            "NegativeResistance", "wire 1 2 -1",
            "device:1:10: '-1' is no resistance from 1 mOhm to 1 TOhm (for instance 0.1, 2.2k, 10MOhm)"},
        MistakeRow{"PointTwiceInNet", "net 1 2 1", "device:1:9: '1' stands in this net twice"},
        MistakeRow{"NetOfOne", "net 1 each 0.1", "device:1:1: expected: net POINT POINT... [each OHM]"},
        MistakeRow{"EachWithoutValue", "net 1 2 each", "device:1:1: expected: net POINT POINT... [each OHM]"},
        MistakeRow{"MissingTau", "capacitor 1 2 24 0.5 x", "device:1:18: expected 'tau' instead of '0.5'"},
        MistakeRow{"TimeConstantZero", "charge 1 24 tau 0",
                   "device:1:17: '0' is no time constant (for instance 0.5, 500ms, or never)"},
        MistakeRow{"VoltageTooHigh", "charge 1 2kV tau 1",
                   "device:1:10: '2kV' is no voltage from -1000 V to 1000 V (for instance 24, -3.3V, 500mV)"},
        MistakeRow{"SeriesWithoutValue", "charge 1 24 tau 1 series",
                   "device:1:19: a resistance must follow 'series'"},
        MistakeRow{"TooManyCards", "cards 6", "device:1:7: '6' is no number of relay cards (0 to 5)"},
        MistakeRow{"ChannelBeyondTheCards", "wire 1 49\ncards 1",
                   "device:1:8: channel 49 needs relay card 2, but 'cards' says 1"},
        MistakeRow{"MissingCardBeyondTheCards", "cards 2\nmissing-card 3", "device:2:14: 'cards' says 2"},
        MistakeRow{"FirstCardLoud", "missing-first-card loud",
                   "device:1:20: expected 'silent' instead of 'loud'"},
        MistakeRow{"LineTwo", "stuck-open 1 2", "device:1:14: '2' is no line (0 or 1)"},
        MistakeRow{"StuckInnerNode", "node n\nstuck-open n 1",
                   "device:2:12: 'n' is an inner node, not a channel"},
        MistakeRow{"StuckBothWays", "stuck-open 1 0\nstuck-closed 1 0",
                   "device:2:14: this relay is already stuck"},
        MistakeRow{"FaultWithoutText", "fail-call 3 text", "device:1:13: expected a text in double quotes"},
        MistakeRow{"FaultAtCallZero", "fail-call 0 \"text\"",
                   "device:1:11: '0' is no number of a driver call (from 1)"},
        MistakeRow{"DriftBelowNothing", "drift -1.5 3", "device:1:7: '-1.5' is no fraction from -1 to 10"},
        MistakeRow{
            "NothingToCut", "net 1 2\ncut 1 2",
            "device:2:1: nothing runs straight from '1' to '2' ('disconnect' takes a point off its net)"},
        MistakeRow{"NothingToDisconnect", "wire 1 2\ndisconnect 3",
                   "device:2:12: nothing is connected to '3'"},
        MistakeRow{"NothingToJoin", "joint 3 25", "device:1:7: nothing is connected to '3'"},
        MistakeRow{"SwapWithItself", "swap 3 3", "device:1:8: '3' and '3' are one point"},
        MistakeRow{"IncludeWithoutFile", "include", "device:1:1: expected: include FILE"},
        MistakeRow{"IncludedFileMissing", "include no-such.device",
                   "device:1:9: 'no-such.device' cannot be read: there is no such file"}),
    RowName<MistakeRow>);

/// Descriptions in files of a folder that lasts as long as the test.
class DescriptionFiles : public testing::Test {
 protected:
  DescriptionFiles()
      : folder_(std::filesystem::path(testing::TempDir()) /
                (std::string("simulator-") + testing::UnitTest::GetInstance()->current_test_info()->name())) {
    std::filesystem::remove_all(folder_);
    std::filesystem::create_directories(folder_ / "parts");
  }
  ~DescriptionFiles() override {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  void Put(const std::string& name, const std::string& text) {
    std::ofstream(folder_ / shorttest::PathFromUtf8(name), std::ios::binary) << text;
  }

  DeviceDescription Read(const std::string& name) {
    return ReadDeviceDescription(folder_ / shorttest::PathFromUtf8(name));
  }

  std::string MistakeIn(const std::string& name) {
    try {
      Read(name);
      return {};
    } catch (const DescriptionError& error) {
      return error.what();
    }
  }

  std::filesystem::path folder_;
};

TEST_F(DescriptionFiles, AreReadByUtf8Name) {
  Put("Gerät-€.device", "wire 1 2\n");
  EXPECT_THAT(Resistors(Read("Gerät-€.device")), ElementsAre("1-2:0.10"));
}

TEST_F(DescriptionFiles, IncludedNamesAreRelativeToTheIncludingFile) {
  Put("parts/inner.device", "wire 1 2\n");
  Put("parts/good.device", "include inner.device\nwire 3 4\n");
  Put("bad.device", "include \"parts/good.device\"\ncut 1 2\n");
  EXPECT_THAT(Resistors(Read("bad.device")), ElementsAre("3-4:0.10"));
}

TEST_F(DescriptionFiles, IncludingFileMayGiveASettingAgain) {
  Put("good.device", "cards 1\ngeneration 1\n");
  Put("bad.device", "include good.device\ncards 2\n");
  EXPECT_EQ(FittedCards(Read("bad.device")), 2);
  EXPECT_EQ(Read("bad.device").generation, 1);
}

TEST_F(DescriptionFiles, MistakeInAnIncludedFileNamesThatFile) {
  Put("parts/good.device", "wire 1 2\nwire 1\n");
  Put("bad.device", "include parts/good.device\n");
  EXPECT_THAT(MistakeIn("bad.device"), HasSubstr("good.device:2:1: expected: wire POINT POINT [OHM]"));
}

TEST_F(DescriptionFiles, FileThatIncludesItselfIsRefused) {
  Put("self.device", "include self.device\n");
  EXPECT_THAT(MistakeIn("self.device"),
              EndsWith("self.device:1:1: files include each other more than 8 deep"));
}

TEST_F(DescriptionFiles, MissingFileIsNamed) {
  EXPECT_THAT(MistakeIn("none.device"), EndsWith("none.device: cannot be read: there is no such file"));
}

TEST_F(DescriptionFiles, FolderIsNoFile) {
  EXPECT_THAT(MistakeIn("parts"), EndsWith("parts: cannot be read: it is a directory"));
}

TEST_F(DescriptionFiles, HugeFileIsRefused) {
  Put("huge.device", std::string(5U << 20U, '\n'));
  EXPECT_THAT(MistakeIn("huge.device"), EndsWith("huge.device: cannot be read: it is too large"));
}

// ---- bounds: whatever is within them loads in seconds, and one step past them is a mistake that is named

std::string Repeated(int count, const std::string& text) {
  std::string repeated;
  for (int i = 0; i < count; ++i) repeated += text;
  return repeated;
}

std::string Mistake(const std::string& text) {
  try {
    Parse(text);
    return {};
  } catch (const DescriptionError& error) {
    return error.what();
  }
}

std::string Nodes(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += "node n" + std::to_string(i) + "\n";
  return text;
}

TEST(DescriptionBounds, Statements) {
  // Comments and empty lines are none.
  EXPECT_THAT(Mistake("# c\n\n" + Repeated(3, "wire 1 2\n")), IsEmpty());
  EXPECT_EQ(Mistake("# c\n\n" + Repeated(MaxStatements, "wire 1 2\n") + "wire 1 2\n"),
            "device:1000003:1: more than 1000000 statements");
}

TEST(DescriptionBounds, InnerNodes) {
  EXPECT_THAT(Mistake(Nodes(MaxInnerNodes)), IsEmpty());
  const std::string tooMany =
      "device:561:1: too many points: there may be 560 inner nodes, those of nets and joints included";
  EXPECT_EQ(Mistake(Nodes(MaxInnerNodes) + "net 1 2"), tooMany);
  EXPECT_EQ(Mistake("wire 1 2\n" + Nodes(MaxInnerNodes - 1) + "joint 1 1"), "");
  EXPECT_THAT(Mistake(Nodes(MaxInnerNodes) + "node more"), HasSubstr("device:561:6: too many points"));
  EXPECT_THAT(Mistake("wire 1 2\n" + Nodes(MaxInnerNodes) + "joint 1 1"),
              HasSubstr("device:562:7: too many points"));
}

TEST(DescriptionBounds, WordsOfALine) {
  EXPECT_EQ(Mistake("net" + Repeated(2000, " 1")), "device:1:4003: more than 2000 words in one line");
  EXPECT_THAT(Mistake("net" + Repeated(1999, " 1")), HasSubstr("'1' stands in this net twice"));
  // A line of megabytes is told of as fast.
  EXPECT_EQ(Mistake("net" + Repeated(1'300'000, " 1")), "device:1:4003: more than 2000 words in one line");
}

TEST(DescriptionBounds, ChangesToManyElements) {
  const std::string wires = Repeated(10'000, "wire 1 2\n");
  EXPECT_THAT(Mistake(wires + Repeated(2000, "swap 3 4\n")), IsEmpty());
  EXPECT_EQ(Mistake(wires + Repeated(2001, "swap 3 4\n")),
            "device:12001:1: too many changes to so many wires and capacitors");
  for (const std::string change : {"cut 3 4", "disconnect 3", "joint 3 1"}) {
    EXPECT_THAT(Mistake(wires + Repeated(2000, "swap 3 4\n") + "wire 3 4\n" + change),
                HasSubstr("too many changes"))
        << change;
  }
}

// Files that include each other many times over: exponential, were it not for a bound.
TEST_F(DescriptionFiles, ManyIncludesAreRefused) {
  for (int depth = 0; depth < 8; ++depth) {
    Put("d" + std::to_string(depth) + ".device",
        depth == 7 ? "wire 1 2\n" : Repeated(20, "include d" + std::to_string(depth + 1) + ".device\n"));
  }
  EXPECT_THAT(MistakeIn("d0.device"), EndsWith(": more than 1000 files are included"));
}

TEST_F(DescriptionFiles, MuchTextIsRefusedThoughItSaysNothing) {
  Put("blank.device", std::string(4U << 20U, '\n'));
  Put("bad.device", Repeated(9, "include blank.device\n"));
  EXPECT_THAT(MistakeIn("bad.device"),
              EndsWith("bad.device:9:1: the included files hold more than 33554432 bytes"));
}

TEST_F(DescriptionFiles, ADeviceThatNeverEndsIsTooLarge) {
#ifndef _WIN32
  Put("endless.device", "include /dev/zero\n");
  EXPECT_THAT(MistakeIn("endless.device"),
              EndsWith("endless.device:1:9: '/dev/zero' cannot be read: it is too large"));
#endif
}

}  // namespace
}  // namespace simulator
