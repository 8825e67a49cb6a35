#include "bench/program/output/JsonLine.h"

#include <array>
#include <charconv>
#include <nlohmann/json.hpp>

namespace kxbench {

namespace {

using Ordered = nlohmann::ordered_json;

std::string Scalar(const Ordered& value) {
  if (!value.is_number_float()) return value.dump(-1, ' ', false, Ordered::error_handler_t::replace);
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value.get<double>()).ptr;
  return std::string(text.data(), end);
}

}  // namespace

std::string JsonLine(const Ordered& json) {
  if (!json.is_structured()) return Scalar(json);
  std::string members;
  for (const auto& [name, value] : json.items()) {
    if (!members.empty()) members += ", ";
    if (json.is_object()) members += Scalar(name) + ": ";
    members += JsonLine(value);
  }
  return json.is_object() ? "{" + members + "}" : "[" + members + "]";
}

}  // namespace kxbench
