#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "bench/program/output/Output.h"
#include "bench/program/station/StationFace.h"
#include "bench/program/station/StationScreen.h"
#include "ui/terminal/Keyboard.h"
#include "ui/terminal/Terminal.h"

namespace kxbench {

/// A station that fills the terminal.
class ScreenFace : public StationFace {
 public:
  /// `terminal` outlives the object.
  ScreenFace(Terminal& terminal, std::unique_ptr<Keyboard> keyboard, bool colours);
  ~ScreenFace() override;

  std::optional<StationEntry> Next(const std::string& prompt) override;
  void Offer(const std::string& text) override;
  void Say(const std::string& line) override;
  void Checking(const std::string& serial, const std::string& retest) override;
  void Show(const StationVerdict& verdict, const ShiftCounters& counters) override;

 private:
  void Take(const Key& key, bool ahead);
  void Draw();
  void DrawField();
  std::string FieldLine() const;

  Terminal& terminal_;
  std::unique_ptr<Keyboard> keyboard_;
  bool colours_;
  ScreenText text_;
  std::string prompt_;
  std::string field_;
  bool offered_ = false;  ///< the field holds what was put there: typing replaces it
  std::deque<StationEntry> entries_;
  bool ended_ = false;
};

/// A station that reads lines and writes lines: for scripts, and for terminals that cannot be redrawn.
class LineFace : public StationFace {
 public:
  /// Both outlive the object.
  LineFace(Terminal& terminal, Output& output) : terminal_(terminal), output_(output) {}

  std::optional<StationEntry> Next(const std::string& prompt) override;
  void Offer(const std::string&) override {}
  void Say(const std::string& line) override;
  void Checking(const std::string&, const std::string&) override {}
  void Show(const StationVerdict& verdict, const ShiftCounters& counters) override;

 private:
  Terminal& terminal_;
  Output& output_;
};

}  // namespace kxbench
