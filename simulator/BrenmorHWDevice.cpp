#include "contracts/BrenmorHWDevice.h"

#include "simulator/Instrument.h"
#include "simulator/LoadedTester.h"

using simulator::Instrument;
using simulator::LoadedTester;
using simulator::Tester;

std::int32_t brenmor_bus_write(std::int32_t address, std::int32_t reserved, std::int32_t value) {
  return LoadedTester::Instance().Call("bus_write", {address, reserved, value}, 0, [&](Tester& tester) {
    tester.BusWrite(address, reserved, value);
    return 0;
  });
}

std::int32_t brenmor_relay_set(std::int32_t card, std::int32_t relay, std::int32_t state) {
  return LoadedTester::Instance().Call("relay_set", {card, relay, state}, 0, [&](Tester& tester) {
    tester.RelaySet(card, relay, state);
    return 0;
  });
}

std::int32_t brenmor_msu_write_relay(std::int32_t relay, std::int32_t mode) {
  return LoadedTester::Instance().Call("msu_write_relay", {relay, mode}, 0,
                                       [&](Tester& tester) { return tester.MsuWriteRelay(relay, mode); });
}

double brenmor_adx_read(std::int32_t function, std::int32_t range, std::int32_t setting) {
  return LoadedTester::Instance().Call(
      "adx_read", {function, range, setting}, Instrument::OverRange,
      [&](Tester& tester) { return tester.AdxRead(function, range, setting); });
}

std::int32_t brenmor_adx_hw_generation() {
  return LoadedTester::Instance().Call("adx_hw_generation", {}, 0,
                                       [](Tester& tester) { return tester.AdxHwGeneration(); });
}

std::int32_t brenmor_bus_get_error() {
  return LoadedTester::Instance().Call(
      "bus_get_error", {}, 1, [](const Tester& tester) { return tester.PendingError() != nullptr ? 1 : 0; });
}

char* brenmor_bus_get_error_msg() { return LoadedTester::Instance().ErrorText(); }

void brenmor_free_mem(void* memory) { LoadedTester::Instance().FreeMemory(memory); }

void brenmor_bus_delete_error() { LoadedTester::Instance().DeleteError(); }
