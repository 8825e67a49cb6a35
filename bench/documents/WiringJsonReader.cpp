#include "bench/documents/WiringJsonReader.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>
#include <vector>

#include "bench/documents/NameText.h"
#include "bench/documents/WiringBuilder.h"
#include "bench/documents/WiringTable.h"
#include "text/NumberText.h"

namespace kxbench::documents {

namespace {

using Object = nlohmann::json;

Pin PinOfText(const std::string& text) {
  const std::size_t point = text.rfind('.');
  if (point != std::string::npos && point > 0 && point + 1 < text.size()) {
    return {text.substr(0, point), text.substr(point + 1)};
  }
  return IsNumber(text) ? Pin{"", text} : Pin{text, ""};
}

/// Sees every key: of those that are twice in an object, the parser keeps one.
class KeysOnce {
 public:
  explicit KeysOnce(const Place& file) : file_(file) {}

  void See(Object::parse_event_t event, const Object& parsed) {
    if (event == Object::parse_event_t::object_start) open_.emplace_back();
    if (event == Object::parse_event_t::object_end) open_.pop_back();
    if (event != Object::parse_event_t::key) return;
    const auto& key = parsed.get_ref<const std::string&>();
    if (open_.back().insert(key).second) return;
    throw DocumentError(file_, "there are two members \"" + ShownText(key) + "\" in one object");
  }

 private:
  const Place& file_;
  std::vector<std::set<std::string>> open_;  // keys of the objects that have not ended, the outermost first
};

Object Parsed(const Place& file, std::string_view utf8) {
  KeysOnce keys(file);
  try {
    return Object::parse(utf8, [&keys](int, Object::parse_event_t event, const Object& parsed) {
      keys.See(event, parsed);
      return true;
    });
  } catch (const Object::parse_error& error) {
    const std::string_view before = utf8.substr(0, error.byte == 0 ? 0 : error.byte - 1);
    const auto lines = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    const std::size_t start = before.rfind('\n') == std::string_view::npos ? 0 : before.rfind('\n') + 1;
    throw DocumentError({file.file, lines + 1, before.size() - start + 1}, "this is no JSON");
  }
}

class WiringJsonReading {
 public:
  WiringJsonReading(const Object& object, Place file) : object_(object), file_(std::move(file)) {}

  MappedDocument Read() {
    if (!object_.is_object() || object_.value("format", Object()) != "wiring") {
      throw DocumentError(file_, "this is no object of the format \"wiring\"");
    }
    if (object_.value("version", Object()) != 1) throw DocumentError(file_, "its version is not 1");
    MappedDocument read;
    ReadChannels();
    for (const Object& net : Member("nets", Object::value_t::array)) AddNet(net);
    for (const Object& pin : Member("single", Object::value_t::array)) AddPin(pin, "\"single\"");
    WarnOf("excluded", "excluded pairs");
    WarnOf("suspended", "suspended channels");
    RefuseForgottenChannels();
    read.document = builder_.Take();
    for (const PlacedPin& pin : read.document.pins) {
      const auto channel = channels_.find(pin.pin);
      if (channel != channels_.end()) read.map.push_back({pin.pin, channel->second, file_});
    }
    return read;
  }

 private:
  const Object& Member(const char* name, Object::value_t type) const {
    const auto member = object_.find(name);
    if (member == object_.end() || member->type() != type) {
      throw DocumentError(file_, "there is no \"" + std::string(name) + "\" as this format has it");
    }
    return *member;
  }

  Pin PinOf(const Object& text) const {
    if (!text.is_string() || text.get_ref<const std::string&>().empty()) {
      throw DocumentError(file_, "a pin is no text");
    }
    return PinOfText(text.get<std::string>());
  }

  void ReadChannels() {
    std::set<std::int32_t> seen;
    for (const auto& [number, name] : Member("channels", Object::value_t::object).items()) {
      const auto channel = shorttest::TextToInteger(number);
      if (!channel) throw DocumentError(file_, ShownText(number) + " in \"channels\" is no channel");
      if (!seen.insert(*channel).second) {
        throw DocumentError(file_, "channel " + std::to_string(*channel) + " is twice in \"channels\"");
      }
      const auto [entry, isNew] = channels_.try_emplace(PinOf(name), *channel);
      if (isNew) continue;
      const auto [lower, higher] = std::minmax(entry->second, *channel);
      throw DocumentError(file_, Shown(entry->first) + " is the pin of channel " + std::to_string(lower) +
                                     " and of channel " + std::to_string(higher));
    }
  }

  void AddNet(const Object& net) {
    if (!net.is_array() || net.empty()) throw DocumentError(file_, "a net is no list of pins");
    const std::size_t first = AddPin(net.front(), "\"nets\"");
    for (auto pin = std::next(net.begin()); pin != net.end(); ++pin) {
      builder_.Connect(first, AddPin(*pin, "\"nets\""), false);
    }
  }

  std::size_t AddPin(const Object& text, const char* list) {
    const Pin pin = PinOf(text);
    const auto [entry, isNew] = lists_.try_emplace(pin, list);
    if (!isNew) {
      const std::string before = entry->second;
      throw DocumentError(file_, Shown(pin) + (before == list ? " is twice in " + before
                                                              : " is in " + before + " and in " + list));
    }
    return builder_.AddPin(pin, file_);
  }

  /// Suspended channels may be in a net, too: so says a damaged expectation that was exported.
  void RefuseForgottenChannels() const {
    std::set<Pin> suspended;
    for (const Object& pin : Member("suspended", Object::value_t::array)) suspended.insert(PinOf(pin));
    for (const auto& [pin, channel] : channels_) {
      if (lists_.contains(pin) || suspended.contains(pin)) continue;
      throw DocumentError(file_, Shown(pin) + ", the pin of channel " + std::to_string(channel) +
                                     ", is in no net, not in \"single\" and not in \"suspended\"");
    }
  }

  static std::string Shown(const Pin& pin) { return ShownText(PinText(pin)); }

  void WarnOf(const char* name, const std::string& what) {
    const std::size_t count = Member(name, Object::value_t::array).size();
    if (count > 0) builder_.Warn(file_, std::to_string(count) + " " + what + " are not taken over");
  }

  const Object& object_;
  Place file_;
  WiringBuilder builder_;
  std::map<Pin, std::int32_t> channels_;
  std::map<Pin, std::string> lists_;  // in which list each pin is
};

}  // namespace

MappedDocument ReadWiringJson(const std::string& fileName, std::string_view utf8) {
  const Place file{fileName, 0, 0};
  const Object object = Parsed(file, utf8);
  return WiringJsonReading(object, file).Read();
}

}  // namespace kxbench::documents
