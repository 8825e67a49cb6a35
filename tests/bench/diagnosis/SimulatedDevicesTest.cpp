#include <gtest/gtest.h>

#include "bench/learning/MeasureRun.h"
#include "bench/program/check/DeviceDiagnosis.h"
#include "bench/program/check/RecordedNets.h"
#include "plugin/data/ShorttestData.h"
#include "tests/bench/diagnosis/GeneratedFaults.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/system/SystemBench.h"

namespace kxbench {
namespace {

using diagnosis::testkit::MadeFault;
using diagnosis::testkit::Named;

#if defined(SHORTTEST_SANITIZED)
constexpr int FaultyDevices = 100;
#elif defined(SHORTTEST_SLOWED)
constexpr int FaultyDevices = 500;
#else
constexpr int FaultyDevices = 2000;
#endif

std::string DescriptionOf(const diagnosis::Nets& nets) {
  std::string text = "cards 1\n";
  for (const diagnosis::Net& net : nets) {
    if (net.size() > 1) text += "net " + diagnosis::testkit::Text(net) + "\n";
  }
  return text;
}

TShortTestData ExpectationOf(const diagnosis::Nets& nets, std::int32_t channels) {
  TShortTestData data(1, channels);
  data.MaxError = 10'000;
  data.U_Control = 0;
  for (std::int32_t i = 0; i < channels; ++i) {
    for (std::int32_t j = 0; j < i; ++j) data.SetC(i, j, CellState::NotConnected, NoResistance);
  }
  for (const diagnosis::Net& net : nets) {
    for (const std::int32_t a : net) {
      for (const std::int32_t b : net) {
        if (a < b) data.SetC(b - 1, a - 1, CellState::Connected, NoResistance);
      }
    }
  }
  return data;
}

/// Harnesses of one relay card, learned, then made with faults and measured on the simulated tester.
class SimulatedDevice : public shorttest::testkit::SystemBench {
 protected:
  void Draw() {
    channels_ = static_cast<std::int32_t>(20 + diagnosis::testkit::Below(random_, 11));
    harness_ = diagnosis::testkit::DrawHarness(random_, channels_);
    expectation_ = ExpectationOf(harness_, channels_);
    expectation_.SaveExpectationFile(File());
    facts_ = wiring::FactsOf(File());
  }

  std::string File() const { return (folder_.Path() / "harness.dat").string(); }

  DeviceDiagnosis Measured() const {
    MeasureSummary summary;
    MeasureDevice(File(), summary);
    return DiagnosisOf(summary, ExpectedOnly(facts_, wiring::ChannelNames()));
  }

  DeviceDiagnosis Recorded() {
    return DiagnosisOfRecords(RecordsIn(Check(expectation_)), facts_,
                              ExpectedOnly(facts_, wiring::ChannelNames()));
  }

  std::mt19937 random_{2000};
  TemporaryFolder folder_;
  std::int32_t channels_ = 0;
  diagnosis::Nets harness_;
  TShortTestData expectation_{1, 1};
  wiring::ExpectationFacts facts_;
};

TEST_F(SimulatedDevice, WithAFaultHasItNamed) {
  for (int device = 0; device < FaultyDevices && !HasFailure();) {
    if (device % 20 == 0) Draw();
    diagnosis::Nets made = harness_;
    const std::vector<MadeFault> faults = diagnosis::testkit::MakeAny(random_, harness_, made);
    if (faults.empty()) continue;
    ++device;
    Connect(DescriptionOf(made));
    const DeviceDiagnosis diagnosis = Measured();
    EXPECT_EQ(diagnosis::testkit::HowNamed(diagnosis.faults, faults), Named::First)
        << diagnosis::testkit::Text(harness_) << "\n"
        << diagnosis::testkit::Text(made);
    EXPECT_EQ(diagnosis.faults.measured, diagnosis::Ordered(made));
    EXPECT_EQ(diagnosis.Status(), ExitStatus::Findings);
    EXPECT_TRUE(TesterIsSafe());
  }
}

TEST_F(SimulatedDevice, IsKnownFromItsRecordsOrTheySayThatItIsNot) {
  int known = 0;
  const int devices = FaultyDevices / 10;
  for (int device = 0; device < devices && !HasFailure(); ++device) {
    Draw();
    diagnosis::Nets made = harness_;
    for (int faults = 0; faults < 2;) {
      faults += diagnosis::testkit::MakeAny(random_, harness_, made).empty() ? 0 : 1;
    }
    Connect(DescriptionOf(made));
    const DeviceDiagnosis recorded = Recorded();
    if (!recorded.gaps.empty()) continue;
    ++known;
    EXPECT_EQ(recorded.faults.measured, diagnosis::Ordered(made)) << diagnosis::testkit::Text(harness_);
  }
  EXPECT_GT(known, devices / 2);
}

}  // namespace
}  // namespace kxbench
