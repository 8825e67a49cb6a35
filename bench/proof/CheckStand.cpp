#include "bench/proof/CheckStand.h"

#include <algorithm>
#include <cstdint>
#include <exception>
#include <string>
#include <utility>

#include "bench/proof/NetworkTester.h"
#include "framework/MessageWindow.h"
#include "plugin/check/ResultRecords.h"
#include "plugin/check/ShorttestCheck.h"
#include "text/Utf8.h"

namespace kxbench::proof {

namespace {

/// A window message's number: the first user message, and the host's offset for records.
constexpr UINT RecordMessage = 1133;

/// Looks at the ticks that a wait for a discharge takes: enough to hit the moment, few enough to be quick.
constexpr std::int32_t LooksOfAWait = 500;

/// The held clock in the system's place as long as it lives.
class ClockInForce {
 public:
  explicit ClockInForce(Clock& clock) : before_(shorttest::SetClock(&clock)) {}
  ~ClockInForce() { shorttest::SetClock(before_); }
  ClockInForce(const ClockInForce&) = delete;
  ClockInForce& operator=(const ClockInForce&) = delete;

 private:
  Clock* before_;
};

}  // namespace

/// The progress of a check that nobody watches.
class UnseenProgress : public ProgressDialog {
 public:
  void Show() override {}
  bool Visible() const override { return true; }
  int GetModalResult() const override { return mrNone; }
  int BarMaximum() const override { return 100; }
  void SetBarPosition(int) override {}
  WindowHandle Handle() const override { return 0; }
};

class UnseenUserInterface : public UserInterface {
 public:
  void ProcessMessages() override {}
  int ShowMessage(const MessageBoxRequest& request) override { return request.buttons.back(); }
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout&) override {
    return std::make_unique<UnseenProgress>();
  }
  TaskWindowList DisableTaskWindows(WindowHandle) override { return {}; }
  void EnableTaskWindows(const TaskWindowList&) override {}
};

class CheckStand::Host {
 public:
  Host()
      : window_([this](UINT message, WPARAM, LPARAM lParam) -> LRESULT {
          if (message != RecordMessage || lParam == 0) return 0;
          records_.push_back(shorttest::Utf8FromUtf16(reinterpret_cast<const char16_t*>(lParam)));
          return 1;
        }) {
    SetApplication(&userInterface_);
    shorttest::SetMessageWindowHandle(
        static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window_.Handle())));
  }
  ~Host() {
    shorttest::SetMessageWindowHandle(0);
    SetApplication(nullptr);
  }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  std::vector<std::string> TakeRecords() { return std::exchange(records_, {}); }

 private:
  UnseenUserInterface userInterface_;
  std::vector<std::string> records_;
  kx::MessageWindow window_;
};

CheckStand::CheckStand() : host_(std::make_unique<Host>()) {}

CheckStand::~CheckStand() = default;

std::uint32_t CheckStand::TickStep_ms(const TShortTestData& expectation) {
  return static_cast<std::uint32_t>(std::max(1, expectation.Timeout / LooksOfAWait));
}

CheckOutcome CheckStand::Check(const TShortTestData& expectation, const DeviceModel& device) {
  HeldClock clock(TickStep_ms(expectation));
  NetworkTester tester(device, clock);
  CheckOutcome outcome = CheckWith(expectation, clock, tester);
  if (outcome.failure.empty() && tester.ClosedRelays() > 0) outcome.failure = "the check left relays closed";
  return outcome;
}

CheckOutcome CheckStand::CheckWith(const TShortTestData& expectation, HeldClock& clock, Driver& tester) {
  const ClockInForce held(clock);
  SetCurrentTester(&tester);
  CheckOutcome outcome;
  try {
    RunShortTest(expectation);
  } catch (const std::exception& error) {
    outcome.failure = error.what();
  }
  SetCurrentTester(nullptr);
  outcome.records = host_->TakeRecords();
  outcome.seconds = clock.Seconds();
  return outcome;
}

}  // namespace kxbench::proof
