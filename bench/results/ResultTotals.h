#pragma once

#include <soci/soci.h>

#include "bench/results/Result.h"

namespace kxbench::results {

/// Within the transaction that writes the result: brings the tables that the summary is made of up to date.
/// Results may come in any order. Rows are locked in an order that is the same for all, so that two stations
/// do not wait for each other.
///
/// - A device is a serial number of a part. Its first and its last test are those that started first and
/// last;
///   only checks with the verdict pass or fail are tests. A test without serial number is a device of its
///   own.
/// - A device counts in the row of its first test's station and day.
void AddToTotals(soci::session& session, const Result& result);

}  // namespace kxbench::results
