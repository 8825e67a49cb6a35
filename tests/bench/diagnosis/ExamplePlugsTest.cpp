#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "bench/diagnosis/Plugs.h"
#include "bench/program/check/DeviceDiagnosis.h"
#include "tests/bench/diagnosis/GeneratedFaults.h"
#include "tests/support/Sweep.h"

namespace kxbench {
namespace {

/// Every plug of an example exchanged with every other, reversed, and shifted by every number of contacts.
class PlugsOfAnExample : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    const std::filesystem::path folder = std::filesystem::path(EXAMPLES_FOLDER) / GetParam();
    const std::string harness = (folder / GetParam()).string();
    observation_ = ExpectedOnly(wiring::FactsOf(harness + ".dat"), wiring::ChannelNames(harness + ".ini"));
    observation_.expected = diagnosis::Ordered(observation_.expected);
  }

  std::vector<diagnosis::Fault> AllPlugFaults() const {
    std::vector<diagnosis::Fault> faults;
    const std::vector<diagnosis::Plug> plugs = diagnosis::PlugsOf(observation_.contacts);
    for (std::size_t i = 0; i < plugs.size(); ++i) {
      for (std::size_t j = i + 1; j < plugs.size(); ++j) {
        faults.push_back(diagnosis::ExchangedPlugs(plugs[i], plugs[j]));
      }
      for (diagnosis::Fault& fault : diagnosis::WrongPlugs(plugs[i])) faults.push_back(std::move(fault));
    }
    return faults;
  }

  static bool IsAmong(const diagnosis::Fault& fault, const diagnosis::Finding& finding) {
    return std::any_of(finding.explanations.begin(), finding.explanations.end(),
                       [&](const diagnosis::Explanation& explanation) {
                         return explanation.size() == 1 && diagnosis::SameFault(explanation[0], fault);
                       });
  }

  /// A plug of which no connected wire lies on a contact is one that is not plugged in.
  bool AnyWireLands(const diagnosis::Fault& fault) const {
    return std::any_of(fault.moves.begin(), fault.moves.end(), [this](const diagnosis::Move& move) {
      if (!move.to) return false;
      return std::any_of(observation_.expected.begin(), observation_.expected.end(),
                         [&](const diagnosis::Net& net) {
                           return net.size() > 1 && std::find(net.begin(), net.end(), move.from) != net.end();
                         });
    });
  }

  diagnosis::Observation observation_;
};

TEST_P(PlugsOfAnExample, AreNamedWhenTheyAreWrong) {
  int named = 0;
  const std::vector<diagnosis::Fault> faults = AllPlugFaults();
  // Large harnesses have many more, and each takes longer.
  const int step = shorttest::testkit::SweepStep * (faults.size() > 500 ? shorttest::testkit::SweepStep : 1);
  for (std::size_t i = 0; i < faults.size(); i += static_cast<std::size_t>(step)) {
    const diagnosis::Fault& fault = faults[i];
    observation_.measured = diagnosis::Applied(diagnosis::Explanation{fault}, observation_.expected);
    if (observation_.measured == observation_.expected || !AnyWireLands(fault)) continue;
    const diagnosis::Diagnosis diagnosis = diagnosis::Diagnose(observation_);
    ASSERT_EQ(diagnosis.findings.size(), 1U) << "plug " << fault.plugs[0] << " shift " << fault.shift;
    EXPECT_TRUE(IsAmong(fault, diagnosis.findings[0]))
        << "plug " << fault.plugs[0] << " shift " << fault.shift;
    EXPECT_TRUE(diagnosis::testkit::AllFit(diagnosis));
    ++named;
  }
  EXPECT_GT(named, 10 / step);
}

INSTANTIATE_TEST_SUITE_P(Examples, PlugsOfAnExample,
                         testing::Values("atx-extension", "crossover-cable", "generated-240",
                                         "null-modem-cable", "trailer-adapter"));

}  // namespace
}  // namespace kxbench
