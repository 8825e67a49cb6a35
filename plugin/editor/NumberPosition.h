#pragma once

#include <cstdint>
#include <string>

namespace shorttest {

/// What a number field's arrows can reach, and the size of one step.
struct NumberLimits {
  std::int32_t minimum;
  std::int32_t maximum;
  std::int32_t step = 1;

  /// The nearest number within the limits; the minimum where it lies above the maximum.
  std::int32_t Clip(std::int64_t number) const;
};

/// The whole number that an edit and its arrows hold together. It follows what is typed as long as that is a
/// number within the limits; with any other text it keeps its last value.
class NumberPosition {
 public:
  NumberPosition(const NumberLimits& limits, std::int32_t value)
      : limits_(limits), value_(limits.Clip(value)) {}

  std::int32_t Value() const { return value_; }
  const NumberLimits& Limits() const { return limits_; }

  /// Clips to the limits.
  void Set(std::int32_t value) { value_ = limits_.Clip(value); }

  /// One step up (1) or down (-1), clipped to the limits.
  void Step(int direction) {
    value_ = limits_.Clip(std::int64_t{value_} + std::int64_t{direction} * limits_.step);
  }

  /// Takes the value as it is, even outside the limits.
  void Keep(std::int32_t value) { value_ = value; }

  void Follow(const std::string& typed);

  /// Change the limits of later movements. The value stays, even outside the new limits.
  void SetMinimum(std::int32_t minimum) { limits_.minimum = minimum; }
  void SetMaximum(std::int32_t maximum) { limits_.maximum = maximum; }

 private:
  NumberLimits limits_;
  std::int32_t value_;
};

}  // namespace shorttest
