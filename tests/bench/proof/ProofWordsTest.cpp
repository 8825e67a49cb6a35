#include <gtest/gtest.h>

#include "bench/proof/ProofFault.h"
#include "bench/proof/Verdict.h"
#include "tests/bench/proof/ProofFixture.h"

namespace kxbench::proof {
namespace {

TEST(FaultWords, AreReadBackExactly) {
  TShortTestData harness = testkit::Harness(5, {{1, 3}, {2, 4}});
  PlanOptions options;
  options.testerFaults = true;
  FaultPlan plan = PlanFaults(harness, options);
  plan.faults.insert(plan.faults.end(), plan.mustPass.begin(), plan.mustPass.end());
  for (const ProofFault& fault : plan.faults) EXPECT_EQ(FaultFromWords(FaultWords(fault)), fault);
}

TEST(FaultWords, OfAnotherKindAreNone) {
  for (const char* words : {"", "open", "shut 0 0 stays 0 open 1", "open x 0 stays 0 open 1",
                            "open 0 0 soon 0 open 1", "open 0 0 stays 0 open 1x"}) {
    EXPECT_EQ(FaultFromWords(words), std::nullopt) << words;
  }
}

TEST(VerdictWords, AreReadBackExactly) {
  Verdict verdict;
  verdict.found = true;
  verdict.namesChannels = true;
  verdict.naming = Naming::AmongEquals;
  verdict.seconds = 0.087;
  const auto found = VerdictFromWords(VerdictWords(verdict));
  ASSERT_TRUE(found);
  EXPECT_TRUE(found->found && found->namesChannels);
  EXPECT_EQ(found->naming, Naming::AmongEquals);
  EXPECT_EQ(found->seconds, 0.087);
  EXPECT_EQ(found->escape, std::nullopt);

  verdict.found = false;
  for (const EscapeReason reason : AllReasons) {
    verdict.escape = Escape{reason, 1.25, NegativeLimit};
    EXPECT_EQ(VerdictFromWords(VerdictWords(verdict))->escape, verdict.escape);
  }
}

TEST(VerdictWords, OfAnotherKindAreNone) {
  for (const char* words : {"", "1 1", "1 1 9 0 - -1 -", "0 0 0 0 guessed -1 -"}) {
    EXPECT_EQ(VerdictFromWords(words), std::nullopt) << words;
  }
}

}  // namespace
}  // namespace kxbench::proof
