#pragma once

#include <functional>
#include <stdexcept>
#include <string>

namespace kxbench {

/// Why the program cannot do what it was asked to: one line for the user, without the program's name.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string& line);
};

/// `text` on one line and printable, because it may come from a driver or a file: line ends, with the blanks
/// around them, become one blank.
std::string OneLine(const std::string& text);

/// The text of the exception that is being handled; for one without a text, that its kind is unknown.
std::string CurrentExceptionText();

/// Calls into an extension's library. Whatever that throws is thrown on as a Failure or TKXScriptError of our
/// own, because an exception object of the library must not outlive it.
void CallExtension(const std::function<void()>& call);

}  // namespace kxbench
