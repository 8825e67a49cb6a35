#include <windows.h>

#include <array>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>

#include "tests/bench/program/Process.h"

namespace {

/// Far more than any of these runs takes; a process that hangs must not hang the tests.
constexpr DWORD LongestRunMs = 180000;

[[noreturn]] void Fail(const char* what) {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
}

std::wstring Wide(const std::string& utf8) {
  return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).wstring();
}

class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) : handle_(handle) {}
  ~Handle() { Close(); }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  HANDLE Get() const { return handle_; }
  HANDLE* Address() { return &handle_; }
  void Close() {
    if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
    handle_ = INVALID_HANDLE_VALUE;
  }

 private:
  HANDLE handle_ = INVALID_HANDLE_VALUE;
};

/// Only the writing end is for the process.
struct Pipe {
  Pipe() {
    if (!CreatePipe(reading.Address(), writing.Address(), nullptr, 0)) Fail("pipe");
    SetHandleInformation(writing.Get(), HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  }
  /// Reads until the other side is closed. CR and LF are one line end, as the C library has it for text.
  std::string ReadAll() {
    std::string text;
    std::array<char, 4096> buffer{};
    for (DWORD count = 0;
         ReadFile(reading.Get(), buffer.data(), buffer.size(), &count, nullptr) && count > 0;) {
      text.append(buffer.data(), count);
    }
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos; ++at) text.erase(at, 1);
    return text;
  }
  Handle reading;
  Handle writing;
};

/// A word as the C library of the process takes it apart again.
std::wstring Quoted(const std::string& word) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : Wide(word)) {
    if (c == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

std::wstring CommandLine(const Process& process) {
  std::wstring line = Quoted(process.program);
  for (const std::string& argument : process.arguments) line += L' ' + Quoted(argument);
  return line;
}

/// The test's own variables for as long as the object lives: a process gets a copy when it starts.
class Environment {
 public:
  explicit Environment(const std::map<std::string, std::string>& variables) : variables_(variables) {
    for (const auto& [name, value] : variables_) {
      SetEnvironmentVariableW(Wide(name).c_str(), Wide(value).c_str());
    }
  }
  ~Environment() {
    for (const auto& [name, value] : variables_) SetEnvironmentVariableW(Wide(name).c_str(), nullptr);
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

 private:
  const std::map<std::string, std::string>& variables_;
};

/// What belongs to it ends with it.
class Job {
 public:
  Job() : job_(CreateJobObjectW(nullptr, nullptr)) {
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job_.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits);
  }
  void Take(HANDLE process) { AssignProcessToJobObject(job_.Get(), process); }

 private:
  Handle job_;
};

PROCESS_INFORMATION Start(const Process& process, const Pipe& output, const Pipe& errors) {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  const Handle nothing(CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                   OPEN_EXISTING, 0, nullptr));
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = nothing.Get();
  startup.hStdOutput = output.writing.Get();
  startup.hStdError = errors.writing.Get();
  std::wstring line = CommandLine(process);
  const std::wstring folder = Wide(process.folder);
  PROCESS_INFORMATION started{};
  const Environment environment(process.environment);
  if (!CreateProcessW(Wide(process.program).c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                      folder.empty() ? nullptr : folder.c_str(), &startup, &started)) {
    Fail(process.program.c_str());
  }
  CloseHandle(started.hThread);
  return started;
}

ProcessResult RunToEnd(const Process& process) {
  Pipe output;
  Pipe errors;
  if (process.outputUnread) output.reading.Close();
  ProcessResult result{};
  // They end when the process has: the job goes before them.
  std::jthread outputReader;
  std::jthread errorReader;
  Job job;
  const PROCESS_INFORMATION started = Start(process, output, errors);
  const Handle child(started.hProcess);
  job.Take(child.Get());
  output.writing.Close();
  errors.writing.Close();
  outputReader = std::jthread([&] { result.output = output.ReadAll(); });
  errorReader = std::jthread([&] { result.errors = errors.ReadAll(); });

  if (WaitForSingleObject(child.Get(), LongestRunMs) == WAIT_TIMEOUT) TerminateProcess(child.Get(), 0xDEAD);
  outputReader.join();
  errorReader.join();
  DWORD status = 0;
  GetExitCodeProcess(child.Get(), &status);
  result.status = static_cast<int>(status);
  return result;
}

}  // namespace

ProcessResult Process::Run() const { return RunToEnd(*this); }
