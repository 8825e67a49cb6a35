#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "plugin/data/ShorttestData.h"
#include "text/IniText.h"

namespace shorttest {

/// The channel range of an expectation file; the default for a bound that is missing or no integer.
struct ExpectationRange {
  std::int32_t von;
  std::int32_t bis;
};
ExpectationRange ReadExpectationRange(const IniText& ini);

/// What the content of an expectation file says. It depends on the content and on the decimal separator in
/// force alone. Missing or unreadable keys take their defaults and damaged data lines are read as they stand,
/// see docs/expectation-file.md; no content is refused but one whose range holds more than
/// TShortTestData::MaxChannels, with std::length_error and before any memory is taken for it.
TShortTestData ReadExpectationText(std::string_view content);

/// The content of an expectation file that held `oldContent` (empty: there was none) once `data` is saved in
/// it. What is not ours stays as it is.
std::string WriteExpectationText(const TShortTestData& data, std::string_view oldContent);

}  // namespace shorttest
