#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "bench/proof/SelfTestModule.h"
#include "simulator/SimulatedTester.h"
#include "tests/support/FakeClock.h"

namespace kxbench {

inline TesterDefect Defect(TesterDefectKind kind, std::int32_t channel,
                           std::optional<std::int32_t> line = {}) {
  return {kind, (channel - 1) / 48 + 1, channel, line, true, 0.0};
}
inline TesterDefect NeverCloses(std::int32_t channel, std::int32_t line) {
  return Defect(TesterDefectKind::NeverCloses, channel, line);
}
inline TesterDefect NeverOpens(std::int32_t channel, std::int32_t line) {
  return Defect(TesterDefectKind::NeverOpens, channel, line);
}
inline TesterDefect NotEmpty(std::int32_t channel) { return Defect(TesterDefectKind::NotEmpty, channel); }
inline TesterDefect Live(std::int32_t channel) { return Defect(TesterDefectKind::Voltage, channel); }
inline TesterDefect NoCard(std::int32_t card) {
  return {TesterDefectKind::NoCard, card, std::nullopt, std::nullopt, true, 0.0};
}
inline TesterDefect Uncertain(TesterDefect defect) {
  defect.certain = false;
  return defect;
}

inline void PrintTo(const TesterDefect& defect, std::ostream* out) {
  constexpr const char* Kinds[] = {"never closes", "never opens", "no card", "not empty", "voltage"};
  *out << Kinds[static_cast<std::size_t>(defect.kind)] << " card " << defect.card;
  if (defect.channel) *out << " channel " << *defect.channel;
  if (defect.line) *out << " line " << *defect.line;
  if (!defect.certain) *out << " (uncertain)";
}

/// The simulated tester with nothing on it but its defects, in time that does not pass.
class SelfTestBench : public testing::Test {
 protected:
  SelfTestBench() {
    brenmor_sim_reset();
    brenmor_sim_manual_time(1);
  }
  ~SelfTestBench() override {
    ExpectSafe();
    brenmor_sim_reset();
  }

  static void ExpectSafe() {
    EXPECT_EQ(brenmor_sim_closed_channel_relays(), 0);
    EXPECT_EQ(brenmor_sim_closed_auxiliary_relays(), 0);
    EXPECT_EQ(brenmor_sim_outstanding_texts(), 0);
  }

  static void Connect(const std::string& description) {
    ASSERT_EQ(brenmor_sim_load_text(description.c_str()), 0) << brenmor_sim_load_error();
  }

  SelfTestSummary Run() const {
    SelfTestSummary summary;
    kxSelfTest(request, summary);
    return summary;
  }

  /// What is found; the volts of voltages are left out.
  std::vector<TesterDefect> Found(const std::string& description) const {
    Connect(description);
    SelfTestSummary summary = Run();
    EXPECT_EQ(summary.end, SelfTestEnd::Tested) << summary.failure;
    ExpectSafe();
    for (TesterDefect& defect : summary.defects) defect.volts = 0.0;
    return summary.defects;
  }

  void Channels(std::int32_t first, std::int32_t last) {
    request.firstChannel = first;
    request.lastChannel = last;
  }

  SelfTestRequest request;
  shorttest::testkit::FakeClock clock;
};

}  // namespace kxbench
