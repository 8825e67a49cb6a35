#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plugin/data/Connections.h"

/// Voltage of every channel, volts, indexed like the matrix.
using TVoltages = std::vector<double>;

/// A channel found to be connected to something.
struct TConnFoundItem {
  std::int32_t x;     ///< matrix index
  double resistance;  ///< Ohm
};
using TConnFound = std::vector<TConnFoundItem>;

/// The channels of a test, its thresholds and options, and what is known of every pair of channels: what a
/// device should look like, what was learned from it, or what a check measured.
///
/// Matrix index i stands for channel `von` + i. The pair (i, j) is stored once, in the lower triangle
/// (`connections`[max(i, j)][min(i, j)]); the cells above the diagonal hold NotApplicable, are never read as
/// pairs and exist so that every row has N cells.
///
/// No operation checks its indices: callers pass 0 .. Highconnections(). One thread at a time.
class TShortTestData {
 public:
  /// Most channels that a range may hold: ten times the largest tester. A range beyond it can only come from
  /// damage, and its matrix would take gigabytes.
  static constexpr std::int64_t MaxChannels = 2400;

  std::int32_t von;            ///< first channel; channel numbers start at 1
  std::int32_t bis;            ///< last channel, inclusive; below `von` the range is empty
  double Schwelle = 10.0;      ///< Ohm; a pair measured below it is connected (learning, continuity pass)
  double Schwelle2 = 10.0;     ///< Ohm; a pair measured below it is shorted (short-circuit pass)
  std::int32_t U_Control = 2;  ///< 0 no voltage control, 1 measure the voltage, 2 also wait for discharge
  std::int32_t LastRelaisKarte = 0;  ///< card of the terminating-resistor relay, from 1; 0 or below: none
  std::int32_t LastRelais = 0;       ///< its relay on that card, from 1; 0 or below: none
  std::int32_t Timeout = 5000;       ///< longest wait for a channel to discharge, ms
  std::int32_t MaxError = 10;        ///< number of errors after which a pass stops
  TConnections connections;
  TVoltages voltages;

  /// An empty matrix over channels `von`..`bis` with default thresholds and options: every pair Unknown.
  /// Throws std::length_error naming the range when it holds more than MaxChannels.
  TShortTestData(std::int32_t von, std::int32_t bis);

  /// Reads the expectation file `fname` (UTF-8; relative names are taken against the current directory).
  /// Missing or unreadable keys take their defaults and damaged data lines are read as they stand, see
  /// docs/expectation-file.md. Throws std::system_error naming the file when it cannot be opened or read, and
  /// std::length_error naming file and range when the range holds more than MaxChannels, or the file and its
  /// size, in German, when it is larger than any expectation (see ExpectationText.h).
  explicit TShortTestData(const std::string& fname);

  /// Writes the expectation file `fname`. Foreign sections and keys of an existing file stay. The old file is
  /// replaced only once the new one is complete, see docs/expectation-file.md. Throws std::system_error
  /// naming the file, and std::length_error for an old file that is too large to be read.
  void SaveExpectationFile(const std::string& fname) const;

  /// State of the pair (i, j); with i = j that of the channel itself.
  CellState Get(std::int32_t i, std::int32_t j) const { return Cell(i, j).state; }

  /// Resistance of the pair (i, j), Ohm; NoResistance when none was measured.
  double GetR(std::int32_t i, std::int32_t j) const { return Cell(i, j).resistance; }

  /// Overwrites the pair (i, j), whatever it holds. The only way to change a cell that is not Unknown.
  void SetC(std::int32_t i, std::int32_t j, CellState state, double resistance);

  /// Enters a finding for the pair (i, j) if the pair is still Unknown, and everything that follows from it:
  /// Connected joins the nets of i and j and copies to each side what is known of the other; any other state
  /// goes, with its resistance, to every pair of a channel connected to i with j and of i with a channel
  /// connected to j. Changes nothing when `state` is Unknown or the pair is not. Needs no call stack worth
  /// mentioning, however large the nets.
  void Put(std::int32_t i, std::int32_t j, CellState state, double resistance);

  /// Takes channel index `channel` out of the test, on which voltage `v` (volts) was found: all its pairs
  /// become NotTestable, its diagonal Suspended. Suspending it once more leaves its pairs with other
  /// suspended channels as they are.
  void SuspendChannel(std::int32_t channel, double v);

  /// Voltage recorded for a channel index, volts; 0.0 when none was found.
  double GetVoltage(std::int32_t channel) const { return voltages[static_cast<std::size_t>(channel)]; }

  /// Index of the last row; -1 for an empty range.
  std::int32_t Highconnections() const { return static_cast<std::int32_t>(connections.size()) - 1; }

  /// Number of relay cards of 48 channels needed to reach channel `bis`.
  std::int32_t AnzahlKarten() const;

  /// Changes the range and keeps what is known of every pair of channels that stays; pairs with a new channel
  /// start Unknown. Throws std::length_error like the constructor and then changes nothing.
  void SetVonBis(std::int32_t newVon, std::int32_t newBis);

 private:
  const TConnectionCell& Cell(std::int32_t i, std::int32_t j) const {
    return i > j ? connections[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)]
                 : connections[static_cast<std::size_t>(j)][static_cast<std::size_t>(i)];
  }
};
