#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

#include "plugin/data/ShorttestData.h"

namespace shorttest {

/// Where an item stands in the connection texts: a line, counted from 0, and the bytes (UTF-8) of that line
/// from `begin` up to `end`.
struct ItemPlace {
  enum class Text { Blocked, Skipped, Expected } text;
  std::size_t line;
  std::size_t begin;
  std::size_t end;
};

/// An item that is not what it should be; the message quotes it. Items of the connection texts have a place.
class WrongItem : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;

  std::optional<ItemPlace> place;
};

/// A text that is not the number it should be.
class ConversionError : public WrongItem {
 public:
  using WrongItem::WrongItem;
};

/// A channel number outside the range under test.
class ChannelRangeError : public WrongItem {
 public:
  using WrongItem::WrongItem;
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
