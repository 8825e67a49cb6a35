#include "bench/program/proof/ProofWorkers.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <sstream>
#include <thread>

#include "bench/program/system/Failure.h"

namespace kxbench {

namespace {

/// Requests that a worker gets at a time: while it works on them, nobody waits for anybody.
constexpr std::size_t RequestsAtATime = 16;

constexpr auto BetweenLooks = std::chrono::milliseconds(100);
constexpr std::string_view FailedWord = "failed ";

std::string AnswerOf(ChildProcess& worker) {
  const std::optional<std::string> answer = worker.ReadLine();
  if (!answer) throw Failure("a process that checks faults has ended in the middle of its work");
  if (answer->starts_with(FailedWord)) throw Failure(answer->substr(FailedWord.size()));
  return *answer;
}

/// The requests that no worker has yet, and what happened so far.
class Queue {
 public:
  explicit Queue(std::size_t count) : count_(count) {}

  /// The first of the next requests; their number is less than RequestsAtATime at the end alone.
  std::size_t Next() { return stopped_ ? count_ : next_.fetch_add(RequestsAtATime); }
  void Stop() { stopped_ = true; }
  void CountAnswer() { ++answered_; }
  std::size_t Answered() const { return answered_; }

  void Fail(const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (!failure_) failure_ = text;
    stopped_ = true;
  }
  void EndWorker() {
    {
      const std::lock_guard lock(mutex_);
      ++ended_;
    }
    changed_.notify_all();
  }

  /// Waits a little; true when `workers` workers have ended.
  bool AllEnded(std::size_t workers) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, BetweenLooks, [&] { return ended_ == workers; });
  }

  const std::optional<std::string>& FailureText() const { return failure_; }

 private:
  std::size_t count_;
  std::atomic<std::size_t> next_{0};
  std::atomic<std::size_t> answered_{0};
  std::atomic<bool> stopped_{false};
  std::mutex mutex_;
  std::condition_variable changed_;
  std::size_t ended_ = 0;
  std::optional<std::string> failure_;
};

void Serve(ChildProcess& worker, const std::vector<ProofRequest>& requests, Queue& queue) {
  for (;;) {
    const std::size_t first = queue.Next();
    if (first >= requests.size()) return;
    const std::size_t end = std::min(first + RequestsAtATime, requests.size());
    std::string lines;
    for (std::size_t i = first; i < end; ++i) lines += requests[i].line + "\n";
    worker.Write(lines);
    for (std::size_t i = first; i < end; ++i) {
      requests[i].take(AnswerOf(worker));
      queue.CountAnswer();
    }
  }
}

}  // namespace

ProofWorkers::ProofWorkers(const ProofTask& task, std::size_t jobs) {
  for (std::size_t i = 0; i < jobs; ++i) workers_.push_back(std::make_unique<ChildProcess>(task.Arguments()));
  ready_.assign(jobs, false);
  ReadGoodDevice(*workers_.front(), true);
  ready_.front() = true;
}

void ProofWorkers::ReadGoodDevice(ChildProcess& worker, bool keep) {
  std::istringstream words(AnswerOf(worker));
  words.imbue(std::locale::classic());
  std::string good;
  double seconds = 0;
  std::size_t count = 0;
  words >> good >> seconds >> count;
  if (!words || good != "good") throw Failure("a process that checks faults says what nobody understands");
  std::vector<std::string> findings;
  for (std::size_t i = 0; i < count; ++i) findings.push_back(AnswerOf(worker));
  if (!keep) return;
  goodSeconds_ = seconds;
  goodFindings_ = std::move(findings);
}

bool ProofWorkers::Answer(const std::vector<ProofRequest>& requests, const std::function<bool()>& cancelled,
                          const std::function<void(std::size_t answered)>& watch) {
  Queue queue(requests.size());
  std::vector<std::thread> threads;
  std::vector<char> ready(ready_.begin(), ready_.end());
  for (std::size_t i = 0; i < workers_.size(); ++i) {
    threads.emplace_back([this, i, &requests, &queue, &ready] {
      try {
        if (ready[i] == 0) ReadGoodDevice(*workers_[i], false);
        ready[i] = 1;
        Serve(*workers_[i], requests, queue);
      } catch (const std::exception& error) {
        queue.Fail(error.what());
      }
      queue.EndWorker();
    });
  }
  bool stopped = false;
  while (!queue.AllEnded(workers_.size())) {
    watch(queue.Answered());
    if (stopped || !cancelled()) continue;
    stopped = true;
    queue.Stop();
  }
  for (std::thread& thread : threads) thread.join();
  ready_.assign(ready.begin(), ready.end());
  if (stopped || cancelled()) return false;
  if (queue.FailureText()) throw Failure(*queue.FailureText());
  return true;
}

}  // namespace kxbench
