#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kxbench {

/// A text as a JSON string, in its quotes.
std::string JsonString(const std::string& utf8);

/// A finite number as JSON writes it, in the shortest form that reads back as the same number.
std::string JsonNumber(double value);

/// "[1, 2]" of what is JSON already.
std::string JsonArray(const std::vector<std::string>& elements);

/// Channel numbers, "[1, 14]".
std::string JsonChannels(const std::vector<std::int32_t>& channels);

/// Lists of channel numbers, "[[1, 14], [2, 15]]".
std::string JsonNets(const std::vector<std::vector<std::int32_t>>& nets);

/// An object, built member by member.
class JsonObject {
 public:
  /// `json` is JSON already.
  JsonObject& Add(const std::string& name, const std::string& json);
  std::string Text() const { return "{" + members_ + "}"; }

 private:
  std::string members_;
};

}  // namespace kxbench
