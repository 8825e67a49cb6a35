#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/program/host/CommonOptions.h"
#include "bench/program/host/OptionList.h"
#include "bench/program/system/ExitStatus.h"

namespace kxbench {

/// One command of the program, `kxbench NAME ...`: what it is called, what it takes, what it does. Each has a
/// file of its own in commands/ and a line in Commands.cpp. A command object runs at most once.
class Command {
 public:
  Command() = default;
  virtual ~Command() = default;
  Command(const Command&) = delete;
  Command& operator=(const Command&) = delete;

  virtual std::string Name() const = 0;

  /// One line, which follows the name in the program's help.
  virtual std::string Summary() const = 0;

  /// What its own help says below the options; empty for nothing.
  virtual std::string Notes() const { return ""; }

  /// Names its arguments and options. What is read from the command line goes into the object's members.
  virtual void Declare(OptionList& list) = 0;

  /// Does what the command is for. Throws what keeps it from running, Failure for what it foresees.
  virtual ExitStatus Run(const CommonOptions& common) = 0;
};

using CommandList = std::vector<std::unique_ptr<Command>>;

}  // namespace kxbench
