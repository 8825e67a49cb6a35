#include "bench/documents/YamlDocumentBuilder.h"

#include <yaml-cpp/mark.h>

#include <algorithm>
#include <string_view>
#include <tuple>
#include <unordered_set>

#include "bench/documents/YamlDocumentText.h"
#include "text/Utf8.h"

namespace kxbench::documents {

namespace {

constexpr std::size_t MostYamlNodes = 1'000'000;

}  // namespace

bool IsMergeKey(const YamlNode& key) {
  return key.kind == YamlNode::Kind::Scalar && !key.quoted && key.text == "<<";
}

void YamlDocument::Builder::OnDocumentStart(const YAML::Mark& mark) {
  if (started_)
    throw DocumentError(PlaceOf(mark), "there is a second document in the file: there must be one");
  started_ = true;
}

void YamlDocument::Builder::OnNull(const YAML::Mark& mark, YAML::anchor_t anchor) {
  YamlNode& node = AddScalar(mark, anchor);
  empty_ = anchor != 0 ? PositionOf(mark) : PlaceOfEmpty(mark);
  null_ = &node;
  node.text = YamlNullAt(document_.text_, content_);
  if (node.text.empty()) MakeEmpty();
  Attach(node);
  last_ = PositionOf(mark);
}

void YamlDocument::Builder::OnScalar(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                                     const std::string& value) {
  YamlNode& node = AddScalar(mark, anchor);
  RefuseOpenQuote(content_);
  // The parser makes single bytes of these two.
  if (!shorttest::IsUtf8(value)) {
    throw DocumentError(PlaceOf(mark), "the escapes \\N and \\_ are not read: write the character itself");
  }
  node.text = value;
  node.quoted = tag == "!";
  Attach(node);
  last_ = PositionOf(mark);
}

void YamlDocument::Builder::OnAlias(const YAML::Mark& mark, YAML::anchor_t anchor) {
  const auto found = anchors_.find(anchor);
  if (found == anchors_.end()) throw DocumentError(PlaceOf(mark), "an alias without its anchor");
  if (std::find(open_.begin(), open_.end(), found->second) != open_.end()) {
    throw DocumentError(PlaceOf(mark), "an alias inside of what it names");
  }
  Attach(*found->second);
  last_ = PositionOf(mark);
}

void YamlDocument::Builder::OnSequenceStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                                            YAML::EmitterStyle::value) {
  Open(mark, anchor, YamlNode::Kind::Sequence);
}

void YamlDocument::Builder::OnMapStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                                       YAML::EmitterStyle::value) {
  Open(mark, anchor, YamlNode::Kind::Map);
}

void YamlDocument::Builder::OnMapEnd() {
  NoteDroppedKeys(*open_.back());
  open_.pop_back();
}

Place YamlDocument::Builder::PlaceOf(const YAML::Mark& mark) const {
  const std::size_t last = document_.text_.find_last_not_of(" \t\r\n");
  const std::size_t end = last == std::string::npos ? 0 : last + 1;
  return PlaceAt(std::min(Offset(mark), end));
}

Place YamlDocument::Builder::PlaceAt(std::size_t offset) const {
  YamlNode node;
  std::tie(node.line, node.offset) = PositionAt(offset);
  return document_.PlaceOf(node);
}

std::size_t YamlDocument::Builder::Offset(const YAML::Mark& mark) const {
  const auto [line, offset] = PositionOf(mark);
  return std::min(document_.places_->LineStart(line) + offset, document_.text_.size());
}

void YamlDocument::Builder::RefuseOpenQuote(std::size_t at) const {
  if (!IsYamlQuoteOpen(document_.text_, at, document_.FileEnd(at))) return;
  throw DocumentError(PlaceAt(at), "this is no YAML: the quote is not closed in this file");
}

YamlDocument::Builder::Position YamlDocument::Builder::PositionOf(const YAML::Mark& mark) {
  return {static_cast<std::size_t>(std::max(mark.line, 0)),
          static_cast<std::size_t>(std::max(mark.column, 0))};
}

YamlDocument::Builder::Position YamlDocument::Builder::PositionAt(std::size_t offset) const {
  const std::size_t line = document_.places_->At(document_.text_, offset).line - 1;
  return {line, offset - document_.places_->LineStart(line)};
}

/// Of an empty value, the parser tells where the next thing is.
YamlDocument::Builder::Position YamlDocument::Builder::PlaceOfEmpty(const YAML::Mark& mark) const {
  if (open_.empty()) return PositionOf(mark);
  const YamlNode& parent = *open_.back();
  if (parent.kind == YamlNode::Kind::Map) return parent.items.size() % 2 == 1 ? last_ : PositionOf(mark);
  const std::size_t at = Offset(mark);
  const bool inBrackets =
      at < document_.text_.size() && (document_.text_[at] == ',' || document_.text_[at] == ']');
  const std::size_t dash = inBrackets ? std::string::npos : YamlDashBefore(document_.text_, at);
  return dash == std::string::npos ? PositionOf(mark) : PositionAt(dash);
}

void YamlDocument::Builder::MakeEmpty() {
  null_->text.clear();
  null_->empty = true;
  std::tie(null_->line, null_->offset) = empty_;
  null_ = nullptr;
}

YamlNode& YamlDocument::Builder::AddScalar(const YAML::Mark& mark, YAML::anchor_t anchor) {
  const std::size_t content = YamlContentAt(document_.text_, Offset(mark));
  // The null there belongs to this node, and the one before was empty.
  if (null_ != nullptr && content == content_) MakeEmpty();
  null_ = nullptr;
  content_ = content;
  return Add(mark, anchor, YamlNode::Kind::Scalar);
}

YamlNode& YamlDocument::Builder::Add(const YAML::Mark& mark, YAML::anchor_t anchor, YamlNode::Kind kind) {
  if (document_.nodes_.size() >= MostYamlNodes) {
    throw DocumentError(PlaceOf(mark),
                        "the document is too large: more than " + std::to_string(MostYamlNodes) + " values");
  }
  YamlNode& node = document_.nodes_.emplace_back();
  node.kind = kind;
  node.line = static_cast<std::size_t>(mark.line);
  node.offset = static_cast<std::size_t>(mark.column);
  if (anchor != 0) anchors_[anchor] = &node;
  return node;
}

void YamlDocument::Builder::Attach(const YamlNode& node) {
  if (open_.empty()) {
    document_.root_ = &node;
  } else {
    open_.back()->items.push_back(&node);
  }
}

void YamlDocument::Builder::Open(const YAML::Mark& mark, YAML::anchor_t anchor, YamlNode::Kind kind) {
  if (open_.size() >= DeepestYaml) {
    throw DocumentError(PlaceOf(mark), "nested deeper than " + std::to_string(DeepestYaml) + " levels");
  }
  YamlNode& node = Add(mark, anchor, kind);
  Attach(node);
  open_.push_back(&node);
}

void YamlDocument::Builder::NoteDroppedKeys(const YamlNode& map) {
  std::unordered_set<std::string_view> later;
  std::vector<const YamlNode*> dropped;
  for (std::size_t i = map.items.size() / 2; i-- > 0;) {
    const YamlNode& key = *map.items[2 * i];
    if (key.kind != YamlNode::Kind::Scalar || IsMergeKey(key)) continue;
    if (!later.insert(key.text).second) dropped.push_back(&key);
  }
  document_.droppedKeys_.insert(document_.droppedKeys_.end(), dropped.rbegin(), dropped.rend());
}

}  // namespace kxbench::documents
