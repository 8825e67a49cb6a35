#pragma once

#include "plugin/hardware/Clock.h"

namespace shorttest {

/// The system's clocks: the performance counter and the tick count on Windows, the monotonic clock elsewhere.
class SystemClock : public Clock {
 public:
  std::int64_t Counter() override;
  std::int64_t Frequency() override;
  std::uint32_t TickCount() override;
};

}  // namespace shorttest
