#include "bench/documents/ChannelMap.h"

#include <algorithm>
#include <map>
#include <utility>

#include "bench/documents/WiringBuilder.h"
#include "bench/documents/WiringTable.h"
#include "text/NumberText.h"

namespace kxbench::documents {

namespace {

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += (text.empty() ? "" : "; ") + line;
  return text;
}

std::string ChannelLimit() {
  return "the tester has the channels 1 to " + std::to_string(wiring::MostChannels);
}

std::string NoChannel(const Place& place, const std::string& text) {
  return PlaceText(place) + ": " + text + " is no channel: " + ChannelLimit();
}

std::string Also(const MappedPin& first, const std::string& what) {
  std::string text = what;
  if (first.place.line > 0) text += " (line " + std::to_string(first.place.line) + ")";
  return text;
}

ChannelMap MapOf(const WiringTable& table) {
  const ListLayout& layout = table.layout;
  PlaceSplitter places;
  if (!layout.from.connector) {
    for (const CsvRow& row : table.rows) places.Learn(table.At(row, layout.from.pin).text);
  }
  ChannelMap map;
  std::vector<std::string> faults;
  std::size_t needed = *layout.channel + 1;
  for (const auto& column : {layout.from.connector, layout.from.pin}) {
    if (column) needed = std::max(needed, *column + 1);
  }
  for (const CsvRow& row : table.rows) {
    if (SameTexts(row.cells, table.head)) continue;
    table.RequireFields(row, needed);
    const CsvCell& channel = table.At(row, layout.channel);
    const Place place{table.file, row.line, 0};
    const bool none = channel.text.empty() || SaysNothing(channel.text);
    const auto number = none ? std::optional(NoChannelYet) : shorttest::TextToInteger(channel.text);
    if (!number) {
      faults.push_back(NoChannel(table.PlaceOf(channel), channel.text));
      continue;
    }
    const std::string& pin = table.At(row, layout.from.pin).text;
    Pin mapped = {table.At(row, layout.from.connector).text, pin};
    if (!layout.from.connector && !pin.empty()) mapped = places.Split(pin);
    if (mapped == Pin() && none) continue;
    if (mapped == Pin()) mapped = UnnamedPin(*number);
    map.push_back({std::move(mapped), *number, place});
  }
  if (!faults.empty()) throw MapError(std::move(faults));
  return map;
}

/// Digits as a number of any length: without zeros in front, by length, then by text.
bool LessByNumber(const std::string& a, const std::string& b) {
  const auto digits = [](const std::string& text) {
    const std::size_t start = std::min(text.find_first_not_of('0'), text.size());
    return std::string_view(text).substr(start);
  };
  const std::string_view first = digits(a);
  const std::string_view second = digits(b);
  return first.size() != second.size() ? first.size() < second.size() : first < second;
}

std::string RangeOf(std::int32_t first, std::int32_t last) {
  return first == last ? std::to_string(first) : std::to_string(first) + "-" + std::to_string(last);
}

/// What of a document and a map goes together, and what does not.
class MapCheck {
 public:
  MapCheck(const WiringDocument& document, const ChannelMap& map) : map_(map) {
    for (const PlacedPin& pin : document.pins) pins_.insert(pin.pin);
    for (const MappedPin& entry : map) Look(entry);
    for (const PlacedPin& pin : document.pins) {
      if (channels_.contains(pin.pin)) continue;
      faults_.push_back(PlaceText(pin.place) + ": " + PinText(pin.pin) + " is on no channel" + OfMap());
    }
    if (!users_.empty()) {
      const std::int32_t first = users_.begin()->first;
      const std::int32_t last = users_.rbegin()->first;
      if (last - first >= TShortTestData::MaxChannels) {
        faults_.push_back("the channels " + RangeOf(first, last) +
                          " are more than an expectation can have, " +
                          std::to_string(TShortTestData::MaxChannels));
      }
    }
    if (document.pins.empty()) faults_.emplace_back("the document has no pins");
    if (!faults_.empty()) throw MapError(std::move(faults_));
  }

