#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

/// The program as a process of its own, with the fakes beside it. All texts are UTF-8.

struct ProcessResult {
  int status;  ///< exit status; on Linux also the negative number of the signal that ended the process
  std::string output;
  std::string errors;
};

/// A program to start. Standard input is empty unless said.
struct Process {
  std::string program;
  std::vector<std::string> arguments;
  std::map<std::string, std::string> environment;  ///< added to the test's own
  std::string folder;                              ///< current folder; empty for the test's own
#ifndef _WIN32
  std::string inputFile;       ///< where standard input comes from; empty for none
  std::string outputFile;      ///< where standard output goes; empty to collect it
  std::string errorFile;       ///< where standard error goes; empty to collect it
  bool outputStuck = false;    ///< standard output is a full pipe that nobody reads
  bool errorsUnread = false;   ///< standard error is a pipe whose reader has gone
  bool streamsClosed = false;  ///< there is neither standard output nor standard error
#endif
  bool outputUnread = false;  ///< standard output is a pipe whose reader has gone

  /// Starts the process and waits for its end.
  ProcessResult Run() const;

#ifndef _WIN32
  /// Starts the process and waits for its end; `idle` is called with its number about every ten milliseconds.
  ProcessResult RunAnd(const std::function<void(int process)>& idle) const;

  /// Starts the process, sends `signal` once the file `when` holds text, and waits for its end.
  ProcessResult RunAndSignal(int signal, const std::string& when) const;
#endif
};
