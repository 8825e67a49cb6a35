#pragma once

#include <string>

#include "plugin/data/ShorttestData.h"

namespace shorttest::testkit {

/// The matrix as text: one group a row, each the states up to and including the diagonal, for instance
/// "8 28 118" for three channels of which the first two are connected.
inline std::string MatrixText(const TShortTestData& data) {
  std::string text;
  for (int row = 0; row <= data.Highconnections(); ++row) {
    if (row > 0) text += " ";
    for (int column = 0; column <= row; ++column) {
      text += std::to_string(static_cast<int>(data.Get(row, column)));
    }
  }
  return text;
}

/// Sets the states of the lower triangle and the diagonal from such a text, resistances to "not measured".
inline void SetMatrix(TShortTestData& data, const std::string& text) {
  std::size_t at = 0;
  for (int row = 0; row <= data.Highconnections(); ++row) {
    for (int column = 0; column <= row; ++column) {
      data.SetC(row, column, static_cast<CellState>(text.at(at++) - '0'), NoResistance);
    }
    ++at;
  }
}

}  // namespace shorttest::testkit
