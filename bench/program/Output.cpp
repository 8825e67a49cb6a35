#include "bench/program/Output.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

#include "bench/program/Failure.h"

namespace kxbench {

void StandardOutput::Write(const std::string& text) {
  const bool written =
      std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0;
  if (!written) {
    throw Failure("cannot write to standard output: " + std::generic_category().message(errno));
  }
}

}  // namespace kxbench
