#include "bench/documents/WiringJsonReader.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>

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

Object Parsed(const Place& file, std::string_view utf8) {
  try {
    return Object::parse(utf8);
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
    std::map<Pin, std::int32_t> channels;
    for (const auto& [number, name] : Member("channels", Object::value_t::object).items()) {
      const auto channel = shorttest::TextToInteger(number);
      if (!channel) throw DocumentError(file_, number + " in \"channels\" is no channel");
      channels.try_emplace(PinOf(name), *channel);
    }
    for (const Object& net : Member("nets", Object::value_t::array)) AddNet(net);
    for (const Object& pin : Member("single", Object::value_t::array)) builder_.AddPin(PinOf(pin), file_);
    WarnOf("excluded", "excluded pairs");
    WarnOf("suspended", "suspended channels");
    read.document = builder_.Take();
    for (const PlacedPin& pin : read.document.pins) {
      const auto channel = channels.find(pin.pin);
      if (channel != channels.end()) read.map.push_back({pin.pin, channel->second, file_});
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

  void AddNet(const Object& net) {
    if (!net.is_array() || net.empty()) throw DocumentError(file_, "a net is no list of pins");
    const std::size_t first = builder_.AddPin(PinOf(net.front()), file_);
    for (const Object& pin : net) builder_.Connect(first, builder_.AddPin(PinOf(pin), file_), false);
  }

  void WarnOf(const char* name, const std::string& what) {
    const std::size_t count = Member(name, Object::value_t::array).size();
    if (count > 0) builder_.Warn(file_, std::to_string(count) + " " + what + " are not taken over");
  }

  const Object& object_;
  Place file_;
  WiringBuilder builder_;
};

}  // namespace

MappedDocument ReadWiringJson(const std::string& fileName, std::string_view utf8) {
  const Place file{fileName, 0, 0};
  const Object object = Parsed(file, utf8);
  return WiringJsonReading(object, file).Read();
}

}  // namespace kxbench::documents
