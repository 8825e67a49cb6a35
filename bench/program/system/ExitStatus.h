#pragma once

namespace kxbench {

/// What the program's exit status says.
enum class ExitStatus : int {
  NoFindings = 0,
  Findings = 1,
  Failed = 2,     ///< it could not run
  Cancelled = 3,  ///< stopped by the user, or not carried to its end
};

/// The one of two results that the program ends with: a failure before a cancel, a cancel before findings. A
/// check that was not finished says nothing about the device, whatever had been found before.
constexpr ExitStatus Graver(ExitStatus a, ExitStatus b) {
  constexpr auto rank = [](ExitStatus status) {
    switch (status) {
      case ExitStatus::NoFindings:
        return 0;
      case ExitStatus::Findings:
        return 1;
      case ExitStatus::Cancelled:
        return 2;
      case ExitStatus::Failed:
        break;
    }
    return 3;
  };
  return rank(a) >= rank(b) ? a : b;
}

}  // namespace kxbench
