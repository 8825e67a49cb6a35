#include "bench/results/DatabaseThread.h"

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "bench/results/Schema.h"
#include "bench/results/Spool.h"
#include "bench/results/Unsignalled.h"

namespace kxbench::results {

/// What the thread and its owner share. The thread may outlive the owner, when nothing wakes it.
struct DatabaseThread::State {
  StoreUrl url;
  std::chrono::milliseconds patience{};
  std::filesystem::path spoolFile;

  std::mutex mutex;  // for all that follows
  std::condition_variable changed;
  Task task;
  bool running = false;  // a task is given, or being run
  bool late = false;     // nobody waits for it any more
  Outcome outcome;
  bool deliver = false;
  bool stop = false;
  bool ended = false;
  std::string deliveryFailure;
  std::shared_ptr<Database> database;  // changed by the thread alone
  std::shared_ptr<Spool> spool;        // the thread's alone
};

namespace {

using Outcome = DatabaseThread::Outcome;

}  // namespace

DatabaseThread::DatabaseThread(const StoreUrl& url, std::chrono::milliseconds patience,
                               std::filesystem::path spool)
    : state_(std::make_shared<State>()) {
  state_->url = url;
  state_->patience = patience;
  state_->spoolFile = std::move(spool);
  StartWithoutSignals([state = state_] { Live(state); });
}

DatabaseThread::~DatabaseThread() {
  std::unique_lock lock(state_->mutex);
  state_->stop = true;
  state_->changed.notify_all();
  const auto ended = [this] { return state_->ended; };
  if (!state_->late && state_->changed.wait_for(lock, state_->patience, ended)) return;
  if (state_->database) state_->database->Interrupt();
  // What is left is a call of the system that nothing wakes: its thread ends with the process.
  state_->changed.wait_for(lock, std::chrono::milliseconds(200), ended);
}

DatabaseThread::Outcome DatabaseThread::Run(Task task, std::chrono::milliseconds patience) {
  std::unique_lock lock(state_->mutex);
  state_->task = std::move(task);
  state_->running = true;
  state_->changed.notify_all();
  if (state_->changed.wait_for(lock, patience, [this] { return !state_->running; })) return state_->outcome;
  state_->late = true;
  if (state_->database) state_->database->Interrupt();
  Outcome outcome;
  outcome.end = Outcome::End::Late;
  outcome.failure = state_->url.shown + ": no answer within " + std::to_string(patience.count()) + " ms";
  return outcome;
}

bool DatabaseThread::IsStuck() const {
  const std::lock_guard lock(state_->mutex);
  return state_->late;
}

void DatabaseThread::DeliverSpool() {
  const std::lock_guard lock(state_->mutex);
  state_->deliver = true;
  state_->changed.notify_all();
}

std::string DatabaseThread::TakeDeliveryFailure() {
  const std::lock_guard lock(state_->mutex);
  return std::exchange(state_->deliveryFailure, "");
}

namespace {

/// The connection, made where there is none.
template <typename State>
Database& Connected(State& state) {
  if (!state.database) {
    auto database = std::make_shared<Database>(state.url, state.patience, Database::Missing::Make);
    {
      const std::lock_guard lock(state.mutex);
      state.database = database;  // from now on it can be interrupted
    }
    MigrateSchema(*database);
  }
  return *state.database;
}

template <typename State>
void Disconnect(State& state) {
  std::shared_ptr<Database> closed;
  const std::lock_guard lock(state.mutex);
  closed.swap(state.database);
}

template <typename State>
Outcome RunTask(State& state, const DatabaseThread::Task& task) {
  Outcome outcome;
  try {
    task(Connected(state));
    return outcome;
  } catch (const SchemaTooNew& error) {
    outcome.schemaTooNew = true;
    outcome.failure = error.what();
  } catch (const std::exception& error) {
    outcome.failure = error.what();
  }
  outcome.end = Outcome::End::Failed;
  Disconnect(state);  // the next task finds a new connection, whatever happened to this one
  return outcome;
}

/// Delivers some results; whether there may be more.
template <typename State>
bool DeliverSome(State& state) {
  constexpr std::size_t AtOnce = 8;  // a task waits for no more than these
  std::error_code error;
  if (!state.spool && !std::filesystem::exists(state.spoolFile, error)) return false;
  if (!state.spool) {
    state.spool = std::make_shared<Spool>(state.spoolFile, state.patience, Database::Missing::Refuse);
  }
  const std::vector<std::string> ids = state.spool->WaitingFor(state.url.shown, AtOnce);
  for (const std::string& id : ids) Deliver(*state.spool, Connected(state), id);
  return ids.size() == AtOnce;
}

}  // namespace

void DatabaseThread::Live(const std::shared_ptr<State>& state) {
  std::unique_lock lock(state->mutex);
  for (;;) {
    state->changed.wait(lock, [&] { return state->running || state->deliver || state->stop; });
    if (state->running) {
      const Task task = std::move(state->task);
      lock.unlock();
      const Outcome outcome = RunTask(*state, task);
      lock.lock();
      state->outcome = outcome;
      state->running = false;
      state->late = false;
      state->changed.notify_all();
    } else if (state->deliver) {
      lock.unlock();
      bool more = false;
      std::string failure;
      try {
        more = DeliverSome(*state);
      } catch (const std::exception& error) {
        failure = error.what();
        state->spool.reset();
        Disconnect(*state);
      }
      lock.lock();
      state->deliver = more;
      state->deliveryFailure = failure;
    } else {
      break;
    }
  }
  state->spool.reset();
  const std::shared_ptr<Database> closed = std::move(state->database);
  state->database.reset();
  lock.unlock();
  // Closing may wait for the server, too.
  const_cast<std::shared_ptr<Database>&>(closed).reset();
  lock.lock();
  state->ended = true;
  state->changed.notify_all();
}

}  // namespace kxbench::results
