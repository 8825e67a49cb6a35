#pragma once

#include <stdexcept>
#include <string>

#include "framework/kxcomponents.h"
#include "plugin/learn/ShorttestLearn.h"
#include "tests/support/Bench.h"
#include "tests/support/FakeUserInterface.h"
#include "tests/support/MatrixText.h"
#include "text/NumberText.h"

namespace shorttest::testkit {

/// What the progress function throws where a test tells it to.
class ProgressFailure : public std::runtime_error {
 public:
  ProgressFailure() : std::runtime_error("the progress display failed") {}
};

/// What the progress function does; see LearnBench.
struct ProgressScript {
  CallLog* log = nullptr;
  int calls = 0;
  int stopAt = 0;
  int stopFrom = 0;
  int throwAt = 0;
};

/// A bench with a device to learn. The progress function logs "progress POSITION" and follows a script; it is
/// a plain function, so the script is static.
class LearnBench : public Bench {
 protected:
  void SetUp() override {
    StartScript(log);
    SetApplication(&ui);
    SetDecimalSeparator(",");
  }
  void TearDown() override {
    SetDecimalSeparator(std::nullopt);
    SetApplication(nullptr);
    script = {};
    Bench::TearDown();
  }

  LearnOutcome Learn() { return LearnConnections(data, Progressed); }

  /// A progress function that never stops and logs to `log`.
  static void StartScript(CallLog& log) {
    script = {};
    script.log = &log;
  }

  /// Progress answers true at its n-th call alone, or from it on; or throws there. From 1.
  static void StopAt(int n) { script.stopAt = n; }
  static void StopFrom(int n) { script.stopFrom = n; }
  static void ThrowAt(int n) { script.throwAt = n; }
  static int ProgressCalls() { return script.calls; }

  static bool Progressed(double position) {
    script.log->Add("progress " + ExactText(position));
    ++script.calls;
    if (script.calls == script.throwAt) throw ProgressFailure();
    return script.calls == script.stopAt || (script.stopFrom != 0 && script.calls >= script.stopFrom);
  }

  /// A new, unlearned range with defaults.
  void Channels(int von, int bis) { data = TShortTestData(von, bis); }
  void Suspend(int index) { data.SuspendChannel(index, 1.0); }

  FakeUserInterface ui{log};
  TShortTestData data{1, 4};

 private:
  static inline ProgressScript script;
};

}  // namespace shorttest::testkit
