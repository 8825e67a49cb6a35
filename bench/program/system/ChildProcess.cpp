#include "bench/program/system/ChildProcess.h"

#include <array>

namespace kxbench {

std::optional<std::string> ChildProcess::ReadLine() {
  for (;;) {
    if (const std::size_t end = pending_.find('\n'); end != std::string::npos) {
      std::string line = pending_.substr(0, end);
      pending_.erase(0, end + 1);
      if (!line.empty() && line.back() == '\r') line.pop_back();
      return line;
    }
    std::array<char, 4096> buffer{};
    const std::size_t count = Read(buffer.data(), buffer.size());
    if (count == 0) return std::nullopt;
    pending_.append(buffer.data(), count);
  }
}

}  // namespace kxbench
