#include <cstdlib>
#include <string>

#include "bench/learning/LearnModule.h"
#include "framework/kxcomponents.h"

/// A learn module that asks one question and learns what FAKE_LEARN says: "cancelled", "failed", else
/// success. Its summary shows the request.

void kxLearn(const kxbench::LearnRequest& request, kxbench::LearnSummary& summary) {
  const char* choice = std::getenv("FAKE_LEARN");
  const std::string text = choice == nullptr ? "" : choice;
  if (text == "failed") {
    summary.failure = "Konnte Anzahl Kanäle nicht ermitteln.";
    return;
  }
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
