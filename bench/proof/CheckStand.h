#pragma once

#include <cstdint>
#include <memory>

#include "bench/proof/CheckOutcome.h"
#include "bench/proof/CurrentTester.h"
#include "bench/proof/DeviceModel.h"
#include "bench/proof/HeldClock.h"
#include "contracts/UserInterface.h"
#include "plugin/data/ShorttestData.h"

namespace kxbench::proof {

/// Runs the plug-in's own check on simulated devices, in held time and without a window. While it lives it is
/// the host of this process: user interface, message window and driver. One at a time, on one thread.
class CheckStand {
 public:
  CheckStand();
  ~CheckStand();
  CheckStand(const CheckStand&) = delete;
  CheckStand& operator=(const CheckStand&) = delete;

  /// Checks `device` with `expectation`, which may be anything. Never throws but for want of memory.
  CheckOutcome Check(const TShortTestData& expectation, const DeviceModel& device);

  /// The same with a tester that is there already, and whose time `clock` is.
  CheckOutcome CheckWith(const TShortTestData& expectation, HeldClock& clock, Driver& tester);

  /// By how much a look at the ticks moves the time on, so that a wait for a discharge is neither missed nor
  /// long, ms.
  static std::uint32_t TickStep_ms(const TShortTestData& expectation);

 private:
  class Host;
  std::unique_ptr<Host> host_;
};

}  // namespace kxbench::proof
