#pragma once

#include <cstddef>
#include <string>

#include "bench/proof/Proof.h"

namespace kxbench::proof {

/// A cell of a table, its number on the right.
inline std::string NumberCell(std::size_t value) {
  return "<td class=\"n\">" + std::to_string(value) + "</td>";
}

/// How many faults escape for which reason, then each with its remedy, as far as a page can hold them.
std::string EscapeTables(const Proof& proof, const wiring::ChannelNames& names);

/// A picture: a square for each pair of channels whose short escapes, between the channels in use.
std::string EscapeMatrix(const Proof& proof);

}  // namespace kxbench::proof
