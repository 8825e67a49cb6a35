#pragma once

#include <charconv>
#include <string>

namespace kxbench::results {

/// The shortest text with a decimal point that reads as this number again.
inline std::string PlainNumberText(double number) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

}  // namespace kxbench::results
