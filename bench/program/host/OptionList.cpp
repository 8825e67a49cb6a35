#include "bench/program/host/OptionList.h"

#include <algorithm>
#include <utility>

#include "bench/program/system/Failure.h"

namespace kxbench {

void OptionList::Argument(const std::string& name, const std::string& description, Needed needed,
                          std::string& target) {
  arguments_.push_back({name, description, needed, [&target](const std::string& value) { target = value; }});
}

CommandOption& OptionList::Value(const std::string& name, const std::string& type,
                                 const std::string& description,
                                 std::function<void(const std::string& value)> read) {
  options_.push_back({name, type, description, std::move(read)});
  return options_.back();
}

CommandOption& OptionList::Value(const std::string& name, const std::string& type,
                                 const std::string& description, std::optional<std::string>& target) {
  return Value(name, type, description, [&target](const std::string& value) { target = value; });
}

CommandOption& OptionList::Flag(const std::string& name, const std::string& description, bool& target) {
  return Value(name, "", description, [&target](const std::string&) { target = true; });
}

void OptionList::Show(const std::vector<std::string>& names) {
  for (CommandOption& option : options_) {
    if (std::find(names.begin(), names.end(), option.name) != names.end()) option.listed = true;
  }
}

const CommandOption* OptionList::Find(const std::string& name) const {
  const auto found = std::find_if(options_.begin(), options_.end(),
                                  [&](const CommandOption& option) { return option.name == name; });
  return found == options_.end() ? nullptr : &*found;
}

std::string OptionList::Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : "|") + word;
  return text;
}

std::size_t OptionList::WordIndex(const std::string& option, const std::string& value,
                                  const std::vector<std::string>& words) {
  std::string expected;
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (value == words[i]) return i;
    expected += (i == 0 ? "" : i + 1 == words.size() ? " or " : ", ") + words[i];
  }
  throw Failure(option + ": expected " + expected + ", not " + value);
}

}  // namespace kxbench
