#pragma once

#include <cstdint>

#include "contracts/BrenmorHWDevice.h"

/// Control interface of the simulated tester, for tests that link its library. A real driver has none of it.
/// All texts are UTF-8. One thread, the one that calls the driver.

extern "C" {

/// Connects the device that `description` describes / that the file describes, instead of the one that
/// BRENMOR_DEVICE names: relays open, no pending error, calls counted from 0, faults only as described.
/// Return 0, or 1 when the description is unusable: then every driver call fails with the reason, which
/// brenmor_sim_load_error tells.
BRENMOR_API std::int32_t brenmor_sim_load_text(const char* description);
BRENMOR_API std::int32_t brenmor_sim_load_file(const char* fileName);

/// Why the last load failed, naming file, line, column and cause; empty when it did not. Valid until the next
/// load or reset.
BRENMOR_API const char* brenmor_sim_load_error();

/// Back to the state after loading the library: real time, no device, trace closed. The next driver call
/// reads BRENMOR_DEVICE and BRENMOR_TRACE. Error texts handed out stay the caller's and stay counted.
BRENMOR_API void brenmor_sim_reset();

/// Number of channel relays / auxiliary relays (48 to 51) switched closed in the whole tester, whatever stuck
/// contacts make of it.
BRENMOR_API std::int32_t brenmor_sim_closed_channel_relays();
BRENMOR_API std::int32_t brenmor_sim_closed_auxiliary_relays();

/// Whether the relay of channel `channel` (1 to 240) on line `line` (0, 1) is switched closed: 1 or 0.
BRENMOR_API std::int32_t brenmor_sim_is_closed(std::int32_t channel, std::int32_t line);

/// Whether a terminating resistor is on: 1 or 0.
BRENMOR_API std::int32_t brenmor_sim_terminator_on();

/// Stops the simulated time (1) or lets it follow the system's steady clock (0, the initial state).
/// Capacitances discharge in it; readings take none of it.
BRENMOR_API void brenmor_sim_manual_time(std::int32_t on);

/// Moves the simulated time on by `milliseconds` (0 or more).
BRENMOR_API void brenmor_sim_advance_ms(double milliseconds);

/// Number of calls so far of the five functions that address the hardware (bus_write, relay_set,
/// msu_write_relay, adx_read, adx_hw_generation), failed ones included.
BRENMOR_API std::int64_t brenmor_sim_call_count();

/// Lets the call that makes brenmor_sim_call_count `call` (1 or more) fail with the error `text`. May be
/// called several times. Lasts until the next load or reset.
BRENMOR_API void brenmor_sim_fail_call(std::int64_t call, const char* text);

/// Number of error texts handed out and not yet freed, since the library was loaded.
BRENMOR_API std::int32_t brenmor_sim_outstanding_texts();

}  // extern "C"
