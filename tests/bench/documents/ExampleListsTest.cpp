#include <gmock/gmock.h>

#include <filesystem>

#include "bench/comparison/WiringComparison.h"
#include "bench/documents/ChannelMap.h"
#include "bench/documents/WiringListReader.h"
#include "bench/wiring/ExpectationWriter.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "text/FileAccess.h"

/// The wiring lists among the examples give the expectations that lie beside them.

namespace kxbench::documents {
namespace {

class ExampleList : public testing::TestWithParam<const char*> {
 protected:
  std::string File(const std::string& ending) const {
    return (std::filesystem::path(EXAMPLES_FOLDER) / GetParam() / (GetParam() + ending)).string();
  }

  std::string Content(const std::string& ending) const { return shorttest::ReadWholeFile(File(ending)); }

  WiringDocument List() const { return ReadWiringList(File(".csv"), Content(".csv")); }
};

TEST_P(ExampleList, GivesTheStoredExpectation) {
  const Wiring wiring = WiringOf(List(), ReadChannelMap(File(".map.csv"), Content(".map.csv")));
  const TemporaryFolder folder;
  // Thresholds and options are those of a file that is there; its cells must not show through.
  const std::string file = folder.Write("made.dat", Content(".dat"));
  wiring::WriteExpectation(file, {wiring.pins.begin()->first, wiring.pins.rbegin()->first, {}},
                           wiring::OptionsFrom::File);
  ASSERT_NE(folder.Read("made.dat"), Content(".dat"));
  wiring::WriteExpectation(file, {wiring.pins.begin()->first, wiring.pins.rbegin()->first, wiring.nets},
                           wiring::OptionsFrom::File);
  EXPECT_EQ(folder.Read("made.dat"), Content(".dat"));
}

TEST_P(ExampleList, NamesThePinsAsTheProjectDoes) {
  const wiring::ExpectationFacts facts = wiring::FactsOf(File(".dat"));
  comparison::ComparedSide stored;
  stored.name = "stored";
  stored.isExpectation = true;
  stored.wiring = WiringOf(facts, wiring::ChannelNames(File(".ini")));
  comparison::ComparedSide list;
  list.name = "list";
  list.hasChannels = false;
  list.wiring = WiringOfPins(List());
  const comparison::WiringComparison comparison = comparison::Compare(stored, list);
  EXPECT_EQ(
      comparison::ComparisonReport(comparison),
      "stored against list, pin by pin:\nequal; " + std::to_string(facts.nets.nets.size()) + " nets agree\n");
}

INSTANTIATE_TEST_SUITE_P(Harnesses, ExampleList,
                         testing::Values("atx-extension", "crossover-cable", "null-modem-cable",
                                         "trailer-adapter"));

}  // namespace
}  // namespace kxbench::documents
