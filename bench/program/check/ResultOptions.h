#pragma once

#include <optional>
#include <string>
#include <vector>

#include "bench/program/check/StoreOptions.h"
#include "bench/program/host/OptionList.h"
#include "bench/results/OutputFiles.h"

namespace kxbench {

/// Who and what is tested, and where the result goes: what every command that checks takes.
struct ResultOptions {
  std::optional<std::string> serial;
  std::optional<std::string> part;
  std::optional<std::string> operatorName;
  std::optional<std::string> station;  ///< none: the computer's name
  std::vector<results::OutputFile> outputs;
  StoreOptions store;

  void DeclareIn(OptionList& list);

  /// The same without --serial, for a command that asks for it.
  void DeclareWithoutSerialIn(OptionList& list);

  /// A result is to be kept anywhere.
  bool Wanted() const { return !outputs.empty() || store.results; }
};

}  // namespace kxbench
