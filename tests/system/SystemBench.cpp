#include "tests/system/SystemBench.h"

#include "framework/kxcomponents.h"
#include "plugin/check/CheckForm.h"
#include "plugin/check/ResultRecords.h"
#include "plugin/hardware/Timing.h"
#include "simulator/SimulatedTester.h"
#include "text/NumberText.h"

namespace shorttest::testkit {

SimulatedTime::SimulatedTime() : before_(SetClock(this)) {}
SimulatedTime::~SimulatedTime() { SetClock(before_); }

void SimulatedTime::Advance(int milliseconds) {
  milliseconds_ += milliseconds;
  brenmor_sim_advance_ms(milliseconds);
}

std::int64_t SimulatedTime::Counter() {
  const std::int64_t now = milliseconds_;
  Advance(1);
  return now;
}

std::uint32_t SimulatedTime::TickCount() {
  const auto now = static_cast<std::uint32_t>(milliseconds_);
  Advance(20);
  return now;
}

SystemBench::SystemBench() {
  SetApplication(&ui);
  SetTestEnvironment(&environment);
  SetMessageWindowHandle(host.Handle());
  SetDecimalSeparator(",");
  progressCalls = 0;
  stopFrom = 0;
}

SystemBench::~SystemBench() {
  EXPECT_EQ(ui.Dialogs(), 0);
  EXPECT_EQ(CheckForm, nullptr);
  SetDecimalSeparator(std::nullopt);
  SetMessageWindowHandle(0);
  SetTestEnvironment(nullptr);
  SetApplication(nullptr);
  brenmor_sim_reset();
}

void SystemBench::Connect(const std::string& description) {
  brenmor_sim_manual_time(1);
  ASSERT_EQ(brenmor_sim_load_text(description.c_str()), 0) << brenmor_sim_load_error();
}

bool SystemBench::Progressed(double /*position*/) {
  ++progressCalls;
  return stopFrom != 0 && progressCalls >= stopFrom;
}

void SystemBench::Learn(TShortTestData& data) {
  log.Clear();
  LearnConnections(data, Progressed);
}

std::string SystemBench::Check(const TShortTestData& data) {
  log.Clear();
  host.Clear();
  RunShortTest(data);
  return host.Records();
}

::testing::AssertionResult SystemBench::TesterIsSafe() {
  const int closed = brenmor_sim_closed_channel_relays();
  const int auxiliary = brenmor_sim_closed_auxiliary_relays();
  const int texts = brenmor_sim_outstanding_texts();
  const bool terminator = brenmor_sim_terminator_on() != 0;
  if (closed == 0 && auxiliary == 0 && texts == 0 && !terminator) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << closed << " channel relays and " << auxiliary << " auxiliary relays closed, terminating resistor "
         << (terminator ? "on" : "off") << ", " << texts << " texts not freed";
}

int Findings(const std::string& records) {
  int findings = 0;
  for (const char* const kind : {"Spannung an", "fehlende Verbindung", "Kurzschluss zwischen"}) {
    for (std::size_t at = records.find(kind); at != std::string::npos; at = records.find(kind, at + 1)) {
      ++findings;
    }
  }
  return findings;
}

}  // namespace shorttest::testkit
