#include "plugin/editor/NumberPosition.h"

#include <algorithm>

#include "text/NumberText.h"

namespace shorttest {

std::int32_t NumberLimits::Clip(std::int64_t number) const {
  return static_cast<std::int32_t>(std::max<std::int64_t>(minimum, std::min<std::int64_t>(number, maximum)));
}

void NumberPosition::Follow(const std::string& typed) {
  const auto number = TextToInteger(typed);
  if (number && limits_.minimum <= *number && *number <= limits_.maximum) value_ = *number;
}

}  // namespace shorttest
