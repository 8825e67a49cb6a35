#pragma once

#include <memory>

#include "bench/proof/CheckOutcome.h"
#include "bench/proof/DeviceModel.h"
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

 private:
  class Host;
  std::unique_ptr<Host> host_;
};

}  // namespace kxbench::proof
