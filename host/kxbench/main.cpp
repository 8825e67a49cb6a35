#include "host/kxbench/Bench.h"
#include "host/kxbench/Failure.h"
#include "host/kxbench/System.h"
#include "ui_terminal/Terminal.h"

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
