// The WireViz and KBL files of the examples give the expectations that are stored beside them, and damaged
// ones do no harm.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "bench/documents/KblReader.h"
#include "bench/documents/WireVizReader.h"
#include "bench/wiring/ChannelNames.h"
#include "bench/wiring/Contacts.h"
#include "bench/wiring/ExpectationFacts.h"
#include "tests/bench/RowName.h"
#include "tests/bench/documents/DocumentTexts.h"
#include "text/FileAccess.h"

namespace kxbench::documents {
namespace {

struct ExampleHarness {
  std::string name;  // of the test
  std::string folder;
};

std::string FileOf(const ExampleHarness& example, const std::string& ending) {
  return std::string(EXAMPLES_FOLDER "/") + example.folder + '/' + example.folder + ending;
}

std::string TextOfFile(const ExampleHarness& example, const std::string& ending) {
  return shorttest::ReadWholeFile(shorttest::PathFromUtf8(FileOf(example, ending)));
}

WiringDocument ReadExample(const ExampleHarness& example, const std::string& ending,
                           const std::string& text) {
  const std::string file = example.folder + ending;
  return ending == ".kbl" ? ReadKbl(file, text) : ReadWireViz({{{file, text}}});
}

using PinNets = std::set<std::set<Pin>>;

PinNets NetsOfDocument(const WiringDocument& document) {
  PinNets nets;
  for (const DocumentNet& net : document.nets) nets.insert({net.pins.begin(), net.pins.end()});
  return nets;
}

PinNets NetsOfExpectation(const ExampleHarness& example) {
  const wiring::ExpectationFacts facts = wiring::FactsOf(FileOf(example, ".dat"));
  const wiring::ChannelNames names(FileOf(example, ".ini"));
  std::map<std::int32_t, std::string> named;
  for (std::int32_t channel = facts.firstChannel; channel <= facts.lastChannel; ++channel) {
    named.emplace(channel, names.Name(channel));
  }
  const auto contacts = wiring::ContactsOf(named);
  const auto pinOf = [&](std::int32_t channel) {
    return Pin{contacts.at(channel).connector, contacts.at(channel).pin};
  };
  PinNets nets;
  for (const auto& net : facts.nets.nets) {
    std::set<Pin> pins;
    for (const std::int32_t channel : net) pins.insert(pinOf(channel));
    nets.insert(pins);
  }
  for (const std::int32_t channel : facts.nets.unconnected) nets.insert({pinOf(channel)});
  return nets;
}

class ExampleDocumentsTest : public testing::TestWithParam<ExampleHarness> {};

TEST_P(ExampleDocumentsTest, GiveTheStoredExpectation) {
  const PinNets expected = NetsOfExpectation(GetParam());
  ASSERT_GT(expected.size(), 7U);
  for (const char* const ending : {".yml", ".kbl"}) {
    const WiringDocument document = ReadExample(GetParam(), ending, TextOfFile(GetParam(), ending));
    EXPECT_EQ(NetsOfDocument(document), expected) << ending;
    EXPECT_EQ(WarningLines(document), "") << ending;
  }
}

// Places at which a file is damaged in turn. A very large number damages each byte.
constexpr std::size_t DamagedPlaces = 300;

// Reads it or refuses it at a place.
void ReadDamaged(const ExampleHarness& example, const std::string& ending, const std::string& text) {
  const std::string refusal = RefusalOf([&] { ReadExample(example, ending, text); });
  EXPECT_TRUE(refusal.empty() || refusal.starts_with(example.folder + ending + ':')) << refusal;
}

TEST_P(ExampleDocumentsTest, CutOffAnywhereAreReadOrRefused) {
  for (const char* const ending : {".yml", ".kbl"}) {
    const std::string text = TextOfFile(GetParam(), ending);
    const std::size_t step = std::max<std::size_t>(1, text.size() / DamagedPlaces);
    for (std::size_t size = 0; size < text.size(); size += step)
      ReadDamaged(GetParam(), ending, text.substr(0, size));
  }
}

TEST_P(ExampleDocumentsTest, WithAChangedByteAnywhereAreReadOrRefused) {
  constexpr char Changes[] = {'\0', ' ', '\n', '"', '<', '>', '&', ':', '-', '[', ']', '*', '\x80', '\xFF'};
  for (const char* const ending : {".yml", ".kbl"}) {
    std::string text = TextOfFile(GetParam(), ending);
    const std::size_t step = std::max<std::size_t>(1, text.size() / DamagedPlaces);
    for (std::size_t at = 0; at < text.size(); at += step) {
      const char before = text[at];
      text[at] = Changes[at / step % std::size(Changes)];
      ReadDamaged(GetParam(), ending, text);
      text[at] = before;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Examples, ExampleDocumentsTest,
                         testing::Values(ExampleHarness{"TrailerAdapter", "trailer-adapter"},
                                         ExampleHarness{"AtxExtension", "atx-extension"},
                                         ExampleHarness{"NullModemCable", "null-modem-cable"},
                                         ExampleHarness{"CrossoverCable", "crossover-cable"}),
                         RowName<ExampleHarness>);

}  // namespace
}  // namespace kxbench::documents
