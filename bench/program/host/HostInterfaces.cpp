#include "bench/program/host/HostInterfaces.h"

#include <string_view>

namespace kxbench {

namespace {

/// Answers QueryInterface for an object with one interface of its own: 0 when it has the named one.
template <typename Interface>
int Query(Interface* object, std::string_view own, const char* name, void** result) {
  if (name == own || name == std::string_view("IKXUnknown")) {
    object->AddRef();
    *result = object;
    return 0;
  }
  *result = nullptr;
  return 1;
}

}  // namespace

// Both objects belong to the program: the counts are kept for their callers and free nothing.

int HostTestEnvironment::QueryInterface(const char* name, void** object) {
  return Query<ITestEnvironment>(this, "ITestEnvironment", name, object);
}
int HostTestEnvironment::AddRef() { return ++references_; }
int HostTestEnvironment::Release() { return --references_; }

int HostVarAccess::QueryInterface(const char* name, void** object) {
  return Query<IVarAccess>(this, "IVarAccess", name, object);
}
int HostVarAccess::AddRef() { return ++references_; }
int HostVarAccess::Release() { return --references_; }

}  // namespace kxbench
