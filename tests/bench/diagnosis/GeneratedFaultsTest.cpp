#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <numeric>

#include "tests/bench/diagnosis/GeneratedFaults.h"

namespace kxbench::diagnosis {
namespace {

using testkit::MadeFault;
using testkit::Named;

#if defined(SHORTTEST_SANITIZED)
constexpr std::size_t Thoroughness = 20;  // sanitizers take their time; the same kinds, fewer of each
#else
constexpr std::size_t Thoroughness = 1;
#endif

Diagnosis DiagnosisOf(const Nets& expected, const Nets& measured) {
  Observation observation;
  observation.expected = expected;
  observation.measured = measured;
  return Diagnose(observation);
}

class HarnessWithAFault : public testing::TestWithParam<std::uint32_t> {
 protected:
  /// One fault must be named, alone and first; what looks the same may stand beside it.
  void ExpectNamed(const MadeFault& made, const Nets& measured) {
    ++tried_;
    const Diagnosis diagnosis = DiagnosisOf(harness_, measured);
    if (testkit::HowNamed(diagnosis, {made}) == Named::First && testkit::AllFit(diagnosis)) return;
    ADD_FAILURE() << "kind " << static_cast<int>(made.kind) << " of " << testkit::Text(made.channels.front())
                  << "\nexpected " << testkit::Text(harness_) << "\nmeasured " << testkit::Text(measured);
  }

  void OpenEveryContact() {
    for (const Net& net : harness_) {
      if (net.size() < 2) continue;
      for (const Channel contact : net) {
        Nets measured = harness_;
        const MadeFault made = testkit::MakeOpen(harness_, contact, measured);
        ExpectNamed(made, measured);
      }
    }
  }

  void ShortEveryPairOfNets() {
    for (std::size_t a = 0; a < harness_.size(); ++a) {
      for (std::size_t b = a + 1; b < harness_.size(); ++b) {
        Nets measured = harness_;
        const MadeFault made =
            testkit::MakeShort(harness_, harness_[a].front(), harness_[b].back(), measured);
        ExpectNamed(made, measured);
      }
    }
  }

  /// Swaps every pair of wires, and puts every wire on every unused pin.
  void ExchangeEveryPairOfContacts() {
    for (std::size_t a = 0; a < harness_.size(); ++a) {
      for (std::size_t b = a + 1; b < harness_.size(); ++b) {
        if (harness_[a].size() == 1 && harness_[b].size() == 1) continue;
        for (const Channel x : harness_[a]) {
          for (const Channel y : harness_[b]) {
            Nets measured = harness_;
            const MadeFault made = testkit::MakeExchange(harness_, x, y, measured);
            ExpectNamed(made, measured);
          }
        }
      }
    }
  }

  Nets harness_;
  std::size_t tried_ = 0;
};

TEST_P(HarnessWithAFault, NamesIt) {
  std::mt19937 random(GetParam());
  constexpr std::array<Channel, 12> sizes = {20, 24, 30, 36, 48, 60, 72, 96, 120, 144, 192, 240};
  const std::size_t wanted = 25'000 / Thoroughness;
  for (std::size_t i = 0; tried_ < wanted && !HasFailure(); ++i) {
    // The biggest has tens of thousands of faults of its own, so it comes once.
    harness_ =
        testkit::DrawHarness(random, sizes[i == 0 && GetParam() == 1 && Thoroughness == 1 ? 11 : i % 9]);
    OpenEveryContact();
    ShortEveryPairOfNets();
    ExchangeEveryPairOfContacts();
  }
  EXPECT_GE(tried_, wanted);
}

// Four parts, so that they run at the same time: 100,000 faults in all.
INSTANTIATE_TEST_SUITE_P(Parts, HarnessWithAFault, testing::Values(1, 2, 3, 4));

struct Shares {
  std::array<std::size_t, 4> named{};
  std::size_t Of(Named how) const { return named[static_cast<std::size_t>(how)]; }
  std::size_t All() const { return std::accumulate(named.begin(), named.end(), std::size_t{0}); }
};

Shares SharesOf(std::size_t faults, std::size_t devices) {
  std::mt19937 random(static_cast<std::uint32_t>(faults));
  Shares shares;
  while (shares.All() < devices) {
    const Nets harness = testkit::DrawHarness(random, static_cast<Channel>(20 + testkit::Below(random, 61)));
    Nets measured = harness;
    std::vector<MadeFault> made;
    while (made.size() < faults) {
      for (MadeFault& fault : testkit::MakeAny(random, harness, measured)) made.push_back(fault);
    }
    const Diagnosis diagnosis = DiagnosisOf(harness, measured);
    EXPECT_TRUE(testkit::AllFit(diagnosis)) << testkit::Text(harness) << "\n" << testkit::Text(measured);
    ++shares.named[static_cast<std::size_t>(testkit::HowNamed(diagnosis, made))];
  }
  return shares;
}

TEST(HarnessWithTwoFaults, NamesMostAndNeverOnesThatDoNotFit) {
  // A share of fewer devices would be no share.
  const std::size_t devices = 10'000 / std::min<std::size_t>(Thoroughness, 4);
  const Shares shares = SharesOf(2, devices);
  RecordProperty("first", std::to_string(shares.Of(Named::First)));
  EXPECT_GE(shares.Of(Named::First) * 100, devices * 86)
      << "alternative " << shares.Of(Named::Alternative) << ", compound " << shares.Of(Named::Compound)
      << ", otherwise " << shares.Of(Named::Otherwise);
}

TEST(HarnessWithThreeFaults, NeverNamesOnesThatDoNotFit) {
  const std::size_t devices = 5'000 / Thoroughness;
  EXPECT_EQ(SharesOf(3, devices).All(), devices);
}

/// Two rows and columns: every net is open everywhere and touches all others.
Nets Columns(Channel side) {
  Nets nets(static_cast<std::size_t>(side));
  for (Channel i = 0; i < side * side; ++i) nets[static_cast<std::size_t>(i % side)].push_back(i + 1);
  return nets;
}

Nets Rows(Channel side) {
  Nets nets(static_cast<std::size_t>(side));
  for (Channel i = 0; i < side * side; ++i) nets[static_cast<std::size_t>(i / side)].push_back(i + 1);
  return nets;
}

TEST(RuinedHarness, OfWhichEverythingIsOpenAndShortedIsCompound) {
  const Diagnosis diagnosis = DiagnosisOf(Rows(15), Columns(15));
  ASSERT_EQ(diagnosis.findings.size(), 1U);
  ASSERT_EQ(diagnosis.findings[0].explanations.size(), 1U);
  const Fault& fault = diagnosis.findings[0].explanations[0].at(0);
  EXPECT_EQ(fault.kind, FaultKind::Compound);
  EXPECT_EQ(fault.opens, 15U * 14U);
  EXPECT_EQ(fault.shorts, 15U * 14U);
  EXPECT_EQ(fault.channels.size(), 225U);
}

}  // namespace
}  // namespace kxbench::diagnosis
