#include "bench/program/system/Failure.h"

#include <exception>

#include "framework/kxscript.h"
#include "ui/terminal/Printable.h"

namespace kxbench {

Failure::Failure(const std::string& line) : std::runtime_error(OneLine(line)) {}

std::string OneLine(const std::string& text) {
  std::string line;
  bool gap = false;
  for (const char c : text) {
    const bool ends = c == '\n' || c == '\r';
    if (ends) {
      gap = true;
    } else if (!(gap && (c == ' ' || c == '\t'))) {
      while (gap && !line.empty() && line.back() == ' ') line.pop_back();
      if (gap && !line.empty()) line += ' ';
      gap = false;
      line += c;
    }
  }
  return Printable(line);
}

std::string CurrentExceptionText() {
  try {
    throw;
  } catch (const std::exception& error) {
    return OneLine(error.what());
  } catch (...) {
    return "an exception of an unknown kind";
  }
}

void CallExtension(const std::function<void()>& call) {
  std::string text;
  std::size_t column = 0;
  try {
    call();
    return;
  } catch (const TKXScriptError& error) {
    text = error.what();
    column = error.Column();
  } catch (...) {
    text = CurrentExceptionText();
  }
  // Outside the handlers: the library's exception is gone by now.
  if (column > 0) throw TKXScriptError(text, column);
  throw Failure(text);
}

}  // namespace kxbench
