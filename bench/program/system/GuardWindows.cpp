#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <system_error>

#include "bench/program/system/ExitStatus.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/Guard.h"
#include "bench/program/system/GuardWords.h"
#include "bench/program/system/System.h"
#include "ui/terminal/Interrupt.h"
#include "ui/terminal/Terminal.h"

/// Windows splits no process in two: the program starts itself again with the same command line, and a
/// variable tells the other process what it is for: "work PIPE GUARD" or "open PIPE GUARD MESSAGES", with
/// inherited handles.

namespace kxbench {

namespace {

constexpr const wchar_t* RoleVariable = L"KXBENCH_GUARD";

/// Far more than opening all relays takes. A driver that hangs must not hang the guard.
constexpr DWORD LongestOpeningMs = 10000;

/// The working process's end of the pipe to the guard.
HANDLE toGuard = nullptr;

[[noreturn]] void CannotGuard() {
  throw Failure("cannot set up the guard: " +
                std::system_category().message(static_cast<int>(GetLastError())));
}

struct Role {
  std::string work;  ///< "work", "open"; empty in the process that the user started
  std::uintptr_t pipe = 0;
  std::uintptr_t guard = 0;
  GuardNews news;  ///< what is to be opened
};

/// What this process is for. The variable is taken away: it is not meant for others.
Role TakeRole() {
  const wchar_t* value = _wgetenv(RoleVariable);
  if (value == nullptr) return {};
  std::istringstream words(Utf8FromPath(std::filesystem::path(value)));
  _wputenv_s(RoleVariable, L"");
  Role role;
  words >> role.work >> role.pipe >> role.guard >> std::ws;
  std::string messages;
  std::getline(words, messages, '\0');
  role.news = ReadNews(messages);
  return role;
}

void WriteMessage(HANDLE pipe, const std::string& text) {
  DWORD written = 0;
  WriteFile(pipe, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

/// A process that this one started, and what it said.
class StartedProcess {
 public:
  /// `what` is the first word of its role, `more` the last.
  StartedProcess(const std::string& what, const std::string& more) {
    if (!CreatePipe(&reading_, &writing_, nullptr, 0)) CannotGuard();
    const HANDLE self = GetCurrentProcess();
    HANDLE guard = nullptr;
    if (!DuplicateHandle(self, self, self, &guard, SYNCHRONIZE, TRUE, 0)) CannotGuard();
    SetHandleInformation(writing_, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    SetEnvironment(Utf8FromPath(std::filesystem::path(RoleVariable)),
                   what + " " + std::to_string(reinterpret_cast<std::uintptr_t>(writing_)) + " " +
                       std::to_string(reinterpret_cast<std::uintptr_t>(guard)) + " " + more);
    Start();
    CloseHandle(writing_);
    CloseHandle(guard);
  }
  ~StartedProcess() {
    CloseHandle(reading_);
    CloseHandle(process_);
    CloseHandle(job_);
  }
  StartedProcess(const StartedProcess&) = delete;
  StartedProcess& operator=(const StartedProcess&) = delete;

  /// False when it has not ended in that time.
  bool EndsWithin(DWORD milliseconds) const {
    return WaitForSingleObject(process_, milliseconds) == WAIT_OBJECT_0;
  }
  void End() const { TerminateProcess(process_, 1); }

  DWORD Status() const {
    DWORD status = 1;
    GetExitCodeProcess(process_, &status);
    return status;
  }

  /// What it said so far.
  std::string Said() const {
    std::string text;
    std::array<char, 4096> buffer{};
    for (DWORD waiting = 0; PeekNamedPipe(reading_, nullptr, 0, nullptr, &waiting, nullptr) && waiting > 0;) {
      DWORD count = 0;
      if (!ReadFile(reading_, buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr)) break;
      text.append(buffer.data(), count);
    }
    return text;
  }

 private:
  /// A crash ends a process of this job at once, without a box that somebody would have to close first. The
  /// job must not end its processes with the guard: the working process opens the relays by itself then.
  HANDLE NewJob() const {
    const HANDLE job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
    return job;
  }

  void Start() {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = Inherited(STD_INPUT_HANDLE);
    startup.hStdOutput = Inherited(STD_OUTPUT_HANDLE);
    startup.hStdError = Inherited(STD_ERROR_HANDLE);
    std::wstring line = GetCommandLineW();
    const std::wstring program = LoadedFile(nullptr).wstring();
    PROCESS_INFORMATION started{};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_SUSPENDED, nullptr,
                        nullptr, &startup, &started)) {
      CannotGuard();
    }
    process_ = started.hProcess;
    job_ = NewJob();
    AssignProcessToJobObject(job_, process_);
    ResumeThread(started.hThread);
    CloseHandle(started.hThread);
  }

  static HANDLE Inherited(DWORD stream) {
    const HANDLE handle = GetStdHandle(stream);
    SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    return handle;
  }

  HANDLE reading_ = nullptr;
  HANDLE writing_ = nullptr;
  HANDLE process_ = nullptr;
  HANDLE job_ = nullptr;
};

/// Opens all relays in a process of its own: a driver that has failed once may fail again. Empty when it went
/// well, else what went wrong.
std::string OpenInAProcess(const GuardNews& news) {
  try {
    std::string messages = DriverMessage(news.driver);
    for (const std::string& file : news.expectations) messages += ExpectationMessage(file);
    const StartedProcess started("open", messages);
    if (!started.EndsWithin(LongestOpeningMs)) {
      started.End();
      return "the driver does not answer";
    }
    const std::string answer = started.Said();
    return answer.empty() ? "the driver ended the process that was to open them" : OneLine(answer);
  } catch (const Failure& failure) {
    return failure.what();
  }
}

std::string HowItEnded(DWORD status) {
  std::ostringstream text;
  text << "the program ended in the middle of its work (exit status ";
  if (status > 0xFFFF) text << "0x" << std::hex << std::uppercase;
  text << status << ")";
  return text.str();
}

/// The guard's whole life; the program's exit status.
int Guard() {
  const StartedProcess work("work", "");
  work.EndsWithin(INFINITE);
  const GuardNews said = ReadNews(work.Said());
  if (said.done) return static_cast<int>(work.Status());
  const std::string failure = said.driver.empty() ? "" : OpenInAProcess(said);
  OpenTerminal()->Write("kxbench: " + GuardLine(HowItEnded(work.Status()), said.driver, failure) + "\n");
  return static_cast<int>(ExitStatus::Failed);
}

/// Lets this process end as on Ctrl-C when the guard has gone.
void WatchGuard(HANDLE guard) {
  StartUnsignalled([guard] {
    if (WaitForSingleObject(guard, INFINITE) == WAIT_OBJECT_0) InterruptWatch::Interrupt();
  });
}

}  // namespace

void EnterGuard() {
  if (toGuard != nullptr) return;
  const Role role = TakeRole();
  if (role.work.empty()) std::exit(Guard());
  const auto pipe = reinterpret_cast<HANDLE>(role.pipe);
  if (role.work == "open") {
    WriteMessage(pipe, OpenEveryRelay(role.news) + "\n");
    std::exit(0);  // the driver's own clean-up runs
  }
  toGuard = pipe;
  SetHandleInformation(toGuard, HANDLE_FLAG_INHERIT, 0);
  WatchGuard(reinterpret_cast<HANDLE>(role.guard));
}

void TellGuardOfDriver() {
  if (toGuard == nullptr) return;
  if (const auto driver = LoadedLibrary(DriverLibraryName())) {
    WriteMessage(toGuard, DriverMessage(Utf8FromPath(*driver)));
  }
}

void SendToGuard(const std::string& message) {
  if (toGuard != nullptr) WriteMessage(toGuard, message);
}

}  // namespace kxbench