  std::int32_t ChannelOf(const Pin& pin) const { return channels_.at(pin); }
  const std::map<std::int32_t, const MappedPin*>& Users() const { return users_; }

 private:
  std::string OfMap() const {
    return map_.empty() || map_.front().place.file.empty() ? "" : " of " + map_.front().place.file;
  }

  void Look(const MappedPin& entry) {
    if (entry.channel == NoChannelYet) return;
    const std::string where = entry.place.file.empty() ? "" : PlaceText(entry.place) + ": ";
    const std::string name = PinText(entry.pin);
    if (entry.channel < 1 || entry.channel > wiring::MostChannels) {
      faults_.push_back(NoChannel(entry.place, std::to_string(entry.channel)));
      channels_.try_emplace(entry.pin, entry.channel);
      return;
    }
    const auto [pin, isNewPin] = channels_.try_emplace(entry.pin, entry.channel);
    const auto [user, isNewChannel] = users_.try_emplace(entry.channel, &entry);
    if (!isNewPin) {
      faults_.push_back(where + name + " is on channel " + std::to_string(pin->second) + " already");
    } else if (!isNewChannel) {
      faults_.push_back(where + "channel " + std::to_string(entry.channel) + " is used already, " +
                        Also(*user->second, "for " + PinText(user->second->pin)));
    } else if (!pins_.contains(entry.pin)) {
      faults_.push_back(where + name + " is not in the document");
    }
  }

  const ChannelMap& map_;
  std::set<Pin> pins_;
  std::map<Pin, std::int32_t> channels_;
  std::map<std::int32_t, const MappedPin*> users_;
  std::vector<std::string> faults_;
};

}  // namespace

MapError::MapError(std::vector<std::string> lines)
    : std::runtime_error(Joined(lines)), lines_(std::move(lines)) {}

ChannelMap ReadChannelMap(const std::string& fileName, std::string text) {
  const std::string utf8 = CheckedDocumentText(fileName, std::move(text));
  return MapOf(ReadWiringTable(fileName, utf8, TableUse::Map, std::nullopt));
}

std::optional<ChannelMap> MapInList(const std::string& fileName, std::string text) {
  const std::string utf8 = CheckedDocumentText(fileName, std::move(text));
  const WiringTable table = ReadWiringTable(fileName, utf8, TableUse::List, std::nullopt);
  if (!table.layout.IsMap()) return std::nullopt;
  return MapOf(table);
}

std::optional<ChannelMap> MapOfNumbers(const WiringDocument& document) {
  ChannelMap map;
  std::vector<std::string> faults;
  for (const PlacedPin& pin : document.pins) {
    if (!pin.pin.connector.empty()) return std::nullopt;
    const auto number = shorttest::TextToInteger(pin.pin.pin);
    if (!number) {
      faults.push_back(NoChannel(pin.place, pin.pin.pin));
      continue;
    }
    map.push_back({pin.pin, *number, pin.place});
  }
  if (!faults.empty()) throw MapError(std::move(faults));
  return map;
}

ChannelMap AssignChannels(const WiringDocument& document, std::int32_t first) {
  const auto count = static_cast<std::int64_t>(document.pins.size());
  const std::int64_t last = first + count - 1;
  if (count > TShortTestData::MaxChannels) {
    throw MapError({"the document has " + std::to_string(count) + " pins, an expectation at most " +
                    std::to_string(TShortTestData::MaxChannels) + " channels"});
  }
  if (first < 1 || last > wiring::MostChannels) {
    throw MapError(
        {std::to_string(count) + " pins from channel " + std::to_string(first) + " on: " + ChannelLimit()});
  }
  std::vector<const PlacedPin*> order;
  for (const PlacedPin& pin : document.pins) order.push_back(&pin);
  for (auto begin = order.begin(); begin != order.end();) {
    const std::string& connector = (*begin)->pin.connector;
    const auto end =
        std::find_if(begin, order.end(), [&](const PlacedPin* p) { return p->pin.connector != connector; });
    std::stable_sort(begin, end, [](const PlacedPin* a, const PlacedPin* b) {
      const bool numbers = IsNumber(a->pin.pin);
      if (numbers != IsNumber(b->pin.pin)) return numbers;
      return numbers && LessByNumber(a->pin.pin, b->pin.pin);
    });
    begin = end;
  }
  ChannelMap map;
  for (const PlacedPin* pin : order) {
    map.push_back({pin->pin, static_cast<std::int32_t>(first + static_cast<std::int64_t>(map.size())), {}});
  }
  return map;
}

