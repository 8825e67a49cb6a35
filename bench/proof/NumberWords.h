#pragma once

#include <string>

namespace kxbench::proof {

/// The shortest decimal text that reads back as the same number, whatever the locale is.
std::string ExactNumber(double value);

/// "0.42", "1.5e+06": so many significant digits, with a decimal point whatever the locale is.
std::string NumberWord(double value, int digits = 4);

/// The same with its unit: "42 Ohm".
std::string OhmWord(double ohm, int digits);

}  // namespace kxbench::proof
