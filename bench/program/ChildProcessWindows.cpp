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

#include "bench/program/ChildProcess.h"
#include "bench/program/Failure.h"
#include "bench/program/System.h"

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

/// This process's variables with others, each ended by a zero, and one more zero.
std::wstring ChildVariables(const std::vector<std::pair<std::string, std::string>>& more) {
  std::wstring block;
  wchar_t* const own = GetEnvironmentStringsW();
  for (const wchar_t* variable = own; *variable != L'\0'; variable += std::wstring(variable).size() + 1) {
    const std::wstring text = variable;
    bool replaced = false;
    for (const auto& [name, value] : more) replaced = replaced || text.starts_with(WideText(name) + L"=");
    if (!replaced) block += text + L'\0';
  }
  FreeEnvironmentStringsW(own);
  for (const auto& [name, value] : more) block += WideText(name) + L"=" + WideText(value) + L'\0';
  return block + L'\0';
}

struct ChildPipe {
  ChildPipe() {
    if (!CreatePipe(&reading, &writing, nullptr, 0)) CannotStartChild();
  }
  HANDLE reading = nullptr;
  HANDLE writing = nullptr;
};

void LetInherit(HANDLE handle) { SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT); }

}  // namespace

struct ChildProcess::System {
  HANDLE process = nullptr;
  HANDLE input = nullptr;
  HANDLE output = nullptr;
};

ChildProcess::ChildProcess(const std::vector<std::string>& arguments,
                           const std::vector<std::pair<std::string, std::string>>& environment)
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
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  LetInherit(startup.hStdError);
  std::wstring line = L"kxbench";
  for (const std::string& argument : arguments) line += L" " + QuotedWord(WideText(argument));
  std::wstring variables = ChildVariables(environment);
  const std::wstring program = LoadedFile(nullptr).wstring();
  PROCESS_INFORMATION started{};
  const BOOL begun =
      CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT,
                     variables.data(), nullptr, &startup, &started);
  const DWORD error = GetLastError();
  CloseHandle(input.reading);
  CloseHandle(output.writing);
  system_->input = input.writing;
  system_->output = output.reading;
  if (!begun) {
    CloseInput();
    CloseHandle(system_->output);
    SetLastError(error);
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
