#include "ui/terminal/PatientTerminal.h"

#include <utility>

#include "ui/terminal/Interrupt.h"

namespace kxbench {

PatientTerminal::PatientTerminal(std::unique_ptr<Terminal> inner)
    : inner_(std::move(inner)), writer_([terminal = inner_](std::string_view text) {
        terminal->Write(text);
        return 0;
      }) {}

PatientTerminal::~PatientTerminal() { writer_.Wait(InterruptWatch::Insisted); }

void PatientTerminal::Write(std::string_view text) {
  writer_.Post(std::string(text), BackgroundWriter::Kind::Awaited);
}

void PatientTerminal::Draw(std::string_view text) {
  writer_.Post(std::string(text), BackgroundWriter::Kind::Passing);
}

std::optional<std::string> PatientTerminal::ReadLine() {
  Settle();
  return inner_->ReadLine();
}

}  // namespace kxbench
