#pragma once

#include <string>

namespace shorttest {

/// The decimal separator of the user's regional settings (UTF-8). Does not touch the process's locale. A
/// point when the user's locale is not installed or not set.
std::string UserDecimalSeparator();

}  // namespace shorttest
