#pragma once

#include <string>
#include <vector>

#include "bench/results/ResultQueries.h"

namespace kxbench {

/// What `kxbench results` tells a person, in lines of a fixed-width font. Texts are made printable.
std::string ListReport(const std::vector<results::ResultLine>& lines);
std::string ResultReport(const results::Result& result);
std::string SummaryReport(const results::ResultSummary& summary);

/// What a filter asks for, a line each; nothing when it asks for everything.
std::vector<std::string> FilterWords(const results::ResultFilter& filter);

}  // namespace kxbench
