#pragma once

#include <cstddef>

namespace shorttest::testkit {

/// The memory of a test program that links this: its operator new counts, and fails when it is told to.

/// Blocks that were allocated and not freed.
std::ptrdiff_t LiveAllocations();

enum class Shortage {
  Passing,  ///< one allocation fails
  Lasting,  ///< so do all that follow
};

/// While it lives, the n-th allocation from its making on throws std::bad_alloc (n from 1).
class FailingAllocation {
 public:
  FailingAllocation(int n, Shortage shortage);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  /// Whether there were that many.
  static bool Happened();
};

}  // namespace shorttest::testkit
