#pragma once

#include "bench/proof/SelfTestModule.h"

namespace kxbench {

/// The work of kxSelfTest. Throws what keeps it from being done: the driver's errors, std::runtime_error when
/// no card answers or a reading is no number, std::logic_error when the tester is in use, what the progress
/// throws.
void TestTester(const SelfTestRequest& request, SelfTestSummary& summary);

}  // namespace kxbench
