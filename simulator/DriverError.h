#pragma once

#include <stdexcept>

namespace simulator {

/// A driver call that fails; its text (UTF-8) becomes the driver's pending error.
class DriverError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace simulator
