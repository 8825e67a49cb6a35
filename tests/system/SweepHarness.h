#pragma once

#include <string>

#include "plugin/data/ShorttestData.h"

namespace shorttest::testkit {

/// A harness of 96 channels on two cards for sweeps over every call: nets of all kinds, a terminating
/// resistor, an excluded pair, a channel that carries a voltage, a charge that must be waited for.
inline const std::string goodHarness =
    "cards 2\n"
    "terminator 1 50\n"
    "net 1 5 9 52\n"
    "net 10 60\n"
    "wire 20 21 0.5\nwire 21 70 0.5\nwire 70 71 0.5\n"
    "wire 30 31\n"
    "net 81 82 83 84 85 86 each 1\n"
    "charge 40 24 tau never\n"
    "charge 93 5 tau 0.03\n";

/// The same with an open wire, a joint of high resistance, and shorts between nets and free channels.
inline const std::string faultyHarness = goodHarness +
                                         "disconnect 71\n"
                                         "joint 60 500\n"
                                         "wire 30 81 0.2\n"
                                         "wire 12 90 0.2\n";

/// The same with a channel that carries a voltage, which ends the check early.
inline const std::string liveHarness = faultyHarness + "charge 77 12 tau never\n";

/// What is known of the harness before it is learned.
inline TShortTestData UnlearnedSweepData() {
  TShortTestData data(1, 96);
  data.LastRelaisKarte = 1;
  data.LastRelais = 50;
  data.Timeout = 400;
  data.SetC(14, 13, CellState::ExcludedPair, NoResistance);
  return data;
}

}  // namespace shorttest::testkit
