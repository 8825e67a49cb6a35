#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kxbench {

/// Another process of this program, with a pipe to its standard input and one from its standard output;
/// standard error is this program's. Started by one thread, used by any one thread.
class ChildProcess {
 public:
  /// What becomes of its standard error.
  enum class Errors { Shown, Dropped };

  /// Starts the program with `arguments` (UTF-8). Throws Failure.
  explicit ChildProcess(const std::vector<std::string>& arguments, Errors errors = Errors::Shown);

  /// Ends its input and waits for its end.
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  /// Writes all of `text` to its input. What nobody reads is lost: the next ReadLine tells.
  void Write(const std::string& text);

  /// The next line of its output without its end; no value at its end.
  std::optional<std::string> ReadLine();

  /// Ends its input.
  void CloseInput();

  /// Waits for its end; its exit status, or a number above 255 when it was ended otherwise.
  int Wait();

 private:
  struct System;

  /// More of its output; 0 at its end.
  std::size_t Read(char* buffer, std::size_t size);

  std::unique_ptr<System> system_;
  std::string pending_;
};

}  // namespace kxbench
