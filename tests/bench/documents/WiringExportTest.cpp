#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <random>

#include "bench/documents/ReadDocument.h"
#include "bench/documents/WiringExport.h"
#include "tests/bench/RowName.h"
#include "tests/bench/documents/ListTexts.h"
#include "tests/bench/program/TemporaryFolder.h"

namespace kxbench::documents {
namespace {

using Writer = std::string (*)(const Wiring&);

/// A harness of some connectors, with names that each format must protect.
class HarnessMaker {
 public:
  explicit HarnessMaker(unsigned seed) : random_(seed) {}

  Wiring Make() {
    Wiring wiring;
    const std::int32_t first = Number(1, 40);
    const std::int32_t count = Number(1, 30);
    std::vector<std::vector<std::int32_t>> nets(static_cast<std::size_t>(Number(1, 20)));
    for (std::int32_t channel = first; channel < first + count; ++channel) {
      wiring.pins[channel] = Number(0, 9) == 0 ? UnnamedPin(channel) : NewPin();
      const auto net = static_cast<std::size_t>(Number(0, static_cast<std::int32_t>(nets.size()) * 2));
      if (net < nets.size()) {
        nets[net].push_back(channel);
      } else if (Number(0, 9) == 0) {
        wiring.suspended.push_back(channel);
      } else {
        wiring.single.push_back(channel);
      }
    }
    for (std::vector<std::int32_t>& net : nets) {
      if (net.size() > 1) wiring.nets.push_back(net);
      if (net.size() == 1) wiring.single.push_back(net.front());
    }
    std::sort(wiring.nets.begin(), wiring.nets.end());
    std::sort(wiring.single.begin(), wiring.single.end());
    if (count > 1) wiring.excluded.emplace_back(first, first + 1);
    return wiring;
  }

 private:
  static constexpr auto Words = std::to_array<const char*>(
      {"X1",   "X2",  "x1",   "on",    "ON",      "no",  "null", "~",    "1e3",  "0x10", "007",
       "7",    "a,b", "a;b",  "\"q\"", "'q'",     "Tür", "#1",   "// c", "a: b", "- a",  "{a}",
       "[b]",  "&a",  "*a",   "!a",    "%",       "@",   "`",    "\\",   "a\\n", "<<",   "true",
       "1.5",  "X.1", "frei", "nc",    "channel", "net", "W1",   "W1_",  "=a",   "--",   "==>",
       "<-->", "1-4", "S",    "s",     "日本",    "a b", "+1",   "1_0",  "?",    "|",    ">"});

  std::int32_t Number(std::int32_t low, std::int32_t high) {
    return std::uniform_int_distribution<std::int32_t>(low, high)(random_);
  }

  std::string Word() {
    return Words[static_cast<std::size_t>(Number(0, static_cast<std::int32_t>(Words.size()) - 1))];
  }

  Pin NewPin() {
    for (;;) {
      std::string pin = Number(0, 1) == 0 ? std::to_string(Number(1, 40)) : Word();
      std::erase(pin, '.');  // as it is after the last point of a name
      const Pin made = {Word(), pin};
      if (std::find(used_.begin(), used_.end(), made) != used_.end()) continue;
      used_.push_back(made);
      return made;
    }
  }

  std::mt19937 random_;
  std::vector<Pin> used_;
};

struct FormatRow {
  const char* name;
  Writer write;
  DocumentFormat format;
};

class ExportedHarness : public testing::TestWithParam<FormatRow> {
 protected:
  /// The document that an export is read as.
  DocumentRead Back(const std::string& text) const {
    return ReadDocument({folder_.Write("export", text), std::nullopt, {}, std::nullopt});
  }

  TemporaryFolder folder_;
};

using NetTexts = std::vector<std::vector<std::string>>;

std::string Apart(const Pin& pin) { return pin.connector + "|" + pin.pin; }

/// The nets by their pins, each sorted, and all.
NetTexts Sorted(NetTexts nets) {
  for (auto& net : nets) std::sort(net.begin(), net.end());
  std::sort(nets.begin(), nets.end());
  return nets;
}

NetTexts NetNames(const Wiring& wiring) {
  NetTexts nets;
  for (const auto& net : wiring.nets) {
    auto& pins = nets.emplace_back();
    for (const std::int32_t channel : net) pins.push_back(Apart(wiring.pins.at(channel)));
  }
  for (const std::int32_t channel : wiring.single) nets.push_back({Apart(wiring.pins.at(channel))});
  return Sorted(std::move(nets));
}

NetTexts NetNames(const WiringDocument& document) {
  NetTexts nets;
  for (const DocumentNet& net : document.nets) {
    auto& pins = nets.emplace_back();
    for (const Pin& pin : net.pins) pins.push_back(Apart(pin));
  }
  return Sorted(std::move(nets));
}

bool HasConnector(const Wiring& wiring) {
  return std::any_of(wiring.pins.begin(), wiring.pins.end(), [&wiring](const auto& pin) {
    return !pin.second.connector.empty() &&
           std::find(wiring.suspended.begin(), wiring.suspended.end(), pin.first) == wiring.suspended.end();
  });
}

constexpr unsigned RandomHarnesses = 150;

TEST_P(ExportedHarness, IsReadBackAsTheSameNets) {
  for (unsigned seed = 1; seed <= RandomHarnesses; ++seed) {
    Wiring wiring = HarnessMaker(seed).Make();
    if (GetParam().format == DocumentFormat::WireViz) {
      // What WireViz would take for an arrow or a range stands under the number of its channel.
      for (auto& [channel, pin] : wiring.pins) {
        const bool arrow = pin.connector == "--" || pin.connector == "==>" || pin.connector == "<-->";
        if (arrow || pin.pin == "1-4") pin = UnnamedPin(channel);
      }
    }
    if (wiring.nets.empty() && wiring.single.empty()) continue;
    const std::string text = GetParam().write(wiring);
    const DocumentRead read = Back(text);
    EXPECT_EQ(read.format, GetParam().format);
    ASSERT_EQ(NetNames(read.document), NetNames(wiring)) << text;
    if (read.ownMap) {
      EXPECT_EQ(WiringOf(read.document, *read.ownMap).nets, wiring.nets) << text;
    }
    EXPECT_EQ(read.ownMap.has_value(), GetParam().format != DocumentFormat::WireViz || !HasConnector(wiring))
        << text;
  }
}

INSTANTIATE_TEST_SUITE_P(Formats, ExportedHarness,
                         testing::Values(FormatRow{"Csv", WiringListText, DocumentFormat::Csv},
                                         FormatRow{"WireViz", WireVizText, DocumentFormat::WireViz},
                                         FormatRow{"Json", WiringJson, DocumentFormat::Json}),
                         RowName<FormatRow>);

}  // namespace
}  // namespace kxbench::documents
