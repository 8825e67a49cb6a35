#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <atomic>
#include <thread>
#include <utility>

#include "ui/terminal/Interrupt.h"

namespace kxbench {

namespace {

std::atomic<int> interrupts = 0;
std::atomic<bool> endAsked = false;

/// Runs on a thread of the system's.
BOOL WINAPI NoteInterrupt(DWORD event) {
  if (event != CTRL_C_EVENT) endAsked.store(true);
  interrupts.fetch_add(1);
  // The system ends the program as soon as this returns from one of the closing events. It waits a few
  // seconds at most, which is time for the main thread to open the relays and end by itself.
  const bool closing =
      event == CTRL_CLOSE_EVENT || event == CTRL_LOGOFF_EVENT || event == CTRL_SHUTDOWN_EVENT;
  if (closing) Sleep(INFINITE);
  return TRUE;
}

}  // namespace

InterruptWatch::InterruptWatch() {
  interrupts.store(0);
  endAsked.store(false);
  SetConsoleCtrlHandler(NoteInterrupt, TRUE);
}

InterruptWatch::~InterruptWatch() {
  interrupts.store(0);
  endAsked.store(false);
  SetConsoleCtrlHandler(NoteInterrupt, FALSE);
}

bool InterruptWatch::Interrupted() { return interrupts.load() > 0 || endAsked.load(); }

bool InterruptWatch::Insisted() { return interrupts.load() > 1; }

bool InterruptWatch::EndAsked() { return endAsked.load(); }

void InterruptWatch::Forget() {
  if (!EndAsked()) interrupts.store(0);
}

void InterruptWatch::Interrupt() {
  endAsked.store(true);
  interrupts.fetch_add(1);
}

void StartUnsignalled(std::function<void()> work) { std::thread(std::move(work)).detach(); }

}  // namespace kxbench
