#pragma once

#include "bench/proof/NetworkTester.h"

namespace kxbench::proof {

/// The tester that the driver's nine functions of this library work on; null: each of them leaves an error.
/// The caller keeps ownership.
void SetCurrentTester(NetworkTester* tester);

}  // namespace kxbench::proof
