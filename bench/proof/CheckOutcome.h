#pragma once

#include <string>
#include <vector>

namespace kxbench::proof {

/// What one check of a simulated device ended with.
struct CheckOutcome {
  std::vector<std::string> records;  ///< in the order sent, UTF-8
  std::string failure;               ///< why the check could not be carried out; empty when it was
  double seconds = 0;                ///< that the waits of the check take on a real tester
};

}  // namespace kxbench::proof
