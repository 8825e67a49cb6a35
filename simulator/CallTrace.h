#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// The log of the driver calls, one a line and each handed to the system at once, so that a crash of the
/// program loses none. Its form is described in docs/device-description.md.
class CallTrace {
 public:
  enum class Start {
    Anew,      ///< what the file held is gone
    Appended,  ///< to what it holds
  };

  /// Opens the file; no value when it cannot be opened.
  static std::optional<CallTrace> Open(const std::filesystem::path& path, Start start = Start::Anew);

  /// "NAME ARGUMENT... -> RESULT"
  void Call(std::string_view name, std::initializer_list<std::int32_t> arguments, std::int32_t result);

  /// Same with the shortest decimal text that reads back as the same number.
  void Call(std::string_view name, std::initializer_list<std::int32_t> arguments, double result);

  /// `NAME -> "TEXT"`; in the text, a backslash stands before `"` and `\`, and \n, \r, \t are written so.
  void Call(std::string_view name, std::string_view result);

  /// "NAME": a call without a result.
  void Call(std::string_view name);

  /// "# TEXT"
  void Comment(std::string_view text);

 private:
  struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  explicit CallTrace(std::FILE* file) : file_(file) {}

  void StartCall(std::string_view name, std::initializer_list<std::int32_t> arguments);
  void WriteLine();

  std::unique_ptr<std::FILE, Closer> file_;
  std::string line_;
};

}  // namespace simulator
