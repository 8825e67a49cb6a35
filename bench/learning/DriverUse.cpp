#include "bench/learning/DriverUse.h"

namespace kxbench {

namespace {

DriverUse use;

}  // namespace

DriverUse DriverUseSoFar() { return use; }

}  // namespace kxbench

// The linker's option --wrap=NAME makes __wrap_NAME of each call of NAME, and NAME of __real_NAME.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier)
extern "C" {

double __real_brenmor_adx_read(std::int32_t function, std::int32_t range, std::int32_t setting);
std::int32_t __real_brenmor_bus_write(std::int32_t address, std::int32_t reserved, std::int32_t value);
std::int32_t __real_brenmor_relay_set(std::int32_t card, std::int32_t relay, std::int32_t state);

double __wrap_brenmor_adx_read(std::int32_t function, std::int32_t range, std::int32_t setting) {
  ++kxbench::use.readings;
  return __real_brenmor_adx_read(function, range, setting);
}

std::int32_t __wrap_brenmor_bus_write(std::int32_t address, std::int32_t reserved, std::int32_t value) {
  ++kxbench::use.relayOperations;
  return __real_brenmor_bus_write(address, reserved, value);
}

std::int32_t __wrap_brenmor_relay_set(std::int32_t card, std::int32_t relay, std::int32_t state) {
  ++kxbench::use.relayOperations;
  return __real_brenmor_relay_set(card, relay, state);
}

}  // extern "C"
// NOLINTEND(clang-diagnostic-reserved-identifier)
