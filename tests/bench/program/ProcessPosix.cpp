#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "tests/bench/program/Process.h"

namespace {

using Clock = std::chrono::steady_clock;

/// Far more than any of these runs takes; a process that hangs must not hang the tests.
constexpr auto LongestRun = std::chrono::seconds(180);

struct Pipe {
  Pipe() {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
    reading = ends[0];
    writing = ends[1];
  }
  ~Pipe() {
    close(reading);
    CloseWriting();
  }
  void CloseWriting() {
    if (writing >= 0) close(writing);
    writing = -1;
  }
  int reading;
  int writing;
};

void FillUp(int pipe) {
  fcntl(pipe, F_SETFL, O_NONBLOCK);
  const std::array<char, 4096> nothing{};
  while (write(pipe, nothing.data(), nothing.size()) > 0) {
  }
  fcntl(pipe, F_SETFL, 0);
}

[[noreturn]] void Become(const Process& process, const Pipe& output, const Pipe& errors) {
  if (!process.folder.empty() && chdir(process.folder.c_str()) != 0) _exit(126);
  // A shell that starts the tests in the background has some ignored, and they would stay so.
  for (const int number : {SIGINT, SIGQUIT, SIGHUP}) signal(number, SIG_DFL);
  for (const auto& [name, value] : process.environment) setenv(name.c_str(), value.c_str(), 1);
  const int input =
      open(process.inputFile.empty() ? "/dev/null" : process.inputFile.c_str(), O_RDONLY | O_NOCTTY);
  Pipe unread;
  close(unread.reading);
  const int collected = process.outputUnread ? unread.writing : output.writing;
  const int file = process.outputFile.empty() ? collected : open(process.outputFile.c_str(), O_WRONLY);
  dup2(input, STDIN_FILENO);
  dup2(file, STDOUT_FILENO);
  const int collectedErrors = process.errorsUnread ? unread.writing : errors.writing;
  dup2(process.errorFile.empty() ? collectedErrors : open(process.errorFile.c_str(), O_WRONLY | O_NOCTTY),
       STDERR_FILENO);
  Pipe stuck;
  if (process.outputStuck) {
    FillUp(stuck.writing);
    dup2(stuck.writing, STDOUT_FILENO);
    fcntl(stuck.reading, F_SETFD, 0);  // open as long as the process lives
  }
  if (process.streamsClosed) {
    close(STDOUT_FILENO);
    close(STDERR_FILENO);
  }

  std::vector<std::string> words = process.arguments;
  words.insert(words.begin(), process.program);
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  execv(process.program.c_str(), argv.data());
  _exit(127);
}

/// Collects both streams until they end; calls `idle` about every ten milliseconds meanwhile.
void Collect(const Pipe& output, const Pipe& errors, ProcessResult& result, pid_t child,
             const std::function<void(int)>& idle) {
  std::array<pollfd, 2> streams = {{{output.reading, POLLIN, 0}, {errors.reading, POLLIN, 0}}};
  const std::array<std::string*, 2> texts = {&result.output, &result.errors};
  const auto deadline = Clock::now() + LongestRun;
  for (int open = 2; open > 0;) {
    if (Clock::now() > deadline) {
      kill(child, SIGKILL);
      return;
    }
    idle(child);
    if (poll(streams.data(), streams.size(), 10) <= 0) continue;
    for (std::size_t i = 0; i < streams.size(); ++i) {
      if (streams[i].revents == 0) continue;
      std::array<char, 4096> buffer{};
      const ssize_t count = read(streams[i].fd, buffer.data(), buffer.size());
      if (count > 0) {
        texts[i]->append(buffer.data(), static_cast<std::size_t>(count));
      } else {
        streams[i].fd = -1;
        --open;
      }
    }
  }
}

}  // namespace

ProcessResult Process::RunAnd(const std::function<void(int)>& idle) const {
  Pipe output;
  Pipe errors;
  const pid_t child = fork();
  if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (child == 0) Become(*this, output, errors);
  output.CloseWriting();
  errors.CloseWriting();

  ProcessResult result{};
  Collect(output, errors, result, child, idle);
  int status = 0;
  waitpid(child, &status, 0);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  return result;
}

ProcessResult Process::Run() const {
  return RunAnd([](int) {});
}

ProcessResult Process::RunAndSignal(int signal, const std::string& when) const {
  bool sent = false;
  return RunAnd([&](int child) {
    std::error_code error;
    const auto size = std::filesystem::file_size(when, error);
    if (sent || error || size == 0) return;
    kill(child, signal);
    sent = true;
  });
}
