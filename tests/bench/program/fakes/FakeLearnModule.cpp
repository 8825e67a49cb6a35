#include <cstdlib>
#include <string>

#include "bench/learning/LearnModule.h"
#include "framework/kxcomponents.h"

/// A learn module that asks one question and learns what FAKE_LEARN says: "cancelled", "failed", else
/// success; "damaged" until it is asked for a new one, "changed" tells of a pair before it succeeds. Its
/// summary shows the request.

void kxLearn(const kxbench::LearnRequest& request, kxbench::LearnSummary& summary) {
  const char* choice = std::getenv("FAKE_LEARN");
  const std::string text = choice == nullptr ? "" : choice;
  if (text == "failed") {
    summary.failure = "Konnte Anzahl Kanäle nicht ermitteln.";
    return;
  }
  if (text == "damaged" && !request.makeNew) {
    summary.end = kxbench::LearnEnd::Damaged;
    summary.failure = "there is no START";
    return;
  }
  if (text == "no device") {
    summary.failure = "BRENMOR_DEVICE is not set";
    return;
  }
  if (text == "changed") request.beforeReplacing({1, 2, 1, 2, 1, 1, {{1, 2, "connected", "open"}}});
  const int answer =
      Application().ShowMessage({"Nahe am Schwellwert.", MessageKind::Information, {mrCancel, mrIgnore}});
  if (text == "cancelled" || answer == mrCancel) {
    summary.end = kxbench::LearnEnd::Cancelled;
    return;
  }
  summary.end = kxbench::LearnEnd::Learned;
  summary.firstChannel = request.firstChannel.value_or(0);
  summary.lastChannel = request.lastChannel.value_or(0);
  summary.suspended = {{request.voltageControl.value_or(-1), request.thresholdOhm.value_or(-1)}};
}
