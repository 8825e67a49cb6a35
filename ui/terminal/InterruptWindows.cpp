#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <atomic>

#include "ui/terminal/Interrupt.h"

namespace kxbench {

namespace {

std::atomic<bool> interrupted = false;

/// Runs on a thread of the system's.
BOOL WINAPI NoteInterrupt(DWORD event) {
  interrupted.store(true);
  // The system ends the program as soon as this returns from one of the closing events. It waits a few
  // seconds at most, which is time for the main thread to open the relays and end by itself.
  const bool closing =
      event == CTRL_CLOSE_EVENT || event == CTRL_LOGOFF_EVENT || event == CTRL_SHUTDOWN_EVENT;
  if (closing) Sleep(INFINITE);
  return TRUE;
}

}  // namespace

InterruptWatch::InterruptWatch() {
  interrupted.store(false);
  SetConsoleCtrlHandler(NoteInterrupt, TRUE);
}

InterruptWatch::~InterruptWatch() { SetConsoleCtrlHandler(NoteInterrupt, FALSE); }

bool InterruptWatch::Interrupted() { return interrupted.load(); }

}  // namespace kxbench
