#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace kxbench::documents {

/// A place in a document. All numbers from 1; 0 where it is not known.
struct Place {
  std::string file;  ///< as the user named it, UTF-8
  std::size_t line = 0;
  std::size_t column = 0;  ///< in characters
};

/// "list.csv:12:5", without what is not known.
std::string PlaceText(const Place& place);

/// What keeps a document from being understood: "list.csv:12:5: pin 9 is not on connector X1, which has 8".
class DocumentError : public std::runtime_error {
 public:
  DocumentError(const Place& place, const std::string& what);
};

/// A contact of the harness, as its document names it. Texts are UTF-8, without blanks at their ends.
struct Pin {
  std::string connector;
  std::string pin;

  bool operator==(const Pin&) const = default;
  bool operator<(const Pin& other) const {
    return std::tie(connector, pin) < std::tie(other.connector, other.pin);
  }
};

/// "X1.3".
std::string PinText(const Pin& pin);

struct PlacedPin {
  Pin pin;
  Place place;  ///< where the document first mentions it
};

/// Pins that wires connect with one another, by whatever way.
struct DocumentNet {
  std::string name;       ///< as the document calls it; empty for none. The first, where it has several
  std::vector<Pin> pins;  ///< at least one, in the order of WiringDocument::pins; splices are not among them
};

struct DocumentWarning {
  Place place;
  std::string text;
};

/// A harness as a document describes it, whatever the format. Splices have joined their nets and vanished.
struct WiringDocument {
  std::vector<PlacedPin>
      pins;  ///< every pin mentioned, each once: by connector, both in the document's order
  std::vector<DocumentNet> nets;  ///< a partition of `pins`, by their first pin; single pins are nets of one
  std::size_t connectors = 0;
  std::size_t splices = 0;
  std::size_t wires = 0;  ///< connections drawn, splices' own among them
  std::vector<DocumentWarning> warnings;
};

}  // namespace kxbench::documents
