#include "ui/terminal/TerminalUserInterface.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "ui/terminal/ButtonNames.h"
#include "ui/terminal/Printable.h"
#include "ui/terminal/ProgressText.h"

namespace kxbench {

namespace {

/// Redrawing more often cannot be seen and would cost more than the measurement.
constexpr double SecondsBetweenRedraws = 0.05;

/// Lines in a log: every tenth of the way, but not more often than every few seconds.
constexpr double SecondsBetweenLines = 1.0;
constexpr double FractionBetweenLines = 0.1;

constexpr std::string_view EraseLine = "\r\x1b[K";

}  // namespace

double SteadySeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

class TerminalProgress : public ProgressDialog {
 public:
  TerminalProgress(TerminalUserInterface& userInterface, const ProgressDialogLayout& layout)
      : userInterface_(userInterface),
        minimum_(layout.barMinimum),
        maximum_(layout.barMaximum),
        redraws_(userInterface.style_ == ProgressStyle::Shown && userInterface.terminal_.CanRedraw()) {
    state_.caption = layout.caption;
    state_.hint = "Ctrl-C: cancel";  // the button's caption is the plug-in's, and German
  }

  ~TerminalProgress() override {
    if (userInterface_.shown_ != this) return;
    Erase();
    if (linesWritten_) {
      state_.seconds = Elapsed();
      Draw(ProgressLineText(state_) + ", ended\n");
    }
    userInterface_.shown_ = nullptr;
  }

  void Show() override {
    visible_ = true;
    started_ = Now();
    lastWritten_ = started_;
    userInterface_.shown_ = this;
    if (redraws_) Redraw();
  }

  bool Visible() const override { return visible_; }
  int GetModalResult() const override { return mrNone; }
  int BarMaximum() const override { return maximum_; }

  void SetBarPosition(int position) override {
    const int clipped = std::clamp(position, minimum_, std::max(minimum_, maximum_));
    const double range = static_cast<double>(maximum_) - minimum_;
    state_.fraction = range > 0 ? (static_cast<double>(clipped) - minimum_) / range : 0.0;
    Update();
  }

  WindowHandle Handle() const override { return 0; }

  /// Shows what has changed since, the time included, if it is time for that.
  void Update() {
    if (!visible_ || userInterface_.style_ == ProgressStyle::Silent || !Ready()) return;
    const double now = Now();
    if (redraws_) {
      if (!drawn_ || now - lastWritten_ >= SecondsBetweenRedraws) Redraw();
    } else if (now - lastWritten_ >= SecondsBetweenLines &&
               state_.fraction - lastFraction_ >= FractionBetweenLines) {
      WriteLine();
    }
  }

  void Erase() {
    if (!drawn_) return;
    Draw(EraseLine);
    drawn_ = false;
    text_.clear();
  }

 private:
  double Now() const { return userInterface_.seconds_(); }
  double Elapsed() const { return Now() - started_; }
  void Draw(std::string_view text) { userInterface_.terminal_.Draw(text); }
  bool Ready() const { return userInterface_.terminal_.Ready(); }

  void Redraw() {
    const Terminal& terminal = userInterface_.terminal_;
    lastWritten_ = Now();
    state_.seconds = Elapsed();
    // One column stays free: writing into the last one moves some terminals on to the next line.
    std::string text = ProgressBarText(state_, terminal.Columns() - 1, terminal.ShowsUnicode());
    if (drawn_ && text == text_) return;
    Draw("\r" + text + "\x1b[K");
    text_ = std::move(text);
    drawn_ = true;
  }

  void WriteLine() {
    lastWritten_ = Now();
    lastFraction_ = state_.fraction;
    state_.seconds = Elapsed();
    Draw(ProgressLineText(state_) + "\n");
    linesWritten_ = true;
  }

  TerminalUserInterface& userInterface_;
  int minimum_;
  int maximum_;
  bool redraws_;
  ProgressState state_;
  bool visible_ = false;
  bool drawn_ = false;
  bool linesWritten_ = false;
  double started_ = 0;
  double lastWritten_ = 0;
  double lastFraction_ = 0;
  std::string text_;
};

TerminalUserInterface::TerminalUserInterface(Terminal& terminal, ProgressStyle style, SecondsSource seconds)
    : terminal_(terminal), style_(style), seconds_(std::move(seconds)) {}

TerminalUserInterface::~TerminalUserInterface() = default;

void TerminalUserInterface::ProcessMessages() {
  if (shown_ != nullptr) shown_->Update();
}

int TerminalUserInterface::ShowMessage(const MessageBoxRequest& request) {
  HideProgress();
  terminal_.Write(Printable(request.text) + "\n");
  const int closing = ClosingButton(request.buttons);
  if (request.buttons.size() <= 1) return closing;
  if (!terminal_.CanAsk()) {
    terminal_.Write("(nobody to ask, answered: " + ButtonName(closing) + ")\n");
    return closing;
  }
  for (;;) {
    terminal_.Write(ButtonPrompt(request.buttons));
    const std::optional<std::string> answer = terminal_.ReadLine();
    if (!answer) {
      terminal_.Write("\n");
      return closing;
    }
    if (const std::optional<int> button = ButtonOfAnswer(request.buttons, *answer)) return *button;
  }
}

std::unique_ptr<ProgressDialog> TerminalUserInterface::CreateProgressDialog(
    const ProgressDialogLayout& layout) {
  return std::make_unique<TerminalProgress>(*this, layout);
}

TaskWindowList TerminalUserInterface::DisableTaskWindows(WindowHandle) { return {}; }

void TerminalUserInterface::EnableTaskWindows(const TaskWindowList&) {}

void TerminalUserInterface::HideProgress() {
  if (shown_ == nullptr) return;
  shown_->Erase();
  terminal_.Settle();
}

}  // namespace kxbench
