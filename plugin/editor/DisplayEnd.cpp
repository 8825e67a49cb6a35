#include "plugin/editor/DisplayEnd.h"

#ifndef _WIN32
#include <dlfcn.h>

#include "plugin/hardware/LastCleanUp.h"
#endif

namespace shorttest {

#ifdef _WIN32

DisplayEndWatch::DisplayEndWatch() = default;
DisplayEndWatch::~DisplayEndWatch() = default;

#else

namespace {

using IoErrorHandler = int (*)(void* display);
using SetIoErrorHandler = IoErrorHandler (*)(IoErrorHandler handler);

IoErrorHandler toolkitHandler = nullptr;
int watches = 0;

// Called by X's library in the middle of whatever the toolkit was doing; the toolkit's own handler ends the
// process.
int EndOfDisplay(void* display) {
  RunLastCleanUps();
  return toolkitHandler == nullptr ? 0 : toolkitHandler(display);
}

// Null where the program has no X.
SetIoErrorHandler FindSetHandler() {
  return reinterpret_cast<SetIoErrorHandler>(dlsym(RTLD_DEFAULT, "XSetIOErrorHandler"));
}

}  // namespace

DisplayEndWatch::DisplayEndWatch() {
  if (watches++ > 0) return;
  if (const auto setHandler = FindSetHandler()) toolkitHandler = setHandler(EndOfDisplay);
}

DisplayEndWatch::~DisplayEndWatch() {
  if (--watches > 0) return;
  if (const auto setHandler = FindSetHandler()) setHandler(toolkitHandler);
}

#endif

}  // namespace shorttest
