#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "bench/documents/WireVizParts.h"

namespace kxbench::documents {

/// The attributes of one connector or cable. What reads one throws DocumentError, with its place, where it is
/// not what it must be.
class WireVizAttributes {
 public:
  /// `known`: their names, a blank before and after each; others are warned of.
  WireVizAttributes(const YamlDocument& document, const YamlEntry& entry, std::string_view known,
                    WiringBuilder& warnings);

  const std::string& Name() const { return name_; }

  [[noreturn]] void Fail(const YamlNode& node, const std::string& text) const;
  [[noreturn]] void Fail(const std::string& text) const { Fail(*entry_.first, text); }

  /// nullptr for an attribute that is missing or empty.
  const YamlNode* Value(const std::string& key) const;

  std::string Text(const std::string& key) const;
  const std::vector<const YamlNode*>& List(const std::string& key) const;

  /// 0 for one that is missing.
  std::size_t Count(const std::string& key) const;

  /// The texts of a list, by where they stand. Entries that say nothing have their place in it.
  WireVizIndex IndexOf(const std::string& key) const;

  static void Add(WireVizIndex& index, const std::string& text, std::size_t at);

 private:
  [[noreturn]] void FailTooMany(const YamlNode& node, const std::string& key) const;
  void RefuseOldName(const YamlNode& key) const;

  const YamlDocument& document_;
  const YamlEntry& entry_;
  std::string name_;
  std::map<std::string, const YamlNode*> values_;
};

}  // namespace kxbench::documents
