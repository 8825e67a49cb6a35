#pragma once

#include <memory>
#include <string>

#include "bench/program/system/DynamicLibrary.h"
#include "bench/results/ResultsModule.h"

namespace kxbench {

/// The results module, in memory as long as the object lives.
class LoadedResultsModule {
 public:
  /// Throws Failure when it cannot be loaded.
  LoadedResultsModule();

  /// Each throws Failure with the module's text.
  std::unique_ptr<results::ModuleStore> OpenStore(const std::string& url,
                                                  const results::StoreSettings& settings) const;
  std::unique_ptr<results::ModuleDatabase> OpenDatabase(const std::string& url, bool make) const;

 private:
  template <typename Function>
  Function Find(const char* name) const;

  DynamicLibrary library_;
};

}  // namespace kxbench
