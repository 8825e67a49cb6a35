#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

std::string PlaceText(const Place& place) {
  std::string text = place.file;
  for (const std::size_t number : {place.line, place.column}) {
    if (number == 0) break;
    text += ':' + std::to_string(number);
  }
  return text;
}

DocumentError::DocumentError(const Place& place, const std::string& what)
    : std::runtime_error(PlaceText(place) + ": " + what) {}

std::string PinText(const Pin& pin) {
  const bool both = !pin.connector.empty() && !pin.pin.empty();
  return pin.connector + (both ? "." : "") + pin.pin;
}

}  // namespace kxbench::documents
