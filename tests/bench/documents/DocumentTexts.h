#pragma once

#include <functional>
#include <string>

#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

/// The nets of two pins and more: "X1.1 X2.1; X1.2 X2.2".
inline std::string ConnectedNets(const WiringDocument& document) {
  std::string text;
  for (const DocumentNet& net : document.nets) {
    if (net.pins.size() < 2) continue;
    if (!text.empty()) text += "; ";
    for (std::size_t i = 0; i < net.pins.size(); ++i) text += (i == 0 ? "" : " ") + PinText(net.pins[i]);
  }
  return text;
}

/// All pins: "X1.1 X1.2 X2.1".
inline std::string AllPins(const WiringDocument& document) {
  std::string text;
  for (const PlacedPin& pin : document.pins) text += (text.empty() ? "" : " ") + PinText(pin.pin);
  return text;
}

/// Every warning in a line, with its place.
inline std::string WarningLines(const WiringDocument& document) {
  std::string text;
  for (const DocumentWarning& warning : document.warnings)
    text += PlaceText(warning.place) + ": " + warning.text + '\n';
  return text;
}

/// What a reader says of a document that it refuses; empty when it reads it.
inline std::string RefusalOf(const std::function<void()>& read) {
  try {
    read();
  } catch (const DocumentError& error) {
    return error.what();
  }
  return {};
}

}  // namespace kxbench::documents
