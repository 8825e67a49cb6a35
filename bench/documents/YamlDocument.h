#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bench/documents/TextPlaces.h"
#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

/// A node of a YAML document. Nodes that an alias names again are shared, not copied.
struct YamlNode {
  enum class Kind { Scalar, Sequence, Map };

  Kind kind = Kind::Scalar;
  bool empty = false;  ///< a scalar that is not there at all; '' is a text, and so are null and ~
  bool quoted = false;
  std::string text;                    ///< of a scalar, always as it is written: 007, ON, null
  std::vector<const YamlNode*> items;  ///< of a sequence; of a map: key, value, key, value...
  /// From 0, in the texts put together; offset in bytes within the line. Of an empty one, its key's or
  /// dash's.
  std::size_t line = 0, offset = 0;
};

/// A key of a map and its value.
using YamlEntry = std::pair<const YamlNode*, const YamlNode*>;

/// One YAML document that is spread over several files: their texts are read as if they stood in one file,
/// and every node still knows its own file and line. Aliases and merge keys work across the files.
class YamlDocument {
 public:
  /// Reads the texts (any encoding that FileTextToUtf8 knows). Throws DocumentError for what is no YAML, for
  /// several documents, for quotes that are not closed in their file, nesting deeper than 100, and for more
  /// nodes than any harness needs.
  explicit YamlDocument(const std::vector<std::pair<std::string, std::string>>& files);

  /// nullptr for a document without content.
  const YamlNode* Root() const { return root_; }

  Place PlaceOf(const YamlNode& node) const;

  /// The entries of a map as merge keys ("<<") make them: its own first choice, of several equal keys the
  /// last, of merged maps the first in a list. Throws DocumentError where a key or what is merged makes no
  /// sense.
  std::vector<YamlEntry> EntriesOf(const YamlNode& map) const;

  /// Counts work that is done because of `node`. Throws DocumentError past five million steps in all: aliases
  /// and merge keys let a small document ask for any amount of it.
  void Spend(const YamlNode& node, std::size_t steps) const;

  /// Keys that the same map has once more, further down: the later one counts.
  const std::vector<const YamlNode*>& DroppedKeys() const { return droppedKeys_; }

 private:
  class Builder;
  using Entries = std::vector<YamlEntry>;
  using Positions = std::unordered_map<std::string_view, std::size_t>;

  void Put(const YamlEntry& entry, Entries& entries, Positions& positions) const;
  void Collect(const YamlNode& map, Entries& entries, Positions& positions, int depth) const;
  void CollectMerged(const YamlNode& merged, Entries& entries, Positions& positions, int depth) const;
  std::size_t FileEnd(std::size_t at) const;
  void Parse();
  void RefuseQuoteBefore(std::size_t at);

  struct File {
    std::string name;
    std::size_t firstLine;
  };
  std::vector<File> files_;
  std::string text_;
  std::optional<TextPlaces> places_;
  std::deque<YamlNode> nodes_;
  std::vector<const YamlNode*> droppedKeys_;
  const YamlNode* root_ = nullptr;
  mutable std::size_t steps_ = 0;
};

}  // namespace kxbench::documents
