#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

#include "bench/program/system/ChildProcess.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"

extern char** environ;

namespace kxbench {

namespace {

constexpr const char* OwnProgram = "/proc/self/exe";
constexpr int EndedOtherwise = 256;

[[noreturn]] void CannotStart(int error) {
  throw Failure("cannot start a process: " + std::generic_category().message(error));
}

/// A pipe whose ends no other process inherits by chance.
std::array<int, 2> NewPipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) CannotStart(errno);
  return ends;
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

struct ChildProcess::System {
  pid_t process = -1;
  int input = -1;
  int output = -1;
};

ChildProcess::ChildProcess(const std::vector<std::string>& arguments, Errors errors)
    : system_(std::make_unique<System>()) {
  const std::array<int, 2> input = NewPipe();
  const std::array<int, 2> output = NewPipe();
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
  std::vector<std::string> words = arguments;
  words.insert(words.begin(), "kxbench");
  if (errors == Errors::Dropped) {
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  }
  const int error =
      posix_spawn(&system_->process, OwnProgram, &actions, nullptr, Pointers(words).data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(input[0]);
  close(output[1]);
  system_->input = input[1];
  system_->output = output[0];
  if (error != 0) {
    system_->process = -1;
    CloseInput();
    close(system_->output);
    CannotStart(error);
  }
}

ChildProcess::~ChildProcess() {
  CloseInput();
  close(system_->output);  // before the wait: it may still want to write
  Wait();
}

void ChildProcess::Write(const std::string& text) {
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t count = write(system_->input, text.data() + done, text.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    done += static_cast<std::size_t>(count);
  }
}

std::size_t ChildProcess::Read(char* buffer, std::size_t size) {
  for (;;) {
    const ssize_t count = read(system_->output, buffer, size);
    if (count < 0 && errno == EINTR) continue;
    return count > 0 ? static_cast<std::size_t>(count) : 0;
  }
}

void ChildProcess::CloseInput() {
  if (system_->input >= 0) close(system_->input);
  system_->input = -1;
}

int ChildProcess::Wait() {
  if (system_->process < 0) return EndedOtherwise;
  int status = 0;
  while (waitpid(system_->process, &status, 0) < 0 && errno == EINTR) {
  }
  system_->process = -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : EndedOtherwise;
}

}  // namespace kxbench
