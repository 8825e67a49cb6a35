#pragma once

#include <string>

#include "bench/documents/Wiring.h"
#include "bench/documents/WiringDocument.h"
#include "tests/bench/documents/DocumentTexts.h"

namespace kxbench::documents {

/// The nets as one text: "X1.1 X2.3 | X1.2".
inline std::string NetsText(const WiringDocument& document) {
  std::string text;
  for (const DocumentNet& net : document.nets) {
    text += text.empty() ? "" : " | ";
    for (std::size_t i = 0; i < net.pins.size(); ++i) text += (i == 0 ? "" : " ") + PinText(net.pins[i]);
  }
  return text;
}

/// The nets on their channels, single ones too: "1 14 | 2 | 3".
inline std::string ChannelsText(const Wiring& wiring) {
  std::string text;
  for (const auto& net : wiring.nets) {
    text += text.empty() ? "" : " | ";
    for (std::size_t i = 0; i < net.size(); ++i) text += (i == 0 ? "" : " ") + std::to_string(net[i]);
  }
  for (const std::int32_t channel : wiring.single)
    text += (text.empty() ? "" : " | ") + std::to_string(channel);
  return text;
}

}  // namespace kxbench::documents
