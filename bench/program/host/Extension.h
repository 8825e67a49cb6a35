#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bench/program/system/DynamicLibrary.h"
#include "framework/kxcomponents.h"
#include "framework/kxextension.h"

namespace kxbench {

/// The plug-in's library: the one of --plugin, else ShortTest beside the program.
std::filesystem::path PluginFile(const std::optional<std::string>& option);

/// A loaded extension with one command object of each of its classes. Destroys what came from the library
/// before it unloads it.
class Extension {
 public:
  /// Loads `file`, calls its entry with `hostValues` and creates the commands. Throws Failure with the cause.
  Extension(const std::filesystem::path& file, const TKXHashTable& hostValues);
  ~Extension();
  Extension(const Extension&) = delete;
  Extension& operator=(const Extension&) = delete;

  const std::filesystem::path& File() const { return library_.File(); }
  const TExtensionInfo& Info() const { return *info_; }
  const std::vector<std::unique_ptr<TKXFuncRunEdit>>& Commands() const { return commands_; }

  /// The command of that name, whatever the case; null when there is none.
  TKXFuncRunEdit* FindCommand(const std::string& name) const;

 private:
  DynamicLibrary library_;
  std::unique_ptr<TExtensionInfo> info_;
  std::vector<std::unique_ptr<TKXFuncRunEdit>> commands_;
};

/// What `kxbench info` prints.
std::string DescribeExtension(const Extension& extension);

}  // namespace kxbench
