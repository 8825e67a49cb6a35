#include <signal.h>

#include <array>
#include <atomic>
#include <thread>
#include <utility>

#include "ui/terminal/Interrupt.h"

namespace kxbench {

namespace {

std::atomic<int> interrupts = 0;
std::atomic<bool> endAsked = false;
static_assert(std::atomic<int>::is_always_lock_free, "the signal handler must not take a lock");

extern "C" void NoteInterrupt(int signal) {
  if (signal != SIGINT) endAsked.store(true);
  interrupts.fetch_add(1);
}

struct Treatment {
  int signal;
  struct sigaction earlier;
};

std::array<Treatment, 4> treatments = {{{SIGINT, {}}, {SIGTERM, {}}, {SIGHUP, {}}, {SIGPIPE, {}}}};

void Install(Treatment& treatment) {
  struct sigaction action = {};
  sigemptyset(&action.sa_mask);
  // Without SA_RESTART: a read that waits for an answer must return.
  action.sa_handler = treatment.signal == SIGPIPE ? SIG_IGN : NoteInterrupt;
  sigaction(treatment.signal, &action, &treatment.earlier);
  const bool nohup = treatment.signal == SIGHUP && treatment.earlier.sa_handler == SIG_IGN;
  if (nohup) sigaction(treatment.signal, &treatment.earlier, nullptr);
}

}  // namespace

InterruptWatch::InterruptWatch() {
  interrupts.store(0);
  endAsked.store(false);
  for (Treatment& treatment : treatments) Install(treatment);
}

InterruptWatch::~InterruptWatch() {
  interrupts.store(0);
  endAsked.store(false);
  for (const Treatment& treatment : treatments) sigaction(treatment.signal, &treatment.earlier, nullptr);
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

void StartUnsignalled(std::function<void()> work) {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);  // the thread inherits it
  std::thread(std::move(work)).detach();
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace kxbench
