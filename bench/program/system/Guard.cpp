#include "bench/program/system/Guard.h"

#include <cstddef>
#include <set>

#include "bench/program/system/GuardWords.h"

namespace kxbench {

namespace {

/// The guard reads when the work has ended: until then everything said must find room in a pipe. A script
/// that names more files than that leaves the last ones untold.
constexpr std::size_t MostBytesOfNames = 30000;

}  // namespace

void TellGuardOfExpectation(const std::string& file) {
  static std::set<std::string> told;
  static std::size_t bytes = 0;
  const std::string message = ExpectationMessage(file);
  const bool oneLine = message.find('\n') + 1 == message.size();
  if (!oneLine || bytes + message.size() > MostBytesOfNames || !told.insert(file).second) return;
  bytes += message.size();
  SendToGuard(message);
}

void LeaveGuard() { SendToGuard(DoneMessage()); }

}  // namespace kxbench
