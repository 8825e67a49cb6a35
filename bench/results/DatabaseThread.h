#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "bench/results/Database.h"

namespace kxbench::results {

/// A thread that talks to the database, so that nobody waits for a server longer than he wants to, whatever
/// holds it up: the network's names, a connection, a lock, an answer. Between tasks it delivers what the
/// spool holds for the database.
class DatabaseThread {
 public:
  using Task = std::function<void(Database& database)>;

  /// How a task ended.
  struct Outcome {
    enum class End {
      Done,
      Failed,  ///< see `failure`
      Late     ///< it may still be done, or not
    };
    End end = End::Done;
    std::string failure;
    bool schemaTooNew = false;
  };

  /// Does not connect yet. The database gets `patience` for each statement; one of SQLite that does not exist
  /// is made. `spool` is the file of the spool.
  DatabaseThread(const StoreUrl& url, std::chrono::milliseconds patience, std::filesystem::path spool);

  /// Lets a delivery go on for `patience` at most.
  ~DatabaseThread();
  DatabaseThread(const DatabaseThread&) = delete;
  DatabaseThread& operator=(const DatabaseThread&) = delete;

  /// Connects where there is no connection, brings the schema up to date and runs the task; waits for at most
  /// `patience`. What the task refers to must live on when it is late, so it holds copies.
  Outcome Run(Task task, std::chrono::milliseconds patience);

  /// Whether a task that was late has not ended yet; nothing else can be run then.
  bool IsStuck() const;

  /// Delivers the spool's results when there is nothing else to do.
  void DeliverSpool();

  /// Why the last delivery failed, once; empty when it did not.
  std::string TakeDeliveryFailure();

 private:
  struct State;
  static void Live(const std::shared_ptr<State>& state);

  std::shared_ptr<State> state_;
};

}  // namespace kxbench::results
