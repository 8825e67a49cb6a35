#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <string>
#include <system_error>
#include <utility>

#include "bench/program/system/ChildProcess.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"

namespace kxbench {

namespace {

constexpr int ChildEndedOtherwise = 256;

[[noreturn]] void CannotStartChild() {
  throw Failure("cannot start a process: " +
                std::system_category().message(static_cast<int>(GetLastError())));
}

/// A word of a command line as the C library's start-up code splits it: backslashes count double before a
/// quote.
std::wstring QuotedWord(const std::wstring& word) {
  std::wstring quoted = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : word) {
    if (c == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  quoted.append(backslashes, L'\\');
  return quoted + L"\"";
}

std::wstring WideText(const std::string& utf8) { return PathFromUtf8(utf8).wstring(); }

struct ChildPipe {
  ChildPipe() {
    if (!CreatePipe(&reading, &writing, nullptr, 0)) CannotStartChild();
  }
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
};

/// Where a process's standard error goes: where this one's goes, or nowhere.
struct ChildErrors {
  explicit ChildErrors(bool dropped)
      : nowhere(dropped ? CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                      OPEN_EXISTING, 0, nullptr)
                        : nullptr),
        handle(dropped ? nowhere : GetStdHandle(STD_ERROR_HANDLE)) {}
  ~ChildErrors() {
    if (nowhere != nullptr) CloseHandle(nowhere);
  }
  ChildErrors(const ChildErrors&) = delete;
  ChildErrors& operator=(const ChildErrors&) = delete;

  HANDLE nowhere;
  HANDLE handle;
};

void LetInherit(HANDLE handle) { SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT); }

}  // namespace

struct ChildProcess::System {
  HANDLE process = nullptr;
  HANDLE input = nullptr;
  HANDLE output = nullptr;
};

ChildProcess::ChildProcess(const std::vector<std::string>& arguments, Errors errors)
    : system_(std::make_unique<System>()) {
  const ChildPipe input;
  const ChildPipe output;
  LetInherit(input.reading);
  LetInherit(output.writing);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.reading;
  startup.hStdOutput = output.writing;
  const ChildErrors error(errors == Errors::Dropped);
  startup.hStdError = error.handle;
  LetInherit(startup.hStdError);
  std::wstring line = L"kxbench";
  for (const std::string& argument : arguments) line += L" " + QuotedWord(WideText(argument));
  const std::wstring program = LoadedFile(nullptr).wstring();
  PROCESS_INFORMATION started{};
  const BOOL begun = CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                                    &startup, &started);
  const DWORD failure = GetLastError();
  CloseHandle(input.reading);
  CloseHandle(output.writing);
  system_->input = input.writing;
  system_->output = output.reading;
  if (!begun) {
    CloseInput();
    CloseHandle(system_->output);
    SetLastError(failure);
    CannotStartChild();
  }
  CloseHandle(started.hThread);
  system_->process = started.hProcess;
}

ChildProcess::~ChildProcess() {
  CloseInput();
  CloseHandle(system_->output);  // before the wait: it may still want to write
  Wait();
}

void ChildProcess::Write(const std::string& text) {
  for (std::size_t done = 0; done < text.size();) {
    DWORD count = 0;
    if (!WriteFile(system_->input, text.data() + done, static_cast<DWORD>(text.size() - done), &count,
                   nullptr)) {
      return;
    }
    done += count;
  }
}

std::size_t ChildProcess::Read(char* buffer, std::size_t size) {
  DWORD count = 0;
  return ReadFile(system_->output, buffer, static_cast<DWORD>(size), &count, nullptr) ? count : 0;
}

void ChildProcess::CloseInput() {
  if (system_->input != nullptr) CloseHandle(system_->input);
  system_->input = nullptr;
}

int ChildProcess::Wait() {
  if (system_->process == nullptr) return ChildEndedOtherwise;
  WaitForSingleObject(system_->process, INFINITE);
  DWORD status = 0;
  GetExitCodeProcess(system_->process, &status);
  CloseHandle(system_->process);
  system_->process = nullptr;
  return status <= 255 ? static_cast<int>(status) : ChildEndedOtherwise;
}

}  // namespace kxbench
