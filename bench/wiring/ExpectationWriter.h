#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kxbench::wiring {

/// What an expectation is to say.
struct ExpectedWiring {
  std::int32_t firstChannel = 1;
  std::int32_t lastChannel = 0;
  std::vector<std::vector<std::int32_t>> nets;  ///< channel numbers within the range, each in one net at most
};

/// Where an expectation's thresholds and options come from.
enum class OptionsFrom { File, Defaults };

/// Writes the expectation file `utf8Path`: the pairs of each net are connected, all others are not, nothing
/// is suspended or excluded. Thresholds and options are those of the file, where it exists and `options` says
/// so, else the plug-in's defaults. What is not the plug-in's in an existing file stays. The file is replaced
/// only once the new one is complete. Throws std::system_error naming the file.
/// REQUIRES: at most TShortTestData::MaxChannels.
void WriteExpectation(const std::string& utf8Path, const ExpectedWiring& wiring, OptionsFrom options);

}  // namespace kxbench::wiring
