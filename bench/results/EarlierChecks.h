#pragma once

#include "bench/results/Database.h"
#include "bench/results/ResultStore.h"

namespace kxbench::results {

/// What the database knows of a serial number, the newest first. Throws DatabaseError.
std::vector<ResultStore::EarlierCheck> ReadEarlierChecks(Database& database, const std::string& serial,
                                                         std::size_t most);

}  // namespace kxbench::results
