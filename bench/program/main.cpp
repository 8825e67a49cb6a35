#include <cstdio>
#include <new>

#include "bench/program/Bench.h"
#include "bench/program/Failure.h"
#include "bench/program/System.h"
#include "ui/terminal/Terminal.h"

int main(int argc, char** argv) {
  using namespace kxbench;
  try {
    PrepareConsole();
    return static_cast<int>(RunBench(Utf8Arguments(argc, argv)));
  } catch (const std::bad_alloc&) {
    std::fputs("kxbench: out of memory\n", stderr);  // needs none
    return static_cast<int>(ExitStatus::Failed);
  } catch (...) {
    OpenTerminal()->Write("kxbench: " + CurrentExceptionText() + "\n");
    return static_cast<int>(ExitStatus::Failed);
  }
}
