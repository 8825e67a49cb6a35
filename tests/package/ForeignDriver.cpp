#include <array>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <string>

#include "contracts/BrenmorHWDevice.h"

// A driver of somebody else's, as a library of its own: one card, no device. It writes each call as a line
// into the file that FOREIGN_TRACE names; after free_mem comes the number of texts that are left. With
// FOREIGN_ERROR in the environment its first write fails.

namespace {

constexpr double OverRange = 100.0;

bool failed = false;
int textsHandedOut = 0;

void Trace(const std::string& function, std::initializer_list<std::int32_t> arguments = {}) {
  static std::ofstream file = [] {
    const char* name = std::getenv("FOREIGN_TRACE");
    return name == nullptr ? std::ofstream() : std::ofstream(name, std::ios::binary);
  }();
  file << function;
  for (const std::int32_t argument : arguments) file << ' ' << argument;
  file << std::endl;
}

}  // namespace

std::int32_t brenmor_bus_write(std::int32_t address, std::int32_t reserved, std::int32_t value) {
  Trace("bus_write", {address, reserved, value});
  failed = failed || std::getenv("FOREIGN_ERROR") != nullptr;
  return 0;
}

std::int32_t brenmor_relay_set(std::int32_t card, std::int32_t relay, std::int32_t state) {
  Trace("relay_set", {card, relay, state});
  return 0;
}

std::int32_t brenmor_msu_write_relay(std::int32_t relay, std::int32_t mode) {
  Trace("msu_write_relay", {relay, mode});
  return relay <= 48 ? 1 : 0;
}

double brenmor_adx_read(std::int32_t function, std::int32_t range, std::int32_t setting) {
  Trace("adx_read", {function, range, setting});
  return function == 8 ? 0.0 : OverRange;
}

std::int32_t brenmor_adx_hw_generation() {
  Trace("adx_hw_generation");
  return 2;
}

std::int32_t brenmor_bus_get_error() { return failed ? 1 : 0; }

char* brenmor_bus_get_error_msg() {
  ++textsHandedOut;
  Trace("bus_get_error_msg");
  // "Fremdes Gerät" in the system's code page, which has the umlaut at this place throughout western Europe.
  static constexpr std::array Text = {'F', 'r', 'e', 'm', 'd',    'e', 's',
                                      ' ', 'G', 'e', 'r', '\xE4', 't', '\0'};
  char* const text = static_cast<char*>(std::malloc(Text.size()));
  if (text != nullptr) std::memcpy(text, Text.data(), Text.size());
  return text;
}

void brenmor_free_mem(void* memory) {
  --textsHandedOut;
  Trace("free_mem", {textsHandedOut});
  std::free(memory);
}

void brenmor_bus_delete_error() {
  Trace("bus_delete_error");
  failed = false;
}
