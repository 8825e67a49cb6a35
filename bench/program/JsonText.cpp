#include "bench/program/JsonText.h"

#include <array>
#include <charconv>

namespace kxbench {

std::string JsonString(const std::string& utf8) {
  constexpr const char* Digits = "0123456789abcdef";
  std::string text = "\"";
  for (const char c : utf8) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      text += '\\';
      text += c;
    } else if (byte < 0x20U) {
      text += "\\u00";
      text += Digits[byte / 16U];
      text += Digits[byte % 16U];
    } else {
      text += c;
    }
  }
  return text + "\"";
}

std::string JsonNumber(double value) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return std::string(text.data(), end);
}

std::string JsonArray(const std::vector<std::string>& elements) {
  std::string text;
  for (const std::string& element : elements) text += (text.empty() ? "" : ", ") + element;
  return "[" + text + "]";
}

std::string JsonChannels(const std::vector<std::int32_t>& channels) {
  std::vector<std::string> numbers;
  numbers.reserve(channels.size());
  for (const std::int32_t channel : channels) numbers.push_back(std::to_string(channel));
  return JsonArray(numbers);
}

std::string JsonNets(const std::vector<std::vector<std::int32_t>>& nets) {
  std::vector<std::string> lists;
  lists.reserve(nets.size());
  for (const auto& net : nets) lists.push_back(JsonChannels(net));
  return JsonArray(lists);
}

JsonObject& JsonObject::Add(const std::string& name, const std::string& json) {
  members_ += (members_.empty() ? "" : ", ") + JsonString(name) + ": " + json;
  return *this;
}

}  // namespace kxbench
