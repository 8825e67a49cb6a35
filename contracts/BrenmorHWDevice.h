#pragma once

#include <cstdint>

/// The tester's hardware driver: nine C functions in the shared library `BrenmorHWDevice`
/// (libBrenmorHWDevice.so, BrenmorHWDevice.dll). The real driver, the simulated tester and the tests' fakes
/// implement the same nine functions and are exchanged without rebuilding.
///
/// All calls come from one thread. A failed call leaves an error pending; nothing is reported through the
/// result of brenmor_bus_write and brenmor_relay_set.

#ifdef _WIN32
#ifdef BRENMOR_BUILDING_DRIVER
#define BRENMOR_API __declspec(dllexport)
#else
#define BRENMOR_API  // not dllimport: that would shut out a fake driver linked into a program
#endif
#else
#define BRENMOR_API __attribute__((visibility("default")))
#endif

extern "C" {

/// Writes `value` to the bus address of one line of one card.
/// `address`: 128 + 2k is line 0 of card k (k counts from 0), 129 + 2k its line 1.
/// `reserved`: always 0.
/// `value`: bit 7 closes (1) or opens (0) the relay in bits 0..5 (0..47 channels, 48..51 auxiliary relays);
/// the value 64 opens every relay of the line. The result carries no information.
BRENMOR_API std::int32_t brenmor_bus_write(std::int32_t address, std::int32_t reserved, std::int32_t value);

/// Switches one relay by card (from 0) and relay (from 0); `state` 1 closes, 0 opens. Only the
/// terminating-resistor relay is addressed this way. The result carries no information.
BRENMOR_API std::int32_t brenmor_relay_set(std::int32_t card, std::int32_t relay, std::int32_t state);

/// Probes the relay with the 1-based number `relay` over all cards (1, 96, 144, 192, 240); `mode` is 2.
/// Returns nonzero when the relay exists and answered, 0 when there is no such card.
BRENMOR_API std::int32_t brenmor_msu_write_relay(std::int32_t relay, std::int32_t mode);

/// One reading of the instrument between line 0 and line 1. (8, 2, 20) reads a voltage in volts;
/// (10, 1..6, 2) reads a resistance in Ohm (range 1), kOhm (ranges 2 to 4) or MOhm (ranges 5 and 6).
BRENMOR_API double brenmor_adx_read(std::int32_t function, std::int32_t range, std::int32_t setting);

/// Generation of the measuring hardware. Generation 1 discharges a device only through a terminating
/// resistor.
BRENMOR_API std::int32_t brenmor_adx_hw_generation();

/// Nonzero while the driver holds a pending error.
BRENMOR_API std::int32_t brenmor_bus_get_error();

/// Text of the pending error, NUL-terminated, in the system's 8-bit encoding. The caller owns it and gives
/// it back to brenmor_free_mem.
BRENMOR_API char* brenmor_bus_get_error_msg();

/// Frees memory that the driver handed out.
BRENMOR_API void brenmor_free_mem(void* memory);

/// Clears the pending error.
BRENMOR_API void brenmor_bus_delete_error();

}  // extern "C"
