#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

/// Pins that are written in one column, "X1.3". All of a table are split at the same character: of
/// . : / - and a blank the one that most of them have, at its last place in each.
class PlaceSplitter {
 public:
  /// Tells of a place before any is split.
  void Learn(const std::string& text);

  /// A place without the character is a connector without a pin, such as a splice; a number alone is the
  /// channel of that number, without a connector.
  Pin Split(const std::string& text) const;

  /// The places of a cell that may hold several, "X1.3, X2.4" or "X1.3 X2.4".
  static std::vector<std::string> PlacesIn(const std::string& text);

 private:
  static constexpr std::string_view Splitters = ".:/- ";
  std::size_t counts_[Splitters.size()] = {};
};

/// Whether a cell says that nothing is connected: "-", "n.c.", "frei".
bool SaysNothing(const std::string& text);

/// Whether the text is digits alone.
bool IsNumber(std::string_view text);

/// The text with ASCII letters in small ones.
std::string Lowered(std::string_view text);

/// The parts between any of `separators`, without the empty ones.
std::vector<std::string> SplitAt(const std::string& text, std::string_view separators);

}  // namespace kxbench::documents