std::string ChannelMapText(const ChannelMap& map) {
  std::string text = "connector,pin,channel\n";
  for (const MappedPin& entry : map) {
    text += CsvField(entry.pin.connector) + "," + CsvField(entry.pin.pin) + "," +
            std::to_string(entry.channel) + "\n";
  }
  return text;
}

std::vector<AdapterLine> AdapterLines(const ChannelMap& map) {
  std::vector<AdapterLine> lines;
  for (std::size_t begin = 0; begin < map.size();) {
    std::size_t end = begin;
    AdapterLine line{map[begin].pin.connector, ""};
    while (end < map.size() && map[end].pin.connector == line.connector) {
      std::size_t last = end;  // of a run of pins that are consecutive numbers
      const auto number = [&](std::size_t i) {
        return IsNumber(map[i].pin.pin) ? shorttest::TextToInteger(map[i].pin.pin) : std::nullopt;
      };
      while (last + 1 < map.size() && map[last + 1].pin.connector == line.connector && number(last) &&
             number(last + 1) && std::int64_t{*number(last)} + 1 == *number(last + 1)) {
        ++last;
      }
      line.text += (line.text.empty() ? "" : ", ") + map[end].pin.pin;
      if (last > end) line.text += "-" + map[last].pin.pin;
      end = last + 1;
    }
    line.text += (line.text.empty() ? "on " : " on ") +
                 std::string(end - begin == 1 ? "channel " : "channels ") +
                 RangeOf(map[begin].channel, map[end - 1].channel);
    lines.push_back(std::move(line));
    begin = end;
  }
  return lines;
}

WiringDocument WithSplices(const WiringDocument& document, const std::set<std::string>& connectors) {
  if (connectors.empty()) return document;
  WiringBuilder builder;
  for (const PlacedPin& pin : document.pins) builder.AddPin(pin.pin, pin.place);
  for (const DocumentNet& net : document.nets) {
    const std::size_t first = builder.AddPin(net.pins.front(), {});
    for (const Pin& pin : net.pins) builder.Connect(first, builder.AddPin(pin, {}), false);
    builder.NameNet(first, net.name);
  }
  for (const std::string& connector : connectors) builder.MakeSplice(connector);
  WiringDocument joined = builder.Take();
  joined.splices += document.splices;
  joined.wires = document.wires;
  joined.warnings = document.warnings;
  return joined;
}

std::set<std::string> ConnectorsWithoutChannel(const WiringDocument& document, const ChannelMap& map) {
  std::set<std::string> connectors;
  for (const PlacedPin& pin : document.pins) connectors.insert(pin.pin.connector);
  for (const MappedPin& entry : map) connectors.erase(entry.pin.connector);
  connectors.erase("");
  return connectors;
}

Wiring WiringOf(const WiringDocument& document, const ChannelMap& map) {
  const MapCheck check(document, map);
  Wiring wiring;
  for (std::int32_t channel = check.Users().begin()->first; channel <= check.Users().rbegin()->first;
       ++channel) {
    const auto user = check.Users().find(channel);
    const bool used = user != check.Users().end();
    wiring.pins[channel] = used ? user->second->pin : UnnamedPin(channel);
    if (!used) wiring.single.push_back(channel);
  }
  for (const DocumentNet& net : document.nets) {
    std::vector<std::int32_t> channels;
    for (const Pin& pin : net.pins) channels.push_back(check.ChannelOf(pin));
    std::sort(channels.begin(), channels.end());
    if (channels.size() == 1) {
      wiring.single.push_back(channels.front());
    } else {
      wiring.nets.push_back(std::move(channels));
    }
  }
  std::sort(wiring.nets.begin(), wiring.nets.end());
  std::sort(wiring.single.begin(), wiring.single.end());
  return wiring;
}

}  // namespace kxbench::documents
