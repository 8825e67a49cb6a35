#pragma once

#include <cstdlib>
#include <string>

#include "tests/bench/program/Process.h"

/// The process finds the tester's driver in `folder`, before the one beside the program.
inline void UseDriverIn(const std::string& folder, Process& process) {
#ifdef _WIN32
  // Before what the libraries of the plug-in are found in.
  const char* const path = std::getenv("PATH");
  process.environment["PATH"] = folder + ";" + (path == nullptr ? "" : path);
#else
  process.environment["LD_LIBRARY_PATH"] = folder;
#endif
}
