#pragma once

#include <dlfcn.h>

namespace widget_test {

/// A function of the toolkit below the toolkit, which is used without its headers: it is looked up in the
/// running program.
template <typename Function>
Function Native(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
}

}  // namespace widget_test
