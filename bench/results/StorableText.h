#pragma once

#include "bench/results/Result.h"

namespace kxbench::results {

/// The result as a database can hold it. Texts that come from drivers and files have U+FFFD in place of what
/// is no UTF-8 or a NUL character: a result is not refused for them. Throws std::runtime_error, as
/// CheckStorable, for serial number, part, operator and station.
Result StorableResult(const Result& result);

}  // namespace kxbench::results
