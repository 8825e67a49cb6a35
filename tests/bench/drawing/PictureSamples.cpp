#include "tests/bench/drawing/PictureSamples.h"

#include <algorithm>
#include <filesystem>
#include <random>

namespace kxbench::drawing {

namespace {

/// The distributions of <random> differ from library to library; these do not.
class Dice {
 public:
  explicit Dice(std::uint32_t seed) : engine_(seed) {}
  std::size_t Below(std::size_t limit) { return engine_() % limit; }

  template <typename Element>
  void Shuffle(std::vector<Element>& elements) {
    for (std::size_t i = elements.size(); i > 1; --i) std::swap(elements[i - 1], elements[Below(i)]);
  }

 private:
  std::mt19937 engine_;
};

std::string PinName(Dice& dice, std::size_t number) {
  switch (dice.Below(8)) {
    case 0:
      return "Rückfahrscheinwerfer links über Relais K" + std::to_string(number);
    case 1:
      return "WWWWWWWWWWWWWWWWWWWW" + std::to_string(number);
    case 2:
      return "<Öl & \"Wärme\">";
    case 3:
      return "接地端子" + std::to_string(number);
    default:
      return std::to_string(number);
  }
}

const std::vector<std::string> Kinds = {
    "open",          "short",           "swapped",         "crossed", "misplaced", "plug-shifted",
    "plug-reversed", "plugs-exchanged", "high-resistance", "voltage", "compound"};

HarnessPicture Unnamed(std::uint32_t seed, std::size_t pins) {
  HarnessPicture picture = RandomPicture(seed, pins);
  for (DrawnPin& pin : picture.pins) {
    pin.connector.clear();
    pin.name.clear();
    pin.label.clear();
  }
  return picture;
}

HarnessPicture OneConnector(std::size_t pins) {
  HarnessPicture picture = RandomPicture(7, pins);
  for (DrawnPin& pin : picture.pins)
    pin.connector = "X1, the only connector of a harness with a very long name";
  return picture;
}

/// Every pin of the one side is connected with the next but so many of the other.
HarnessPicture Shifted(std::size_t pins, std::size_t shift) {
  HarnessPicture picture;
  picture.title = "shifted by " + std::to_string(shift);
  for (std::size_t i = 0; i < 2 * pins; ++i) {
    picture.pins.push_back(
        {static_cast<std::int32_t>(i + 1), i < pins ? "A" : "B", std::to_string(i % pins + 1), "", false});
  }
  for (std::size_t i = 0; i < pins; ++i) picture.nets.push_back({"", {i, pins + (i + shift) % pins}});
  return picture;
}

/// Channels side by side are left out of the check, and one pair across.
HarnessPicture WithExcludedPairs(HarnessPicture picture) {
  for (std::size_t i = 0; i + 1 < picture.pins.size(); i += 5) picture.excluded.emplace_back(i, i + 1);
  picture.excluded.emplace_back(2, picture.pins.size() - 1);
  picture.excluded.emplace_back(2, 3);
  return picture;
}

}  // namespace

HarnessPicture RandomPicture(std::uint32_t seed, std::size_t pins) {
  Dice dice(seed);
  HarnessPicture picture;
  picture.title = "Kabelbaum " + std::to_string(seed) + " für " + std::to_string(pins) + " Kontakte";
  for (std::size_t connector = 1; picture.pins.size() < pins; ++connector) {
    const std::size_t size = std::min(1 + dice.Below(30), pins - picture.pins.size());
    for (std::size_t i = 1; i <= size; ++i) {
      const auto channel = static_cast<std::int32_t>(picture.pins.size() + 1);
      picture.pins.push_back(
          {channel, "X" + std::to_string(connector), PinName(dice, i), "", dice.Below(20) == 0});
    }
  }
  std::vector<std::size_t> free;
  for (std::size_t pin = 0; pin < pins; ++pin) {
    if (!picture.pins[pin].suspended) free.push_back(pin);
  }
  dice.Shuffle(free);
  const std::size_t unconnected = pins / 4;
  while (free.size() > unconnected) {
    const std::size_t size = dice.Below(10) == 0 ? 3 + dice.Below(10) : 2 + dice.Below(2);
    DrawnNet net{dice.Below(4) == 0 ? "Masse & Schirm" : "", {}};
    while (net.pins.size() < size && !free.empty()) {
      net.pins.push_back(free.back());
      free.pop_back();
    }
    picture.nets.push_back(std::move(net));
  }
  return picture;
}

std::vector<FaultMark> RandomMarks(std::uint32_t seed, const HarnessPicture& picture) {
  Dice dice(seed);
  std::vector<FaultMark> marks;
  for (const std::string& kind : Kinds) {
    std::vector<std::int32_t> channels;
    for (std::size_t i = 0; i < 2 + dice.Below(3); ++i) {
      channels.push_back(picture.pins[dice.Below(picture.pins.size())].channel);
    }
    std::sort(channels.begin(), channels.end());
    channels.erase(std::unique(channels.begin(), channels.end()), channels.end());
    marks.push_back(MarkOf(kind, channels,
                           kind + ": ein Fehler, der über mehr als eine Zeile beschrieben wird, weil "
                                  "die Zeichnung schmal ist; look at <both> contacts first"));
    marks.back().alternatives = {"or: something else"};
    for (std::size_t i = 1; i < channels.size(); ++i) {
      marks.back().fault.moves.push_back({channels[i - 1], channels[i]});
    }
  }
  marks.back().fault.plugs = {picture.pins.front().connector};
  return marks;
}

HarnessPicture ExamplePicture(const std::string& example) {
  const std::string harness = (std::filesystem::path(EXAMPLES_FOLDER) / example / example).string();
  return PictureOf(wiring::FactsOf(harness + ".dat"), wiring::ChannelNames(harness + ".ini"),
                   example + ".dat");
}

std::vector<PictureSample> PictureSamples() {
  std::vector<PictureSample> samples;
  const auto add = [&](const std::string& name, const HarnessPicture& picture) {
    samples.push_back({name, picture, {}});
    if (picture.pins.empty()) return;
    const auto seed = static_cast<std::uint32_t>(samples.size());
    samples.push_back({name + ", with faults", picture, RandomMarks(seed, picture)});
  };
  for (const char* example :
       {"trailer-adapter", "crossover-cable", "null-modem-cable", "atx-extension", "generated-240"}) {
    add(example, ExamplePicture(example));
  }
  for (const std::size_t pins : {20U, 48U, 240U}) {
    add(std::to_string(pins) + " pins", RandomPicture(static_cast<std::uint32_t>(pins), pins));
    add(std::to_string(pins) + " channels without names",
        Unnamed(static_cast<std::uint32_t>(pins) + 1, pins));
  }
  add("no pin", HarnessPicture{"nothing", {}, {}, {}});
  add("one pin", RandomPicture(1, 1));
  add("one connector", OneConnector(30));
  add("shifted by one", Shifted(24, 1));
  add("reversed halves", Shifted(24, 12));
  add("pairs left out", WithExcludedPairs(RandomPicture(11, 48)));
  add("many pairs left out", WithExcludedPairs(RandomPicture(12, 240)));
  return samples;
}

}  // namespace kxbench::drawing
