#pragma once

#include <string>
#include <vector>

#include "plugin/data/ShorttestData.h"
#include "tests/text/FileFixture.h"

namespace data_test {

using text_test::CaseName;
using text_test::Count;
using text_test::Failure;
using text_test::FileTest;
using text_test::Lines;
using text_test::ReplaceAll;
using text_test::Thrown;

// The states that a measurement has for a pair, and what it leaves out.
inline constexpr CellState Open = CellState::NotConnected;
inline constexpr CellState Connected = CellState::Connected;
inline constexpr CellState Excluded = CellState::ExcludedPair;

/// What the reader puts into cells that lie past the end of the file: code 26 minus 48, as 8 bits.
inline constexpr int BehindTheEnd = 234;

/// Rows of cell states as numbers, so that a failing test prints the matrix.
using StateRows = std::vector<std::vector<int>>;

inline StateRows States(const TShortTestData& data) {
  StateRows rows;
  for (const auto& row : data.connections) {
    rows.emplace_back();
    for (const TConnectionCell& cell : row) rows.back().push_back(static_cast<int>(cell.state));
  }
  return rows;
}

/// Every resistance of the full square, row by row.
inline std::vector<double> Resistances(const TShortTestData& data) {
  std::vector<double> all;
  for (const auto& row : data.connections) {
    for (const TConnectionCell& cell : row) all.push_back(cell.resistance);
  }
  return all;
}

}  // namespace data_test
