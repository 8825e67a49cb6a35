#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plugin/data/ShorttestData.h"

namespace data_test {

/// What a file says, read a second time: slow, character by character, and sharing nothing with the reader
/// under test.
struct PlainExpectation {
  /// Stands for a cell that lies past the end of the file; any state that is not defined will do there.
  static constexpr int BehindTheEnd = -1;

  std::int32_t von = 0;
  std::int32_t bis = 0;
  double Schwelle = 0.0;
  double Schwelle2 = 0.0;
  std::int32_t U_Control = 0;
  std::int32_t LastRelaisKarte = 0;
  std::int32_t LastRelais = 0;
  std::int32_t Timeout = 0;
  std::int32_t MaxError = 0;
  std::vector<std::vector<int>> states;
};

/// Reads the content of an expectation file, numbers with `separator` as their decimal separator.
/// REQUIRES: its range holds at most a few thousand channels.
PlainExpectation ReadPlainly(const std::string& content, char separator);

/// The two halves of it: everything but the states, and the states of the range that was read.
PlainExpectation ReadKeysPlainly(const std::string& content, char separator);
void ReadStatesPlainly(const std::string& content, PlainExpectation& result);

/// In what `data` differs from `expected`; empty when in nothing.
std::string Difference(const TShortTestData& data, const PlainExpectation& expected);

}  // namespace data_test
