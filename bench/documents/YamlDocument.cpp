#include "bench/documents/YamlDocument.h"

#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

#include <algorithm>
#include <istream>
#include <streambuf>
#include <tuple>
#include <unordered_set>

#include "bench/documents/NameText.h"
#include "bench/documents/YamlDocumentText.h"
#include "text/TextEncoding.h"

namespace kxbench::documents {

namespace {

constexpr std::size_t DeepestYaml = 100;
constexpr std::size_t MostYamlNodes = 1'000'000;
constexpr std::size_t MostYamlSteps = 5'000'000;
constexpr std::string_view MergeKey = "<<";

/// A stream over a text that is not copied.
class YamlTextBuffer : public std::streambuf {
 public:
  explicit YamlTextBuffer(std::string& text) { setg(text.data(), text.data(), text.data() + text.size()); }
};

bool IsMergeKey(const YamlNode& key) {
  return key.kind == YamlNode::Kind::Scalar && !key.quoted && key.text == MergeKey;
}

/// Whether the parser complains of what begins there, not of something within.
bool IsAtAToken(const YAML::Exception& error) {
  return error.msg == YAML::ErrorMsg::END_OF_MAP || error.msg == YAML::ErrorMsg::END_OF_SEQ ||
         error.msg == YAML::ErrorMsg::END_OF_MAP_FLOW || error.msg == YAML::ErrorMsg::END_OF_SEQ_FLOW;
}

/// What is wrong in `line`, or most likely is, where the parser's words do not help.
std::string LikelyCause(const YAML::Exception& error, std::string_view line) {
  const std::size_t first = line.find_first_not_of(' ');
  if (first != std::string_view::npos && line[first] == '\t') {
    return " (the line is indented by a tab; YAML takes blanks alone)";
  }
  if (error.msg == YAML::ErrorMsg::END_OF_MAP || error.msg == YAML::ErrorMsg::END_OF_SEQ) {
    return " (is the line indented as those above that it belongs to?)";
  }
  if (error.msg == YAML::ErrorMsg::END_OF_SEQ_FLOW) return " (is a [ not closed, or a comma missing?)";
  if (error.msg == YAML::ErrorMsg::END_OF_MAP_FLOW) return " (is a { not closed, or a comma missing?)";
  return {};
}

}  // namespace

/// Puts the tree together from the parser's events.
class YamlDocument::Builder : public YAML::EventHandler {
 public:
  explicit Builder(YamlDocument& document) : document_(document) {}

  void OnDocumentStart(const YAML::Mark& mark) override {
    if (started_)
      throw DocumentError(PlaceOf(mark), "there is a second document in the file: there must be one");
    started_ = true;
  }
  void OnDocumentEnd() override {}

  // The parser says this of null and ~ and of values that are not there. All scalars are texts: an empty one
  // is told from the others by the text, and by what the parser finds next.
  void OnNull(const YAML::Mark& mark, YAML::anchor_t anchor) override {
    YamlNode& node = AddScalar(mark, anchor);
    empty_ = anchor != 0 ? PositionOf(mark) : PlaceOfEmpty(mark);
    null_ = &node;
    node.text = YamlNullAt(document_.text_, content_);
    if (node.text.empty()) MakeEmpty();
    Attach(node);
    last_ = PositionOf(mark);
  }

  void OnScalar(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                const std::string& value) override {
    YamlNode& node = AddScalar(mark, anchor);
    RefuseOpenQuote(content_);
    node.text = value;
    node.quoted = tag == "!";
    Attach(node);
    last_ = PositionOf(mark);
  }

  void OnAlias(const YAML::Mark& mark, YAML::anchor_t anchor) override {
    const auto found = anchors_.find(anchor);
    if (found == anchors_.end()) throw DocumentError(PlaceOf(mark), "an alias without its anchor");
    if (std::find(open_.begin(), open_.end(), found->second) != open_.end()) {
      throw DocumentError(PlaceOf(mark), "an alias inside of what it names");
    }
    Attach(*found->second);
    last_ = PositionOf(mark);
  }

  void OnSequenceStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                       YAML::EmitterStyle::value) override {
    Open(mark, anchor, YamlNode::Kind::Sequence);
  }
  void OnSequenceEnd() override { open_.pop_back(); }

  void OnMapStart(const YAML::Mark& mark, const std::string&, YAML::anchor_t anchor,
                  YAML::EmitterStyle::value) override {
    Open(mark, anchor, YamlNode::Kind::Map);
  }
  void OnMapEnd() override {
    NoteDroppedKeys(*open_.back());
    open_.pop_back();
  }

  /// What is wrong at the end of the text is said of the last thing in it.
  Place PlaceOf(const YAML::Mark& mark) const {
    const std::size_t last = document_.text_.find_last_not_of(" \t\r\n");
    const std::size_t end = last == std::string::npos ? 0 : last + 1;
    return PlaceAt(std::min(Offset(mark), end));
  }
  Place PlaceAt(std::size_t offset) const {
    YamlNode node;
    std::tie(node.line, node.offset) = PositionAt(offset);
    return document_.PlaceOf(node);
  }

