#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "bench/documents/WiringDocument.h"
#include "bench/wiring/ChannelNames.h"
#include "bench/wiring/ExpectationFacts.h"

namespace kxbench::documents {

/// A harness on the channels of a tester: what an expectation says, or a document with its map.
struct Wiring {
  std::map<std::int32_t, Pin> pins;  ///< every channel; those without a name as a pin without a connector
  std::vector<std::vector<std::int32_t>> nets;  ///< of two channels and more: ascending, by their first
  std::vector<std::int32_t> single;             ///< connected to nothing, ascending
  std::vector<std::pair<std::int32_t, std::int32_t>> excluded;  ///< the lower channel first
  std::vector<std::int32_t> suspended;                          ///< ascending
};

/// The pin of a channel that nothing names.
Pin UnnamedPin(std::int32_t channel);

/// Which pin each channel is, by its name: "X1.3" is pin 3 of connector X1, whatever else is split as
/// wiring::ContactsOf splits it. A channel without a name, with a name that shows no connector, or with one
/// that shows the same pin as another's, is an UnnamedPin.
std::map<std::int32_t, Pin> PinsOf(std::int32_t firstChannel, std::int32_t lastChannel,
                                   const wiring::ChannelNames& names);

/// What an expectation says. REQUIRES: the facts are of a file that is not refused.
Wiring WiringOf(const wiring::ExpectationFacts& facts, const wiring::ChannelNames& names);

/// What a document without a map says: its pins, numbered from 1 in its own order, stand for the channels.
Wiring WiringOfPins(const WiringDocument& document);

/// The contract for other programs, one JSON object and a line end; docs/documents.md describes it.
std::string WiringJson(const Wiring& wiring);

}  // namespace kxbench::documents
