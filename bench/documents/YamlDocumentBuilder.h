#pragma once

#include <yaml-cpp/eventhandler.h>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bench/documents/YamlDocument.h"

namespace kxbench::documents {

/// Deepest nesting of a document, and of what its merge keys name.
inline constexpr std::size_t DeepestYaml = 100;

/// Whether a key is "<<", unquoted.
bool IsMergeKey(const YamlNode& key);

/// Puts the tree together from the parser's events. Throws DocumentError.
class YamlDocument::Builder : public YAML::EventHandler {
 public:
  explicit Builder(YamlDocument& document) : document_(document) {}

  void OnDocumentStart(const YAML::Mark& mark) override;
  void OnDocumentEnd() override {}

  /// The parser says this of null and ~ and of values that are not there. All scalars are texts: an empty one
  /// is told from the others by the text, and by what the parser finds next.
  void OnNull(const YAML::Mark& mark, YAML::anchor_t anchor) override;
  void OnScalar(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                const std::string& value) override;
  void OnAlias(const YAML::Mark& mark, YAML::anchor_t anchor) override;
  void OnSequenceStart(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                       YAML::EmitterStyle::value style) override;
  void OnSequenceEnd() override { open_.pop_back(); }
  void OnMapStart(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                  YAML::EmitterStyle::value style) override;
  void OnMapEnd() override;

  /// What is wrong at the end of the text is said of the last thing in it.
  Place PlaceOf(const YAML::Mark& mark) const;
  Place PlaceAt(std::size_t offset) const;
  std::size_t Offset(const YAML::Mark& mark) const;

  /// For a quote that begins at `at` and is not closed in its file.
  void RefuseOpenQuote(std::size_t at) const;

 private:
  using Position = std::pair<std::size_t, std::size_t>;  // line and offset, as those of a node

  static Position PositionOf(const YAML::Mark& mark);
  Position PositionAt(std::size_t offset) const;
  Position PlaceOfEmpty(const YAML::Mark& mark) const;
  void MakeEmpty();
  YamlNode& AddScalar(const YAML::Mark& mark, YAML::anchor_t anchor);
  YamlNode& Add(const YAML::Mark& mark, YAML::anchor_t anchor, YamlNode::Kind kind);
  void Attach(const YamlNode& node);
  void Open(const YAML::Mark& mark, YAML::anchor_t anchor, YamlNode::Kind kind);
  void NoteDroppedKeys(const YamlNode& map);

  YamlDocument& document_;
  bool started_ = false;
  std::vector<YamlNode*> open_;
  std::unordered_map<YAML::anchor_t, YamlNode*> anchors_;
  std::size_t content_ = 0;   // where the last scalar's text begins
  YamlNode* null_ = nullptr;  // the last scalar, if it may still turn out to be empty
  Position empty_{0, 0};      // its place then
  Position last_{0, 0};       // of the last scalar or alias
};

}  // namespace kxbench::documents
