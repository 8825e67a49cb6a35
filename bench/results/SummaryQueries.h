#pragma once

#include <soci/soci.h>

#include "bench/results/ResultQueries.h"

namespace kxbench::results {

/// Inside Database::Read: the summary, from the tables that every stored result brings up to date. Throws
/// what SOCI throws.
ResultSummary QuerySummary(soci::session& session, const ResultFilter& filter);

}  // namespace kxbench::results
