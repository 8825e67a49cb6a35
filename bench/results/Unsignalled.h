#pragma once

#include <functional>

namespace kxbench::results {

/// Runs `work` in a thread of its own that no signal interrupts: those are for the threads that wait for
/// them. Throws std::system_error when there is no thread to be had.
void StartWithoutSignals(std::function<void()> work);

}  // namespace kxbench::results
