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

/// `text` on one line and printable: line ends and what surrounds them become one blank. What it says may
/// come from a driver or a file.
std::string OneLine(const std::string& text);

/// What the exception says that is being handled; for one that says nothing, that it was of an unknown kind.
std::string CurrentExceptionText();

/// Calls into an extension's library. Whatever it throws goes on as a Failure or TKXScriptError of our own,
/// because an exception object of the library's must not outlive it.
void CallExtension(const std::function<void()>& call);

}  // namespace kxbench
