#include <signal.h>

#include <array>
#include <atomic>

#include "ui/terminal/Interrupt.h"

namespace kxbench {

namespace {

std::atomic<bool> interrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free, "the signal handler must not take a lock");

extern "C" void NoteInterrupt(int) { interrupted.store(true); }

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
  interrupted.store(false);
  for (Treatment& treatment : treatments) Install(treatment);
}

InterruptWatch::~InterruptWatch() {
  for (const Treatment& treatment : treatments) sigaction(treatment.signal, &treatment.earlier, nullptr);
}

bool InterruptWatch::Interrupted() { return interrupted.load(); }

}  // namespace kxbench
