#include "bench/proof/NumberWords.h"

#include <array>
#include <charconv>

namespace kxbench::proof {

std::string ExactNumber(double value) {
  std::array<char, 64> text{};
  return {text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr};
}

std::string NumberWord(double value, int digits) {
  std::array<char, 64> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, digits).ptr;
  return {text.data(), end};
}

std::string OhmWord(double ohm, int digits) { return NumberWord(ohm, digits) + " Ohm"; }

}  // namespace kxbench::proof
