#include "bench/program/proof/ProofProgress.h"

#include <utility>

#include "ui/terminal/ProgressText.h"

namespace kxbench {

namespace {

/// Before that nothing can be said of the rest.
constexpr double FirstGuess_s = 2;

constexpr double BetweenProgressLines = 0.1;

}  // namespace

std::string ProofCaption(double fraction, double seconds) {
  if (fraction <= 0 || seconds < FirstGuess_s) return "Proving";
  return "Proving, " + DurationText(seconds / fraction * (1 - fraction)) + " left";
}

ProofProgress::ProofProgress(Terminal& terminal, bool shown, SecondsSource seconds)
    : terminal_(terminal), shown_(shown), seconds_(std::move(seconds)), started_(seconds_()) {}

ProofProgress::~ProofProgress() {
  if (drawn_) terminal_.Draw("\r\x1b[K");
}

void ProofProgress::Report(std::size_t done, std::size_t total) {
  if (!shown_ || total == 0 || !terminal_.Ready()) return;
  ProgressState state;
  state.fraction = static_cast<double>(done) / static_cast<double>(total);
  state.seconds = seconds_() - started_;
  state.caption = ProofCaption(state.fraction, state.seconds);
  state.hint = "Ctrl-C cancels";
  if (terminal_.CanRedraw()) {
    terminal_.Draw("\r" + ProgressBarText(state, terminal_.Columns() - 1, terminal_.ShowsUnicode()) +
                   "\x1b[K");
    drawn_ = true;
  } else if (state.seconds >= FirstGuess_s && state.fraction - lastLine_ >= BetweenProgressLines) {
    lastLine_ = state.fraction;
    terminal_.Draw(ProgressLineText(state) + "\n");
  }
}

}  // namespace kxbench
