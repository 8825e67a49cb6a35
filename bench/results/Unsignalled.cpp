#include "bench/results/Unsignalled.h"

#include <thread>
#include <utility>

#ifndef _WIN32
#include <signal.h>
#endif

namespace kxbench::results {

#ifdef _WIN32

void StartWithoutSignals(std::function<void()> work) { std::thread(std::move(work)).detach(); }

#else

namespace {

/// A new thread holds back the signals that the one which starts it does.
class SignalsHeldBack {
 public:
  SignalsHeldBack() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~SignalsHeldBack() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsHeldBack(const SignalsHeldBack&) = delete;
  SignalsHeldBack& operator=(const SignalsHeldBack&) = delete;

 private:
  sigset_t before_;
};

}  // namespace

void StartWithoutSignals(std::function<void()> work) {
  const SignalsHeldBack heldBack;
  std::thread(std::move(work)).detach();
}

#endif

}  // namespace kxbench::results
