#include "bench/program/check/ResultsModuleLoading.h"

#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"

namespace kxbench {

LoadedResultsModule::LoadedResultsModule()
    // A thread of the module's may outlive what it was started for.
    : library_("the results module", ProgramFolder() / LibraryFileName("kxresults", LibraryPrefix::Lib),
               DynamicLibrary::Unload::Never) {}

template <typename Function>
Function LoadedResultsModule::Find(const char* name) const {
  const auto function = library_.Find<Function>(name);
  if (function == nullptr) {
    throw Failure(Utf8FromPath(library_.File()) + " is no results module: it does not export " + name);
  }
  return function;
}

std::unique_ptr<results::ModuleStore> LoadedResultsModule::OpenStore(
    const std::string& url, const results::StoreSettings& settings) const {
  std::unique_ptr<results::ModuleStore> store;
  std::string failure;
  Find<KxOpenResultStore>(KxOpenResultStoreName)(url, settings, store, failure);
  if (!failure.empty()) throw Failure(failure);
  return store;
}

std::unique_ptr<results::ModuleDatabase> LoadedResultsModule::OpenDatabase(const std::string& url,
                                                                           bool make) const {
  std::unique_ptr<results::ModuleDatabase> database;
  std::string failure;
  Find<KxOpenResultDatabase>(KxOpenResultDatabaseName)(url, make, database, failure);
  if (!failure.empty()) throw Failure(failure);
  return database;
}

}  // namespace kxbench
