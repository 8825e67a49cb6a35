#pragma once

#include "bench/results/Database.h"
#include "bench/results/Result.h"

namespace kxbench::results {

enum class Keep {
  ForGood,    ///< with what the summary is made of
  UntilSent,  ///< in a spool
};

/// Inside Database::Change: writes the result. One whose id is there already changes nothing; returns whether
/// it was new. Its texts are storable (see StorableResult). Throws what SOCI throws.
bool WriteResult(Database& database, const Result& result, Keep keep);

/// Inside Database::Change: removes a result written with Keep::UntilSent.
void RemoveResult(Database& database, const std::string& id);

/// Channel numbers as the database holds them: "1,14".
std::string ChannelsText(const std::vector<std::int32_t>& channels);

}  // namespace kxbench::results
