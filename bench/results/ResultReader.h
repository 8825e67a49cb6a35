#pragma once

#include <optional>
#include <string>

#include "bench/results/Database.h"
#include "bench/results/Result.h"

namespace kxbench::results {

/// Inside Database::Read or Change: all that the database holds of a result (the expected nets are not
/// stored); none when there is none of that id. Throws what SOCI throws.
std::optional<Result> ReadResult(Database& database, const std::string& id);

/// The time that TimeText writes; none for any other text.
std::optional<std::chrono::sys_time<std::chrono::milliseconds>> TimeOf(const std::string& text);

/// "1,14": see ChannelsText.
std::vector<std::int32_t> ChannelsOf(const std::string& text);

}  // namespace kxbench::results
