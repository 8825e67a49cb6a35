#include <cstdio>
#include <new>
#include <string>

#include "bench/program/Bench.h"
#include "bench/program/output/Output.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/Guard.h"
#include "bench/program/system/System.h"
#include "ui/terminal/Interrupt.h"
#include "ui/terminal/Terminal.h"

namespace {

int End(kxbench::ExitStatus status, const std::string& line) {
  kxbench::OpenTerminal()->Write("kxbench: " + line + "\n");
  return static_cast<int>(status);
}

int RunProgram(int argc, char** argv) {
  using namespace kxbench;
  try {
    OpenStandardStreams();
    PrepareConsole();
    return static_cast<int>(RunBench(Utf8Arguments(argc, argv)));
  } catch (const OutputAbandoned& abandoned) {
    return End(ExitStatus::Cancelled, abandoned.what());
  } catch (const std::bad_alloc&) {
    std::fputs("kxbench: out of memory\n", stderr);  // needs none
    return static_cast<int>(ExitStatus::Failed);
  } catch (...) {
    return End(ExitStatus::Failed, CurrentExceptionText());
  }
}

}  // namespace

int main(int argc, char** argv) {
  const kxbench::InterruptWatch watch;  // the last line that is written waits for its reader too
  const int status = RunProgram(argc, argv);
  kxbench::LeaveGuard();
  return status;
}
