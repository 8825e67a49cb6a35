#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "bench/proof/Proof.h"
#include "tests/bench/proof/ProofFixture.h"

namespace kxbench::proof {
namespace {

Verdict Found() {
  Verdict verdict;
  verdict.found = verdict.namesChannels = true;
  verdict.naming = Naming::Exactly;
  verdict.seconds = 2;
  return verdict;
}

Verdict Escaped(EscapeReason reason) {
  Verdict verdict;
  verdict.escape = Escape{reason, {}, {}};
  verdict.seconds = 3;
  return verdict;
}

class ProofOfTwoShorts : public testing::Test {
 protected:
  ProofOfTwoShorts() {
    proof.file = "a \"b\".dat";
    proof.sha256 = std::string(64, '0');
    proof.complete = true;
    proof.totals = {{FaultClass::Short, 2}};
    proof.faults = {{testkit::Short(1, 2), Found()}, {testkit::Short(3, 4), Escaped(EscapeReason::Excluded)}};
  }
  Proof proof;
};

TEST_F(ProofOfTwoShorts, CountsByClass) {
  const ClassCount count = proof.Classes()[1];
  EXPECT_EQ(count.kind, FaultClass::Short);
  EXPECT_EQ(count.total, 2U);
  EXPECT_EQ(count.simulated, 2U);
  EXPECT_EQ(count.found, 1U);
  EXPECT_EQ(count.escaped, 1U);
  EXPECT_EQ(proof.RealSeconds(), 5);
}

TEST_F(ProofOfTwoShorts, HoldsOnlyWhenWhatEscapesIsAccepted) {
  EXPECT_FALSE(proof.Holds());
  proof.accepted = {EscapeReason::Suspended};
  EXPECT_FALSE(proof.Holds());
  proof.accepted = {EscapeReason::Excluded};
  EXPECT_TRUE(proof.Holds());
  proof.complete = false;
  EXPECT_FALSE(proof.Holds());
  proof.complete = true;
  proof.goodFindings = {"fehlende Verbindung"};
  EXPECT_FALSE(proof.Holds());
  proof.goodFindings.clear();
  proof.falseAlarms = {testkit::Voltage(1, 12)};
  EXPECT_FALSE(proof.Holds());
}

TEST_F(ProofOfTwoShorts, IsJsonForOtherPrograms) {
  const auto json = nlohmann::json::parse(ProofJson(proof));
  EXPECT_EQ(json["format"], "proof");
  EXPECT_EQ(json["version"], 1);
  EXPECT_EQ(json["complete"], true);
  EXPECT_EQ(json["expectation"]["file"], "a \"b\".dat");
  EXPECT_EQ(json["expectation"]["sha256"], std::string(64, '0'));
  EXPECT_EQ(json["classes"].size(), 7U) << "the tester's only when asked for";
  EXPECT_EQ(json["classes"][1]["class"], "short");
  EXPECT_EQ(json["classes"][1]["escaped"], 1);
  ASSERT_EQ(json["escapes"].size(), 1U);
  EXPECT_EQ(json["escapes"][0]["class"], "short");
  EXPECT_EQ(json["escapes"][0]["channels"], (std::vector<int>{3, 4}));
  EXPECT_EQ(json["escapes"][0]["reason"], "excluded");
  EXPECT_NE(json["escapes"][0]["remedy"], "");
}

TEST_F(ProofOfTwoShorts, IsALineAFaultInCsv) {
  proof.faults.push_back({testkit::Short(5, 6), std::nullopt});
  EXPECT_EQ(
      ProofCsv(proof),
      "class,channels,value,result,channels named,diagnosis,reason,remedy,limit\r\n"
      "short,1 2,0.1 Ohm,found,yes,exactly,,,\r\n"
      "short,3 4,0.1 Ohm,escaped,,,excluded,\"take the pair off the list of excluded connections, or test "
      "it with an expectation of its own\",\r\n"
      "short,5 6,0.1 Ohm,not simulated,,,,,\r\n");
}

}  // namespace
}  // namespace kxbench::proof
