#include "bench/program/station/StationWindowFace.h"

#include "ui/terminal/Interrupt.h"

namespace kxbench {

namespace {

StationSheet::Colour ColourOfSheet(results::Verdict verdict) {
  switch (verdict) {
    case results::Verdict::Pass:
      return StationSheet::Colour::Good;
    case results::Verdict::Fail:
    case results::Verdict::Error:
      return StationSheet::Colour::Bad;
    case results::Verdict::Cancelled:
      break;
  }
  return StationSheet::Colour::Doubtful;
}

}  // namespace

WindowFace::WindowFace(StationWindow& window) : window_(window) {
  StationSheet sheet;
  sheet.head = "Scan a serial number, or type it and press Enter. Escape ends.";
  window_.ShowSheet(sheet);
  window_.SetCounters(CounterLine({}));
}

std::optional<StationEntry> WindowFace::Next(const std::string& prompt) {
  window_.SetPrompt(prompt);
  const auto scan = window_.Next(InterruptWatch::Interrupted);
  if (!scan) return std::nullopt;
  window_.Say(scan->replaced.empty() ? "" : scan->replaced + " was not checked");
  return StationEntry{scan->text, scan->ahead};
}

void WindowFace::Checking(const std::string& serial, const std::string& retest) {
  StationSheet sheet;
  sheet.head = "checking " + serial;
  if (!retest.empty()) sheet.lines = {retest};
  window_.ShowSheet(sheet);
  window_.SetChecking(true);
}

void WindowFace::Show(const StationVerdict& verdict, const ShiftCounters& counters) {
  window_.SetChecking(false);
  StationSheet sheet;
  sheet.word = StationWord(verdict.verdict);
  sheet.colour = ColourOfSheet(verdict.verdict);
  sheet.head = verdict.serial + (verdict.part.empty() ? "" : "  " + verdict.part);
  sheet.lines = verdict.lines;
  if (!verdict.retest.empty()) sheet.lines.push_back(verdict.retest);
  sheet.drawing = verdict.drawing;
  window_.ShowSheet(sheet);
  window_.SetCounters(CounterLine(counters));
}

}  // namespace kxbench
