#pragma once

#include <string>

#include "bench/program/check/RunScript.h"
#include "bench/program/check/Series.h"

namespace kxbench {

/// What `kxbench check` is asked for.
struct CheckJob {
  std::string file;  ///< the expectation
  RunOptions run;
  SeriesOptions series;
  bool diagnose = false;
};

/// Checks the connected device, once or in a series, prints what that finds and keeps its result. Throws
/// Failure.
ExitStatus CheckDevice(const CommonOptions& common, const CheckJob& job);

}  // namespace kxbench
