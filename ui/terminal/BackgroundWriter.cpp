#include "ui/terminal/BackgroundWriter.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <utility>

#include "ui/terminal/Interrupt.h"

namespace kxbench {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds SettleTime(100);
constexpr milliseconds ReaderGrace(200);
constexpr milliseconds LookForInterrupt(20);  // a signal handler cannot wake a waiting thread

}  // namespace

struct BackgroundWriter::State {
  WriteAll write;
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<std::pair<std::string, Kind>> texts;  ///< the first is being written
  std::size_t awaited = 0;
  int error = 0;
  bool started = false;
  bool closed = false;
  bool stuck = false;  ///< Settle has waited in vain since the last text was taken

  void Work() {
    std::unique_lock lock(mutex);
    for (;;) {
      changed.wait(lock, [this] { return closed || !texts.empty(); });
      if (texts.empty()) return;
      const std::string& text = texts.front().first;  // stays where it is: a deque grows at its end
      lock.unlock();
      const int failed = write(text);
      lock.lock();
      if (error == 0) error = failed;
      awaited -= texts.front().second == Kind::Awaited ? 1U : 0U;
      texts.pop_front();
      stuck = false;
      changed.notify_all();
    }
  }
};

BackgroundWriter::BackgroundWriter(WriteAll write) : state_(std::make_shared<State>()) {
  state_->write = std::move(write);
}

BackgroundWriter::~BackgroundWriter() {
  const std::lock_guard lock(state_->mutex);
  state_->closed = true;
  state_->changed.notify_all();
}

void BackgroundWriter::Post(std::string text, Kind kind) {
  const std::lock_guard lock(state_->mutex);
  state_->texts.emplace_back(std::move(text), kind);
  state_->awaited += kind == Kind::Awaited ? 1U : 0U;
  // Not before it is needed: the program may still split in two.
  if (!std::exchange(state_->started, true)) StartUnsignalled([state = state_] { state->Work(); });
  state_->changed.notify_all();
}

bool BackgroundWriter::Idle() const {
  const std::lock_guard lock(state_->mutex);
  return state_->texts.empty();
}

bool BackgroundWriter::Wait(const std::function<bool()>& enough) const {
  std::unique_lock lock(state_->mutex);
  const auto written = [this] { return state_->awaited == 0; };
  while (!enough()) {
    if (state_->changed.wait_for(lock, LookForInterrupt, written)) return true;
  }
  return state_->changed.wait_for(lock, ReaderGrace, written);
}

void BackgroundWriter::Settle() const {
  std::unique_lock lock(state_->mutex);
  const auto written = [this] { return state_->texts.empty(); };
  if (!state_->stuck) state_->stuck = !state_->changed.wait_for(lock, SettleTime, written);
}

int BackgroundWriter::Error() const {
  const std::lock_guard lock(state_->mutex);
  return state_->error;
}

}  // namespace kxbench
