// The driver's nine functions as this library's procedures find them: each goes to the current tester.

#include <cstdlib>
#include <cstring>
#include <string>

#include "bench/proof/CurrentTester.h"
#include "contracts/BrenmorHWDevice.h"
#include "simulator/Instrument.h"

namespace {

using kxbench::proof::Driver;

constexpr double OverRange = simulator::Instrument::OverRange;
constexpr std::int32_t Generation = 2;

Driver* currentTester = nullptr;

}  // namespace

namespace kxbench::proof {

void SetCurrentTester(Driver* tester) { currentTester = tester; }

}  // namespace kxbench::proof

std::int32_t brenmor_bus_write(std::int32_t address, std::int32_t, std::int32_t value) {
  if (currentTester != nullptr) currentTester->BusWrite(address, value);
  return 0;
}

std::int32_t brenmor_relay_set(std::int32_t card, std::int32_t relay, std::int32_t state) {
  if (currentTester != nullptr) currentTester->RelaySet(card, relay, state);
  return 0;
}

std::int32_t brenmor_msu_write_relay(std::int32_t relay, std::int32_t) {
  return currentTester != nullptr ? currentTester->MsuWriteRelay(relay) : 0;
}

double brenmor_adx_read(std::int32_t function, std::int32_t range, std::int32_t) {
  return currentTester != nullptr ? currentTester->AdxRead(function, range) : OverRange;
}

std::int32_t brenmor_adx_hw_generation() { return Generation; }

std::int32_t brenmor_bus_get_error() {
  return currentTester == nullptr || currentTester->HasPendingError() ? 1 : 0;
}

char* brenmor_bus_get_error_msg() {
  const std::string text =
      currentTester == nullptr ? "no device is simulated" : currentTester->PendingError().value_or("");
  auto* const memory = static_cast<char*>(std::malloc(text.size() + 1));
  if (memory != nullptr) std::memcpy(memory, text.c_str(), text.size() + 1);
  return memory;
}

void brenmor_free_mem(void* memory) { std::free(memory); }

void brenmor_bus_delete_error() {
  if (currentTester != nullptr) currentTester->DeletePendingError();
}
