#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bench/results/ResultQueries.h"

/// The summary for programs and as a page.

namespace kxbench::results {

/// One object, {"format": "summary", ...}, and a line end. docs/results.md describes it.
std::string SummaryJson(const ResultSummary& summary);

/// Lines of the view `results` as an object {"format": "list", ...}, and a line end.
std::string ListJson(const std::vector<ResultLine>& lines);

/// A page with tables and plots that loads nothing from elsewhere. `about` says what was asked for: each line
/// a paragraph of plain text.
std::string SummaryPage(const ResultSummary& summary, const std::vector<std::string>& about);

/// "95.3 %"; a dash for none.
std::string PercentText(const std::optional<double>& share);

/// The head line of the CSV of results, and the line of one.
std::string CsvHead();
std::string CsvLine(const ResultLine& line);

}  // namespace kxbench::results
