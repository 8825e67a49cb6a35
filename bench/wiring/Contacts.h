#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace kxbench::wiring {

/// Where a channel is on the harness, as far as its name shows it.
struct Contact {
  std::string connector;
  std::string pin;
  std::optional<std::int32_t> number;  ///< the pin as a number, where it is one
};

/// Splits channel names into connector and pin. A name is split at its last '.', '-', ':' or '/' when several
/// names share the part before it ("X3.17" beside "X3.18"). Names that are not, such as "B1-L" and "B2-54g",
/// are split between the letters they begin with and the number that follows, when several of them share the
/// letters: connector B, pin 1. Names that stand alone have no contact.
std::map<std::int32_t, Contact> ContactsOf(const std::map<std::int32_t, std::string>& names);

}  // namespace kxbench::wiring
