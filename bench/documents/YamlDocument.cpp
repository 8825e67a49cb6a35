#include "bench/documents/YamlDocument.h"

#include <yaml-cpp/exceptions.h>
#include <yaml-cpp/parser.h>

#include <algorithm>
#include <istream>
#include <streambuf>

#include "bench/documents/NameText.h"
#include "bench/documents/YamlDocumentBuilder.h"
#include "text/TextEncoding.h"

namespace kxbench::documents {

namespace {

constexpr std::size_t MostYamlSteps = 5'000'000;

/// A stream over a text that is not copied.
class YamlTextBuffer : public std::streambuf {
 public:
  explicit YamlTextBuffer(std::string& text) { setg(text.data(), text.data(), text.data() + text.size()); }
};

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
