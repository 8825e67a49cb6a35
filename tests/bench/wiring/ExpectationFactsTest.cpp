#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <system_error>

#include "bench/wiring/ExpectationFacts.h"
#include "tests/bench/RowName.h"
#include "tests/bench/program/TemporaryFolder.h"

namespace kxbench::wiring {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// A file of four channels with every key, and the cells of the test.
std::string FourChannels(const std::string& cells) {
  return "[BEREICH]\r\nSTART=1\r\nENDE=4\r\nWIDERSTAND=10\r\nWIDERSTAND2=2000\r\n"
         "[OPTION]\r\nU_KONTROLLE=1\r\nLASTRELAISKARTE=2\r\nLASTRELAIS=3\r\nTIMEOUT=1234\r\nMAX ERROR=7\r\n"
         "[DATEN]\r\n" +
         cells;
}

class Facts : public testing::Test {
 protected:
  ExpectationFacts Of(const std::string& content) const { return FactsOf(folder_.Write("a.dat", content)); }

  TemporaryFolder folder_;
};

TEST_F(Facts, OfAWholeFile) {
  const ExpectationFacts facts = Of(FourChannels("8888\r\n2888\r\n1188\r\n1138\r\n"));
  EXPECT_EQ(facts.refusal, "");
  EXPECT_EQ(facts.damage, "");
  EXPECT_THAT(facts.doubts, IsEmpty());
  EXPECT_EQ(facts.firstChannel, 1);
  EXPECT_EQ(facts.lastChannel, 4);
  EXPECT_THAT(facts.nets.nets, ElementsAre(ElementsAre(1, 2)));
  EXPECT_THAT(facts.nets.unconnected, ElementsAre(3, 4));
  EXPECT_THAT(facts.excludedPairs, ElementsAre(Pair(3, 4)));
  EXPECT_EQ(facts.pairs, 6);
  EXPECT_EQ(facts.connectedPairs, 1);
  EXPECT_EQ(facts.lowerThreshold_ohm, 10);
  EXPECT_EQ(facts.upperThreshold_ohm, 2000);
  EXPECT_EQ(facts.voltageControl, 1);
  EXPECT_EQ(facts.dischargeWait_ms, 1234);
  EXPECT_EQ(facts.terminationCard, 2);
  EXPECT_EQ(facts.terminationRelay, 3);
  EXPECT_EQ(facts.mostErrors, 7);
}

TEST_F(Facts, OfAFileThatIsRefusedHoldNothing) {
  const ExpectationFacts facts = Of("");
  EXPECT_EQ(facts.refusal, "no expectation: there is no START");
  EXPECT_EQ(facts.damage, facts.refusal);
  EXPECT_THAT(facts.doubts, IsEmpty());
  EXPECT_EQ(facts.pairs, 0);
}

TEST_F(Facts, OfAFileThatIsNotThere) {
  EXPECT_THROW(FactsOf((folder_.Path() / "none.dat").string()), std::system_error);
}

struct DamageRow {
  const char* name;
  std::string content;
  const char* damage;
};

class DamagedFile : public Facts, public testing::WithParamInterface<DamageRow> {};

TEST_P(DamagedFile, IsNotBuiltUpon) {
  const ExpectationFacts facts = Of(GetParam().content);
  EXPECT_EQ(facts.refusal, "");
  EXPECT_EQ(facts.damage, GetParam().damage);
}

INSTANTIATE_TEST_SUITE_P(
    Files, DamagedFile,
    testing::Values(
        DamageRow{"CutOff", FourChannels("8888\r\n2888\r\n11"), "the data block has 2 whole lines of 4"},
        DamageRow{"LineTooLong", FourChannels("8888\r\n2888\r\n11888\r\n1138\r\n"),
                  "the data block has 3 whole lines of 4"},
        DamageRow{"StateOfAChannelBesideThePairs", FourChannels("8888\r\n2888\r\n1988\r\n1138\r\n"),
                  "1 cell is no state"},
        DamageRow{"SuspendedAlone", FourChannels("8888\r\n2888\r\n1198\r\n1118\r\n"),
                  "channel 3 is suspended, but not its pairs"},
        DamageRow{"SuspendedAndConnected", FourChannels("9888\r\n2888\r\n4188\r\n4118\r\n"),
                  "channel 1 is suspended, but not its pairs"},
        DamageRow{"KeyLost", "[BEREICH]\nSTART=1\nENDE=2\n[DATEN]\n88\n28\n", "there is no WIDERSTAND"}),
    RowName<DamageRow>);

TEST_F(Facts, PairsOfASuspendedChannelWithChannelsThatCameLaterAreNoDamage) {
  EXPECT_EQ(Of(FourChannels("9888\r\n4888\r\n1188\r\n0118\r\n")).damage, "");
}

TEST_F(Facts, ExcludedPairsOfASuspendedChannelAreNoDamage) {
  EXPECT_EQ(Of(FourChannels("9888\r\n4888\r\n4188\r\n3118\r\n")).damage, "");
}

}  // namespace
}  // namespace kxbench::wiring
