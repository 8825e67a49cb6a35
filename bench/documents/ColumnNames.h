#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kxbench::documents {

enum class ColumnKind {
  Unused,     ///< a colour, a length, a remark, or a word that is not known
  Place,      ///< connector and pin in one: "X1.3"
  Connector,  ///< "X1"
  Pin,        ///< "3"
  Pins,       ///< several places
  Net,        ///< the net's name, which joins pins in a list that has no wires
  Signal,     ///< the same, where there is no column for nets
  Wire,
  Splice,   ///< the splice that a wire runs to
  Channel,  ///< of the tester
};

enum class ColumnSide { None, From, To };

/// What the head of a column says that it holds.
struct ColumnMeaning {
  ColumnKind kind = ColumnKind::Unused;
  ColumnSide side = ColumnSide::None;
  bool blank = false;    ///< without a name
  bool unknown = false;  ///< a name of which nothing is understood
  bool whole = true;     ///< all of it is
};

/// Understands English and German, in any case, with blanks, dots, hyphens or nothing between the words:
/// "From connector", "von_Stecker", "ZielPin", "Pin B", "Stecker/Pin", "Netz", "Spleiß".
ColumnMeaning MeaningOf(std::string_view header);

/// Where a list has what it takes; indices of columns from 0.
struct ListLayout {
  struct Side {
    std::optional<std::size_t> connector;
    std::optional<std::size_t> pin;  ///< without a connector it holds both, "X1.3"
    bool isPlace = false;            ///< its head says that it holds both
    bool Known() const { return connector || pin; }
  };

  Side from;
  Side to;  ///< unknown in a list of nets
  std::optional<std::size_t> net;
  std::optional<std::size_t> signal;
  std::optional<std::size_t> splice;
  std::optional<std::size_t> channel;
  std::vector<std::size_t> places;   ///< of a list with a net on each line
  std::vector<std::size_t> unknown;  ///< columns whose heads are not understood

  /// A column for several pins of the connector beside it.
  std::optional<std::size_t> pinsOfOne;

  /// A column that counts, and says the same as the one before it: one of them would be left out.
  struct Doubled {
    std::size_t first;
    std::size_t second;
  };
  std::optional<Doubled> doubled;

  std::size_t columns = 0;
  bool placesGoOn = false;  ///< what stands past the last column is a place too

  bool IsFromTo() const { return from.Known() && to.Known(); }
  bool IsNetOnEachLine() const { return !places.empty(); }

  /// What a line says must be clear: wires from one side to the other, or pins and the name of their net.
  bool IsList() const { return IsFromTo() || IsNetOnEachLine() || (from.Known() && (net || signal)); }
  bool IsMap() const { return channel && (from.Known() || IsList()) && !IsFromTo() && !IsNetOnEachLine(); }

  /// Columns that are understood.
  std::size_t Understood() const;

  /// How many fields a line must have, so that none that counts is missing.
  std::size_t FieldsNeeded() const;
};

ListLayout LayoutOf(const std::vector<ColumnMeaning>& columns);

}  // namespace kxbench::documents
