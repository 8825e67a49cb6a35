#include "bench/documents/YamlDocument.h"

#include <yaml-cpp/eventhandler.h>
#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

#include <algorithm>
#include <istream>
#include <streambuf>
#include <unordered_set>

#include "bench/documents/NameText.h"
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

  // What stood there is told apart later, by the text: all scalars are texts.
  void OnNull(const YAML::Mark& mark, YAML::anchor_t anchor) override {
    YamlNode& node = Add(mark, anchor, YamlNode::Kind::Scalar);
    const std::string_view rest =
        std::string_view(document_.text_).substr(std::min(Offset(mark), document_.text_.size()));
    if (rest.substr(0, 4) == "null" || rest.substr(0, 4) == "Null" || rest.substr(0, 4) == "NULL") {
      node.text = rest.substr(0, 4);
    } else {
      node.empty = true;
    }
    Attach(node);
  }

  void OnScalar(const YAML::Mark& mark, const std::string& tag, YAML::anchor_t anchor,
                const std::string& value) override {
    YamlNode& node = Add(mark, anchor, YamlNode::Kind::Scalar);
    node.text = value;
    node.quoted = tag == "!";
    Attach(node);
  }

  void OnAlias(const YAML::Mark& mark, YAML::anchor_t anchor) override {
    const auto found = anchors_.find(anchor);
    if (found == anchors_.end()) throw DocumentError(PlaceOf(mark), "an alias without its anchor");
    if (std::find(open_.begin(), open_.end(), found->second) != open_.end()) {
      throw DocumentError(PlaceOf(mark), "an alias inside of what it names");
    }
    Attach(*found->second);
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

  Place PlaceOf(const YAML::Mark& mark) const {
    return PlaceOf(static_cast<std::size_t>(std::max(mark.line, 0)),
                   static_cast<std::size_t>(std::max(mark.column, 0)));
  }
  Place PlaceOf(std::size_t line, std::size_t offset) const {
    YamlNode node;
    node.line = line;
    node.offset = offset;
    return document_.PlaceOf(node);
  }

 private:
  std::size_t Offset(const YAML::Mark& mark) const {
    return document_.places_->LineStart(static_cast<std::size_t>(std::max(mark.line, 0))) +
           static_cast<std::size_t>(std::max(mark.column, 0));
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
};

YamlDocument::YamlDocument(const std::vector<std::pair<std::string, std::string>>& files) {
  std::size_t lines = 0;
  for (const auto& [name, bytes] : files) {
    if (!text_.empty() && text_.back() != '\n') {
      text_ += '\n';
      ++lines;
    }
    files_.push_back({name, lines});
    const std::string text = shorttest::FileTextToUtf8(bytes);
    lines += static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    text_ += text;
  }
  places_.emplace(text_);

  Builder builder(*this);
  // The parser takes U+0004 for the end of the text.
  if (const std::size_t at = FindControlCharacter(text_); at != std::string::npos) {
    const std::size_t line = places_->At(text_, at).line - 1;
    throw DocumentError(builder.PlaceOf(line, at - places_->LineStart(line)),
                        "a control character: this is no text");
  }
  try {
    YamlTextBuffer buffer(text_);
    std::istream stream(&buffer);
    YAML::Parser parser(stream);
    while (parser.HandleNextDocument(builder)) {
    }
  } catch (const YAML::Exception& error) {
    std::string_view line = text_;
    line.remove_prefix(places_->LineStart(static_cast<std::size_t>(std::max(error.mark.line, 0))));
    throw DocumentError(builder.PlaceOf(error.mark),
                        "this is no YAML: " + ShownText(error.msg) + LikelyCause(error, line));
  }
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
