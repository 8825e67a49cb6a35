#pragma once

#include <string>
#include <vector>

namespace kxbench {

/// A text as a JSON string, in its quotes.
std::string JsonString(const std::string& utf8);

/// A finite number as JSON writes it, in the shortest form that reads back as the same number.
std::string JsonNumber(double value);

/// "[1, 2]" of what is JSON already.
std::string JsonArray(const std::vector<std::string>& elements);

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
