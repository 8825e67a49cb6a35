#pragma once

#include <memory>
#include <optional>
#include <string>

#include "bench/program/host/OptionList.h"
#include "bench/results/ResultStore.h"

namespace kxbench {

/// Where results go: `--results` and `--spool`. Texts are UTF-8.
struct StoreOptions {
  std::optional<std::string> results;
  std::optional<std::string> spool;

  /// Adds the options to a command that stores results.
  void DeclareIn(OptionList& list);
};

/// Opens the store that the options name, for which the results module is loaded; null without `--results`.
/// To be called after EnterGuard, because the store has a thread of its own, and before anything is checked:
/// what cannot be stored is better known then. Throws Failure in one line.
std::unique_ptr<results::ResultStore> OpenResults(const StoreOptions& options);

/// Throws Failure, naming the option `what`, for a text that no database could hold: it is too long, no UTF-8
/// or holds a NUL character. Needs no module.
void RequireStorable(const std::string& what, const std::string& value);

}  // namespace kxbench
