#include "bench/program/output/Output.h"

#include <system_error>

#include "bench/program/system/System.h"
#include "ui/terminal/Interrupt.h"

namespace kxbench {

StandardOutput::StandardOutput() : writer_(WriteToOutput) {}

void StandardOutput::Write(const std::string& text) {
  writer_.Post(text, BackgroundWriter::Kind::Awaited);
  if (!writer_.Wait(InterruptWatch::Insisted)) throw OutputAbandoned();
  const int error = writer_.Error();
  if (error != 0) throw Failure("cannot write to standard output: " + std::generic_category().message(error));
}

}  // namespace kxbench
