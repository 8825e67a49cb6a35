#include "bench/documents/WireVizAttributes.h"

#include <array>
#include <charconv>
#include <utility>

#include "bench/documents/NameText.h"
#include "text/Trim.h"

namespace kxbench::documents {

WireVizAttributes::WireVizAttributes(const YamlDocument& document, const YamlEntry& entry,
                                     std::string_view known, WiringBuilder& warnings)
    : document_(document), entry_(entry), name_(shorttest::Trim(entry.first->text)) {
  const YamlNode& attributes = *entry.second;
  if (attributes.empty) return;
  if (attributes.kind != YamlNode::Kind::Map) Fail(attributes, Name() + " needs a map of attributes");
  for (const auto& [key, value] : document.EntriesOf(attributes)) {
    values_.emplace(key->text, value);
    RefuseOldName(*key);
    if (known.find(' ' + key->text + ' ') != std::string_view::npos) continue;
    warnings.Warn(document.PlaceOf(*key),
                  "attribute " + ShownText(key->text) + " of " + Name() + " is not known and has no effect");
  }
}

void WireVizAttributes::Fail(const YamlNode& node, const std::string& text) const {
  throw DocumentError(document_.PlaceOf(node), text);
}

const YamlNode* WireVizAttributes::Value(const std::string& key) const {
  const auto found = values_.find(key);
  return found == values_.end() || found->second->empty ? nullptr : found->second;
}

std::string WireVizAttributes::Text(const std::string& key) const {
  const YamlNode* const value = Value(key);
  if (value == nullptr) return {};
  if (value->kind != YamlNode::Kind::Scalar) Fail(*value, key + " of " + Name() + " must be a text");
  return std::string(shorttest::Trim(value->text));
}

const std::vector<const YamlNode*>& WireVizAttributes::List(const std::string& key) const {
  static const std::vector<const YamlNode*> None;
  const YamlNode* const value = Value(key);
  if (value == nullptr) return None;
  if (value->kind != YamlNode::Kind::Sequence) Fail(*value, key + " of " + Name() + " must be a list");
  if (value->items.size() > MostPinsOfOnePart) FailTooMany(*value, key);
  document_.Spend(*value, value->items.size());
  return value->items;
}

std::size_t WireVizAttributes::Count(const std::string& key) const {
  const YamlNode* const value = Value(key);
  if (value == nullptr) return 0;
  if (value->kind != YamlNode::Kind::Scalar) Fail(*value, key + " of " + Name() + " must be a whole number");
  const std::string text = Text(key);
  std::size_t count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  if (error == std::errc::result_out_of_range) FailTooMany(*value, key);
  if (error != std::errc() || end != text.data() + text.size()) {
    Fail(*value, key + " of " + Name() + " must be a whole number" +
                     (text.empty() ? "" : ", not " + ShownText(text)));
  }
  if (text.size() > 1 && text.front() == '0') {
    Fail(*value, key + " of " + Name() + " must have no zero in front, which makes it octal: " + text);
  }
  if (count > MostPinsOfOnePart) FailTooMany(*value, key);
  document_.Spend(*value, count);
  return count;
}

WireVizIndex WireVizAttributes::IndexOf(const std::string& key) const {
  WireVizIndex index;
  const auto& list = List(key);
  for (std::size_t i = 0; i < list.size(); ++i) {
    const YamlNode& item = *list[i];
    if (item.kind != YamlNode::Kind::Scalar)
      Fail(item, key + " of " + Name() + " holds texts and nothing else");
    const std::string text(shorttest::Trim(item.text));
    if (!text.empty()) Add(index, text, i);
  }
  return index;
}

void WireVizAttributes::Add(WireVizIndex& index, const std::string& text, std::size_t at) {
  WireVizUses& uses = index[text];
  if (uses.count++ == 0) uses.first = at;
}

void WireVizAttributes::FailTooMany(const YamlNode& node, const std::string& key) const {
  Fail(node, key + " of " + Name() + " is more than " + std::to_string(MostPinsOfOnePart));
}

/// Attributes that earlier versions of WireViz had, and that say what is connected.
void WireVizAttributes::RefuseOldName(const YamlNode& key) const {
  constexpr std::array<std::pair<std::string_view, const char*>, 3> Renamed = {
      {{"pinout", "is called pinlabels today"},
       {"pinnumbers", "is called pins today"},
       {"autogenerate", "is gone: connection sets name templates today, NAME."}}};
  for (const auto& [old, today] : Renamed) {
    if (key.text == old) Fail(key, "attribute " + key.text + " of " + Name() + ' ' + today);
  }
}

}  // namespace kxbench::documents
