#pragma once

#include <optional>
#include <string>

#include "bench/program/host/OptionList.h"

namespace kxbench {

enum class ProgressChoice { Auto, Terminal, Window, None };

/// What every command takes, whether or not it makes a difference there. Texts are UTF-8.
struct CommonOptions {
  std::optional<std::string> plugin;
  std::optional<std::string> device;
  std::optional<std::string> project;  ///< "folder/name"
  ProgressChoice progress = ProgressChoice::Auto;

  /// Adds them to a list. A command's help shows those that it names with OptionList::Show.
  void DeclareIn(OptionList& list);
};

}  // namespace kxbench
