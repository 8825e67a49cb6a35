#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "plugin/data/ShorttestData.h"

namespace data_test {

/// The connection matrix at its plainest: both halves of one array, and the propagation written as the
/// recursion that defines it. Slow and deep on purpose; TShortTestData::Put must give the same cells.
class PlainMatrix {
 public:
  explicit PlainMatrix(const TShortTestData& data)
      : count_(data.Highconnections() + 1),
        cells_(static_cast<std::size_t>(count_) * static_cast<std::size_t>(count_)),
        rows_(static_cast<std::size_t>(count_)) {
    for (std::int32_t row = 0; row < count_; ++row) {
      rows_[static_cast<std::size_t>(row)] = cells_.data() + std::ptrdiff_t{row} * count_;
    }
    Read(data);
  }

  /// Takes over every pair. REQUIRES: as many channels.
  void Read(const TShortTestData& data) {
    for (std::int32_t row = 0; row < count_; ++row) {
      for (std::int32_t column = 0; column < count_; ++column)
        Pair(row, column) = {data.Get(row, column), data.GetR(row, column)};
    }
  }

  void Set(std::int32_t i, std::int32_t j, const TConnectionCell& cell) { Pair(i, j) = Pair(j, i) = cell; }

  const TConnectionCell& At(std::int32_t i, std::int32_t j) const { return rows_.data()[i][j]; }

  /// REQUIRES: a call stack that holds as many nested calls as there are unknown pairs.
  void Put(std::int32_t i, std::int32_t j, CellState state, double resistance);

 private:
  TConnectionCell& Pair(std::int32_t i, std::int32_t j) { return rows_.data()[i][j]; }

  std::int32_t count_;
  std::vector<TConnectionCell> cells_;
  std::vector<TConnectionCell*> rows_;
};

/// The first pair in which the two differ, in words. Resistances are compared bit for bit, so that a NaN
/// equals itself.
inline std::optional<std::string> Difference(const TShortTestData& data, const PlainMatrix& plain) {
  const auto describe = [](const TConnectionCell& cell) {
    return std::to_string(static_cast<int>(cell.state)) + " with " + std::to_string(cell.resistance) + " Ohm";
  };
  for (std::int32_t row = 0; row <= data.Highconnections(); ++row) {
    for (std::int32_t column = 0; column <= row; ++column) {
      const TConnectionCell actual{data.Get(row, column), data.GetR(row, column)};
      const TConnectionCell& expected = plain.At(row, column);
      if (actual.state != expected.state ||
          std::memcmp(&actual.resistance, &expected.resistance, sizeof actual.resistance) != 0) {
        return "pair " + std::to_string(row) + ", " + std::to_string(column) + ": " + describe(actual) +
               " instead of " + describe(expected);
      }
    }
  }
  return std::nullopt;
}

}  // namespace data_test
