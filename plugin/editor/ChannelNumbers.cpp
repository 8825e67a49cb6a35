#include "plugin/editor/ChannelNumbers.h"

#include "text/NumberText.h"

namespace shorttest {

std::int32_t IntegerFromText(const std::string& text) {
  const auto value = TextToInteger(text);
  if (!value) throw ConversionError("\"" + text + "\" ist keine gültige ganze Zahl.");
  return *value;
}

double FloatFromText(const std::string& text) {
  const auto value = TextToFloat(text);
  if (!value) throw ConversionError("\"" + text + "\" ist keine gültige Zahl.");
  return *value;
}

std::int32_t ChannelIndex(const TShortTestData& data, const std::string& text) {
  const std::int32_t channel = IntegerFromText(text);
  if (channel < data.von) throw ChannelRangeError(text + " is too small.");
  if (channel > data.bis) throw ChannelRangeError(text + " is too large.");
  return channel - data.von;
}

}  // namespace shorttest
