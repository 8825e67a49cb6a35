#pragma once

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "bench/documents/WiringDocument.h"
#include "tests/fuzz/Require.h"
#include "text/Utf8.h"

namespace fuzz {

inline bool IsLine(const std::string& text) {
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20; };
  return shorttest::IsUtf8(text) && std::none_of(text.begin(), text.end(), isControl);
}

/// Whether every pin has a connector and a name of its own, or one of the two, as in a wiring list.
enum class PinParts { Both, One };

/// What holds of everything that a reader makes of a document.
inline void CheckDocument(const kxbench::documents::WiringDocument& document,
                          const std::vector<std::string>& files, PinParts parts = PinParts::Both) {
  using kxbench::documents::Pin;
  const auto check = [&](const kxbench::documents::Place& place) {
    Require(std::find(files.begin(), files.end(), place.file) != files.end(),
            "a place is in a file:", place.file);
  };
  std::set<Pin> pins;
  for (const auto& [pin, place] : document.pins) {
    check(place);
    Require(pins.insert(pin).second, "each pin is there once:", PinText(pin));
    Require(!PinText(pin).empty(), "a pin has a name");
    for (const std::string& name : {pin.connector, pin.pin}) {
      Require(parts == PinParts::One || !name.empty(), "both parts of a pin have a name:", PinText(pin));
      Require(IsLine(name), "names are lines of text:", name);
    }
  }
  std::set<Pin> ofNets;
  for (const auto& net : document.nets) {
    Require(!net.pins.empty(), "a net has pins");
    for (const Pin& pin : net.pins)
      Require(ofNets.insert(pin).second, "each pin is in one net:", PinText(pin));
  }
  Require(ofNets == pins, "the nets hold all pins");
  for (const auto& warning : document.warnings) {
    check(warning.place);
    Require(IsLine(warning.text), "a warning is a line of text:", warning.text);
  }
}

/// Reads a document with `read`; none where it is refused. The only thing that it may throw is a
/// DocumentError that begins with a file's name.
template <typename Read>
std::optional<kxbench::documents::WiringDocument> CheckReading(Read read,
                                                               const std::vector<std::string>& files,
                                                               PinParts parts = PinParts::Both) {
  try {
    auto document = read();
    CheckDocument(document, files, parts);
    return document;
  } catch (const kxbench::documents::DocumentError& error) {
    const std::string what = error.what();
    Require(std::any_of(files.begin(), files.end(),
                        [&](const std::string& file) { return what.starts_with(file + ':'); }),
            "a refusal begins with its place:", what);
    Require(IsLine(what), "a refusal is a line of text:", what);
    return std::nullopt;
  }
}

}  // namespace fuzz
