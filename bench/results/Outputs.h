#pragma once

#include <string>
#include <vector>

#include "bench/results/Result.h"

/// Results as files, in the formats that docs/results-files.md describes. Texts of results need not be UTF-8:
/// what is not becomes U+FFFD.

namespace kxbench::results {

/// A result and what belongs to it on a page.
struct ResultPage {
  Result result;
  std::string drawing;  ///< an <svg> element, taken over as it stands; empty: none
};

/// What the diagnosis says, as the database has it: the faults' texts, a line each; "no fault" when it found
/// none; empty when none was made.
std::string DiagnosisText(const Result& result);

/// The file's text and line end: one result is an object {"format": "result", ...}, any other number of them
/// {"format": "results", ..., "results": [...]}. docs/result.schema.json describes both.
std::string ResultsJson(const std::vector<ResultPage>& pages);

/// One result on one line, without its end.
std::string ResultJsonLine(const Result& result);

/// What each of these lines begins with.
inline constexpr char ResultJsonLineStart[] = R"({"format":"result")";

/// JUnit XML: a test suite for each result, with a test case for each expected net and one for short
/// circuits.
std::string ResultsJUnit(const std::vector<ResultPage>& pages);

/// CSV (RFC 4180) with a head line; a row for each record, and one for a result without any.
std::string ResultsCsv(const std::vector<ResultPage>& pages);

/// One page that loads nothing from elsewhere.
std::string ResultsHtml(const std::vector<ResultPage>& pages);

}  // namespace kxbench::results
