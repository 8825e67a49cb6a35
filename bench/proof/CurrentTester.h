#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kxbench::proof {

/// A tester as its driver's functions show it, see contracts/BrenmorHWDevice.h.
class Driver {
 public:
  virtual ~Driver() = default;

  virtual void BusWrite(std::int32_t address, std::int32_t value) = 0;
  virtual void RelaySet(std::int32_t card, std::int32_t relay, std::int32_t state) = 0;
  virtual std::int32_t MsuWriteRelay(std::int32_t relay) = 0;
  virtual double AdxRead(std::int32_t function, std::int32_t range) = 0;

  /// The text of the pending error, UTF-8; no value when there is none.
  virtual std::optional<std::string> PendingError() const = 0;
  virtual bool HasPendingError() const = 0;
  virtual void DeletePendingError() = 0;
};

/// The tester that the driver's nine functions of this library work on; null: each of them leaves an error.
/// The caller keeps ownership.
void SetCurrentTester(Driver* tester);

}  // namespace kxbench::proof
