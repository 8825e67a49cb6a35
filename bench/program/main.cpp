#include "bench/program/Bench.h"
#include "bench/program/Failure.h"
#include "bench/program/System.h"
#include "ui/terminal/Terminal.h"

int main(int argc, char** argv) {
  using namespace kxbench;
  try {
    PrepareConsole();
    return static_cast<int>(RunBench(Utf8Arguments(argc, argv)));
  } catch (...) {
    OpenTerminal()->Write("kxbench: " + CurrentExceptionText() + "\n");
    return static_cast<int>(ExitStatus::Failed);
  }
}
