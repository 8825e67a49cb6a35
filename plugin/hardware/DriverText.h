#pragma once

#include <string>

namespace shorttest {

/// Takes the text of the driver's pending error, converts it from the system's 8-bit encoding to UTF-8 and
/// gives the driver's memory back, also when the conversion fails. A driver that hands out no text yields a
/// text that says so.
std::string TakeDriverErrorText();

}  // namespace shorttest
