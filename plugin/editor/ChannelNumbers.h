#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

#include "plugin/data/ShorttestData.h"

namespace shorttest {

/// A text that is not the number it should be. The message quotes the text.
class ConversionError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A channel number outside the range under test.
class ChannelRangeError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Reads a decimal 32-bit integer; blanks around it are skipped. Throws ConversionError.
std::int32_t IntegerFromText(const std::string& text);

/// Reads a floating-point number with the user's decimal separator; blanks around it are skipped. Throws
/// ConversionError.
double FloatFromText(const std::string& text);

/// Matrix index of the channel number in `text`. Throws ConversionError when it is no number, and
/// ChannelRangeError "<text> is too small." or "<text> is too large." when it lies outside `von`..`bis`.
std::int32_t ChannelIndex(const TShortTestData& data, const std::string& text);

}  // namespace shorttest
