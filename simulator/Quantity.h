#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace simulator {

enum class Unit { Ohm, Volt, Second };

/// Reads a quantity: a decimal number with a point (whatever the user's locale says), then, without a blank,
/// optionally a prefix (u, m, k, M, G, T; capital M is mega) and optionally the unit's name (Ohm, V, s):
/// "0.1", "2.2k", "50mOhm", "24V", "500ms". The result is in the unit itself; no value when the word is
/// anything else.
std::optional<double> ReadQuantity(std::string_view word, Unit unit);

/// Reads a plain decimal number without prefix or unit.
std::optional<double> ReadNumber(std::string_view word);

/// Reads a decimal integer of digits alone.
std::optional<std::int64_t> ReadInteger(std::string_view word);

}  // namespace simulator
