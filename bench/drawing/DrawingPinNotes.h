#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kxbench::drawing {

/// What a pin has from one fault: "F1 open", or "F1 → X3.17" in its parts.
struct PinNote {
  std::size_t number;     ///< of the fault, from 1
  std::string word;       ///< "open"; "→" in front of a pin
  std::string connector;  ///< of that pin, may be empty
  std::string pin;        ///< with what separates it from the connector: ".17"
};

/// The notes of a pin as they are written in full: "F1 → X3.17, F2 short".
std::string NoteText(const std::vector<PinNote>& notes);

/// The same within `ems`: with names of connectors shortened, but not to what could be another of
/// `connectors`; then with the number alone of every fault but the first. Wider than `ems` where numbers and
/// the name of a pin need it.
std::string ShortNote(std::vector<PinNote> notes, const std::vector<std::string>& connectors, double ems);

}  // namespace kxbench::drawing
