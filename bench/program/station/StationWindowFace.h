#pragma once

#include "bench/program/station/StationFace.h"
#include "contracts/StationWindow.h"

namespace kxbench {

/// A station in a window of its own.
class WindowFace : public StationFace {
 public:
  /// `window` outlives the object.
  explicit WindowFace(StationWindow& window);

  std::optional<StationEntry> Next(const std::string& prompt) override;
  void Offer(const std::string& text) override { window_.Offer(text); }
  void Say(const std::string& line) override { window_.Say(line); }
  void Checking(const std::string& serial, const std::string& retest) override;
  void Show(const StationVerdict& verdict, const ShiftCounters& counters) override;

 private:
  StationWindow& window_;
};

}  // namespace kxbench
