#pragma once

#include <cstdint>

/// State of a channel pair, or of a channel itself (diagonal cell). The expectation file stores the number as
/// a digit; a damaged file can bring in numbers that are not listed here, and they are kept as they are.
enum class CellState : std::uint8_t {
  Unknown = 0,        ///< not yet determined or not yet measured
  NotConnected = 1,   ///< measured at or above the threshold, or expected to be open
  Connected = 2,      ///< measured below the threshold, or expected to be connected
  ExcludedPair = 3,   ///< not measured in the short-circuit pass
  NotTestable = 4,    ///< one of the two channels is suspended
  Reserved = 5,       ///< nothing sets it; the grid has a colour for it
  NotApplicable = 8,  ///< diagonal cell of a channel in use, and every cell above the diagonal
  Suspended = 9,      ///< diagonal cell of a channel that takes no part in measurement
};

/// Resistance of a cell for which nothing was measured, Ohm.
inline constexpr double NoResistance = -1.0;

/// One cell of the connection matrix.
struct TConnectionCell {
  CellState state = CellState::Unknown;
  double resistance = NoResistance;  ///< Ohm
};
