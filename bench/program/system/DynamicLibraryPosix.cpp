#include <dlfcn.h>

#include <system_error>

#include "bench/program/system/DynamicLibrary.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/Guard.h"
#include "bench/program/system/System.h"

namespace kxbench {

DynamicLibrary::DynamicLibrary(const std::string& what, const std::filesystem::path& file, Unload unload)
    : file_(std::filesystem::absolute(file)), unload_(unload) {
  const std::string name = Utf8FromPath(file_);
  std::error_code error;
  if (!std::filesystem::exists(file_, error))
    throw Failure("cannot load " + what + " " + name + ": no such file");

  // Never unmapped, whatever was asked for: a plug-in brings toolkit libraries along, and what those register
  // with the system's object library points into them for the rest of the program's life.
  handle_ = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (handle_ == nullptr) {
    // The system's text names the library in question first: this one, or one that it needs.
    std::string reason = dlerror();
    if (reason.starts_with(name + ": ")) reason.erase(0, name.size() + 2);
    throw Failure("cannot load " + what + " " + name + ": " + reason);
  }
  TellGuardOfDriver();
}

DynamicLibrary::~DynamicLibrary() {
  if (unload_ == Unload::AtDestruction) dlclose(handle_);
}

DynamicLibrary::Address DynamicLibrary::FindAddress(const char* name) const {
  return reinterpret_cast<Address>(dlsym(handle_, name));
}

}  // namespace kxbench