  std::size_t Offset(const YAML::Mark& mark) const {
    const auto [line, offset] = PositionOf(mark);
    return std::min(document_.places_->LineStart(line) + offset, document_.text_.size());
  }

  void RefuseOpenQuote(std::size_t at) const {
    if (!IsYamlQuoteOpen(document_.text_, at, document_.FileEnd(at))) return;
    throw DocumentError(PlaceAt(at), "this is no YAML: the quote is not closed in this file");
  }

 private:
  using Position = std::pair<std::size_t, std::size_t>;  // line and offset, as those of a node

  static Position PositionOf(const YAML::Mark& mark) {
    return {static_cast<std::size_t>(std::max(mark.line, 0)),
            static_cast<std::size_t>(std::max(mark.column, 0))};
  }
  Position PositionAt(std::size_t offset) const {
    const std::size_t line = document_.places_->At(document_.text_, offset).line - 1;
    return {line, offset - document_.places_->LineStart(line)};
  }

  /// Of an empty value, the parser tells where the next thing is.
  Position PlaceOfEmpty(const YAML::Mark& mark) const {
    if (open_.empty()) return PositionOf(mark);
    const YamlNode& parent = *open_.back();
    if (parent.kind == YamlNode::Kind::Map) return parent.items.size() % 2 == 1 ? last_ : PositionOf(mark);
    const std::size_t at = Offset(mark);
    const bool inBrackets =
        at < document_.text_.size() && (document_.text_[at] == ',' || document_.text_[at] == ']');
    const std::size_t dash = inBrackets ? std::string::npos : YamlDashBefore(document_.text_, at);
    return dash == std::string::npos ? PositionOf(mark) : PositionAt(dash);
  }

  void MakeEmpty() {
    null_->text.clear();
    null_->empty = true;
    std::tie(null_->line, null_->offset) = empty_;
    null_ = nullptr;
  }

  YamlNode& AddScalar(const YAML::Mark& mark, YAML::anchor_t anchor) {
    const std::size_t content = YamlContentAt(document_.text_, Offset(mark));
    // The null there belongs to this node, and the one before was empty.
    if (null_ != nullptr && content == content_) MakeEmpty();
    null_ = nullptr;
    content_ = content;
    return Add(mark, anchor, YamlNode::Kind::Scalar);
  }

  YamlNode& Add(const YAML::Mark& mark, YAML::anchor_t anchor, YamlNode::Kind kind) {
    if (document_.nodes_.size() >= MostYamlNodes) {
      throw DocumentError(
          PlaceOf(mark), "the document is too large: more than " + std::to_string(MostYamlNodes) + " values");
    }
    YamlNode& node = document_.nodes_.emplace_back();
    node.kind = kind;
    node.line = static_cast<std::size_t>(mark.line);
    node.offset = static_cast<std::size_t>(mark.column);
    if (anchor != 0) anchors_[anchor] = &node;
    return node;
  }

  void Attach(const YamlNode& node) {
    if (open_.empty()) {
      document_.root_ = &node;
    } else {
      open_.back()->items.push_back(&node);
    }
  }

  void Open(const YAML::Mark& mark, YAML::anchor_t anchor, YamlNode::Kind kind) {
    if (open_.size() >= DeepestYaml) {
      throw DocumentError(PlaceOf(mark), "nested deeper than " + std::to_string(DeepestYaml) + " levels");
    }
    YamlNode& node = Add(mark, anchor, kind);
    Attach(node);
    open_.push_back(&node);
  }

  void NoteDroppedKeys(const YamlNode& map) {
    std::unordered_set<std::string_view> later;
    std::vector<const YamlNode*> dropped;
    for (std::size_t i = map.items.size() / 2; i-- > 0;) {
      const YamlNode& key = *map.items[2 * i];
      if (key.kind != YamlNode::Kind::Scalar || IsMergeKey(key)) continue;
      if (!later.insert(key.text).second) dropped.push_back(&key);
    }
    document_.droppedKeys_.insert(document_.droppedKeys_.end(), dropped.rbegin(), dropped.rend());
  }

  YamlDocument& document_;
  bool started_ = false;
  std::vector<YamlNode*> open_;
  std::unordered_map<YAML::anchor_t, YamlNode*> anchors_;
  std::size_t content_ = 0;   // where the last scalar's text begins
  YamlNode* null_ = nullptr;  // the last scalar, if it may still turn out to be empty
  Position empty_{0, 0};      // its place then
  Position last_{0, 0};       // of the last scalar or alias
};

