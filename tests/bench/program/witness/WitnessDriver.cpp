#include <cstdint>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <initializer_list>
#include <stdexcept>
#include <string>

#ifdef _WIN32
#include <windows.h>
#else
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#endif

#include "contracts/BrenmorHWDevice.h"

/// A driver that is there to be asked afterwards which relays are closed: two cards, nothing connected to
/// them. It appends each call that moves a relay to the file WITNESS_LOG.
///
/// WITNESS_END lets the process that loaded it first come to an end: "WAY CALL" or "WAY CALL NUMBER", at that
/// call of all, counted from 1. Ways: exit, quick-exit, kill, abort, terminate, throw; signal NUMBER and
/// signal-guard NUMBER, to this process and to the one that waits for it; hang, for ever. With a call of 0 it
/// is the loading.

namespace {

std::string Variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

[[noreturn]] void Kill() {
#ifdef _WIN32
  TerminateProcess(GetCurrentProcess(), 9);
#else
  kill(getpid(), SIGKILL);
#endif
  std::abort();  // not reached
}

class Witness {
 public:
  Witness() {
    const std::string name = Variable("WITNESS_LOG");
    // Who finds calls in the log is there to clean up.
    const bool first = std::ifstream(name).peek() == std::ifstream::traits_type::eof();
    log_.open(name, std::ios::app | std::ios::binary);
    log_ << "loaded" << std::endl;
#ifndef _WIN32
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
#endif
    const std::string end = Variable("WITNESS_END");
    const std::size_t blank = end.find(' ');
    if (!first || blank == std::string::npos) return;
    way_ = end.substr(0, blank);
    std::size_t digits = 0;
    endingCall_ = std::stol(end.substr(blank + 1), &digits);
    const std::string rest = end.substr(blank + 1 + digits);
    if (!rest.empty()) number_ = std::stoi(rest);
    if (endingCall_ == 0) End();
  }

  void Call() {
    if (++calls_ == endingCall_) End();
  }

  void Switched(const std::string& function, std::initializer_list<std::int32_t> arguments) {
    log_ << function;
    for (const std::int32_t argument : arguments) log_ << ' ' << argument;
    log_ << std::endl;
  }

  ~Witness() { log_ << "calls " << calls_ << std::endl; }

 private:
  void End() const {
    if (way_ == "exit") std::exit(1);
    if (way_ == "quick-exit") std::_Exit(0);
    if (way_ == "kill") Kill();
    if (way_ == "abort") std::abort();
    if (way_ == "terminate") std::terminate();
    if (way_ == "throw") throw std::runtime_error("the driver fell over");
#ifndef _WIN32
    if (way_ == "signal") kill(getpid(), number_);
    if (way_ == "signal-guard") kill(getppid(), number_);
    if (way_ == "hang") {
      for (;;) pause();
    }
#endif
  }

  std::ofstream log_;
  std::string way_;
  long calls_ = 0;
  long endingCall_ = -1;
  int number_ = 0;
};

Witness witness;

}  // namespace

std::int32_t brenmor_bus_write(std::int32_t address, std::int32_t reserved, std::int32_t value) {
  witness.Switched("bus_write", {address, reserved, value});
  witness.Call();
  return 0;
}

std::int32_t brenmor_relay_set(std::int32_t card, std::int32_t relay, std::int32_t state) {
  witness.Switched("relay_set", {card, relay, state});
  witness.Call();
  return 0;
}

std::int32_t brenmor_msu_write_relay(std::int32_t relay, std::int32_t) {
  witness.Call();
  return relay <= 96 ? 1 : 0;
}

double brenmor_adx_read(std::int32_t function, std::int32_t, std::int32_t) {
  witness.Call();
  constexpr double overRange = 100.0;
  return function == 8 ? 0.0 : overRange;
}

std::int32_t brenmor_adx_hw_generation() {
  witness.Call();
  return 2;
}

std::int32_t brenmor_bus_get_error() { return 0; }

char* brenmor_bus_get_error_msg() { return nullptr; }

void brenmor_free_mem(void*) {}

void brenmor_bus_delete_error() {}
