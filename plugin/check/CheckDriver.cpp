#include <algorithm>
#include <memory>

#include "framework/Kxcommandinterfaces.h"
#include "framework/kxcomponents.h"
#include "plugin/check/CheckForm.h"
#include "plugin/check/CheckPasses.h"
#include "plugin/check/ResultRecords.h"
#include "plugin/check/ShorttestCheck.h"
#include "plugin/hardware/Bus.h"
#include "plugin/hardware/LastCleanUp.h"

namespace {

// An empty result over the range of `data`. The short threshold is never below the connection threshold.
std::unique_ptr<TShortTestData> MakeWork(const TShortTestData& data) {
  auto work = std::make_unique<TShortTestData>(data.von, data.bis);
  work->Schwelle = data.Schwelle;
  work->Schwelle2 = std::max(data.Schwelle2, work->Schwelle);
  return work;
}

// Runs one step of the clean-up. It must not throw: the later steps must run, and the failure that led here
// must not be replaced.
template <typename Step>
void Quietly(Step step) noexcept {
  try {
    step();
  } catch (...) {
  }
}

// What must be undone on every way out, in this order.
class RunningCheck {
 public:
  RunningCheck(const TShortTestData& data, std::unique_ptr<TShortTestData> result)
      : work(std::move(result)), data_(data) {}
  ~RunningCheck() {
    OpenRelays();
    work.reset();
    // The close box leaves the modal result at 0: the host is told of "Abbrechen" and Escape alone.
    Quietly([] {
      if (CheckForm->GetModalResult() == mrCancel && TestEnvironment() != nullptr) {
        TestEnvironment()->CancelTest();
      }
    });
    Quietly([this] { Application().EnableTaskWindows(disabledWindows); });
    Quietly([] { CheckForm.reset(); });
  }
  RunningCheck(const RunningCheck&) = delete;
  RunningCheck& operator=(const RunningCheck&) = delete;

  std::unique_ptr<TShortTestData> work;
  TaskWindowList disabledWindows;

 private:
  void OpenRelays() const noexcept {
    ReleaseAllLines(data_);
    // The one relay that a check can close out of that reach.
    if (const auto card = shorttest::CardPastRange(data_)) shorttest::ReleaseLine(*card, 1);
    shorttest::SwitchTerminationOff(data_);
  }

  const TShortTestData& data_;
  const shorttest::LastCleanUp lastCleanUp_{[this] { OpenRelays(); }};
};

// Each pass counts against MaxError on its own; between the passes their sum decides. Passes 3 and 4 run as a
// pair.
void RunPasses(const TShortTestData& data, TShortTestData& work) {
  std::int64_t errors = CheckConnectionPass(data, work);
  if (errors >= data.MaxError) return;
  errors += CheckVoltagePass(data, work);
  if (errors >= data.MaxError) return;
  CheckPairPass(data, work, CheckIsolationPass(data, work));
}

}  // namespace

void RunShortTest(const TShortTestData& data) {
  const shorttest::TesterInUse use;
  CheckForm = std::make_unique<TShortTestCheckForm>();
  std::unique_ptr<TShortTestData> work;
  try {
    ResetHardware();
    work = MakeWork(data);
  } catch (...) {
    CheckForm.reset();  // nothing else has happened yet: no window is disabled and no relay closed
    throw;
  }
  RunningCheck check(data, std::move(work));

  CheckForm->Show();
  check.disabledWindows = Application().DisableTaskWindows(CheckForm->Handle());
  shorttest::SwitchTerminationOn(data);
  RunPasses(data, *check.work);
  ReportResults(data, *check.work);
  UpdateProgress(1.0);
}