YamlDocument::YamlDocument(const std::vector<std::pair<std::string, std::string>>& files) {
  std::size_t lines = 0;
  for (const auto& [name, bytes] : files) {
    files_.push_back({name, lines});
    std::string text = shorttest::FileTextToUtf8(bytes);
    if (!text.empty() && text.back() != '\n') text += '\n';
    lines += static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    text_ += text;
  }
  places_.emplace(text_);

  Builder builder(*this);
  // The parser takes U+0004 for the end of the text.
  if (const std::size_t at = FindControlCharacter(text_); at != std::string::npos) {
    throw DocumentError(builder.PlaceAt(at), "a control character: this is no text");
  }
  Parse();
}

void YamlDocument::Parse() {
  Builder builder(*this);
  try {
    YamlTextBuffer buffer(text_);
    std::istream stream(&buffer);
    YAML::Parser parser(stream);
    while (parser.HandleNextDocument(builder)) {
    }
  } catch (const YAML::Exception& error) {
    if (IsAtAToken(error)) builder.RefuseOpenQuote(builder.Offset(error.mark));
    std::string_view line = text_;
    line.remove_prefix(
        std::min(places_->LineStart(static_cast<std::size_t>(std::max(error.mark.line, 0))), text_.size()));
    const DocumentError refusal(builder.PlaceOf(error.mark),
                                "this is no YAML: " + ShownText(error.msg) + LikelyCause(error, line));
    if (error.msg == YAML::ErrorMsg::DOC_IN_SCALAR) RefuseQuoteBefore(builder.Offset(error.mark));
    throw refusal;
  }
}

/// Which quote it is that a "---" or "..." stands in: the parser gives its place where the text ends before
/// that.
void YamlDocument::RefuseQuoteBefore(std::size_t at) {
  text_.resize(at);
  nodes_.clear();
  droppedKeys_.clear();
  Parse();
}

/// Where the file ends that has the character at `at`.
std::size_t YamlDocument::FileEnd(std::size_t at) const {
  std::size_t end = text_.size();
  for (auto file = files_.rbegin(); file != files_.rend(); ++file) {
    const std::size_t start = places_->LineStart(file->firstLine);
    if (start <= at) break;
    end = start;
  }
  return end;
}

Place YamlDocument::PlaceOf(const YamlNode& node) const {
  const auto file = std::find_if(files_.rbegin(), files_.rend(),
                                 [&](const File& candidate) { return candidate.firstLine <= node.line; });
  if (file == files_.rend()) return {};
  const std::size_t column = places_->At(text_, places_->LineStart(node.line) + node.offset).column;
  return {file->name, node.line - file->firstLine + 1, column};
}

std::vector<YamlEntry> YamlDocument::EntriesOf(const YamlNode& map) const {
  Entries entries;
  Positions positions;
  Collect(map, entries, positions, 0);
  return entries;
}

void YamlDocument::Spend(const YamlNode& node, std::size_t steps) const {
  steps_ += steps;
  if (steps_ > MostYamlSteps) throw DocumentError(PlaceOf(node), "the document asks for too much work");
}

void YamlDocument::Put(const YamlEntry& entry, Entries& entries, Positions& positions) const {
  Spend(*entry.first, 1);
  const auto [position, isNew] = positions.try_emplace(entry.first->text, entries.size());
  if (isNew) {
    entries.push_back(entry);
  } else {
    entries[position->second] = entry;
  }
}

void YamlDocument::Collect(const YamlNode& map, Entries& entries, Positions& positions, int depth) const {
  for (std::size_t i = 0; i + 1 < map.items.size(); i += 2) {
    if (IsMergeKey(*map.items[i])) CollectMerged(*map.items[i + 1], entries, positions, depth);
  }
  for (std::size_t i = 0; i + 1 < map.items.size(); i += 2) {
    const YamlNode& key = *map.items[i];
    if (IsMergeKey(key)) continue;
    if (key.kind != YamlNode::Kind::Scalar) throw DocumentError(PlaceOf(key), "a key must be a text");
    Put({&key, map.items[i + 1]}, entries, positions);
  }
}

void YamlDocument::CollectMerged(const YamlNode& merged, Entries& entries, Positions& positions,
                                 int depth) const {
  Spend(merged, merged.items.size() + 1);
  if (depth > static_cast<int>(DeepestYaml)) {
    throw DocumentError(PlaceOf(merged), "merge keys are nested too deeply");
  }
  if (merged.kind == YamlNode::Kind::Map) {
    Collect(merged, entries, positions, depth + 1);
    return;
  }
  if (merged.kind != YamlNode::Kind::Sequence) {
    throw DocumentError(PlaceOf(merged), "a merge key (<<) takes a map or a list of maps");
  }
  for (auto item = merged.items.rbegin(); item != merged.items.rend(); ++item) {
    if ((*item)->kind != YamlNode::Kind::Map) {
      throw DocumentError(PlaceOf(**item), "a merge key (<<) takes a map or a list of maps");
    }
    Collect(**item, entries, positions, depth + 1);
  }
}

}  // namespace kxbench::documents
