#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

/// A server of PostgreSQL for the tests of one program: on a free port of 127.0.0.1, with its files in a
/// folder of its own, ended with the program. It does without flushing its files.
class PostgresServer {
 public:
  static PostgresServer& Get();

  /// Makes an empty database and gives its URL; users log in without password but for "guarded".
  std::string NewDatabase();

  /// The URL of the same database through another port, or as another user: "guarded:password".
  std::string Url(const std::string& database, int port, const std::string& user) const;
  int Port() const { return port_; }

  void Start();
  void Stop();   ///< at once, as if the machine had lost its power
  void Pause();  ///< all of its processes stop where they are
  void Resume();

 private:
  PostgresServer();
  ~PostgresServer();
  void SignalAll(int signal) const;

  std::filesystem::path folder_;
  int port_ = 0;
  pid_t postmaster_ = -1;
  int databases_ = 0;
};

/// A port of 127.0.0.1 on which nobody listens.
int FreePort();
