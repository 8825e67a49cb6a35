// The example harnesses: every device shows what its comments promise. Measured here pair by pair, without
// the plug-in's procedures, so that devices and promised records are held against something independent.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <numeric>
#include <set>
#include <sstream>
#include <vector>

#include "plugin/data/ShorttestData.h"
#include "simulator/DescriptionReader.h"
#include "tests/simulator/Bench.h"
#include "text/Paths.h"

namespace simulator {
namespace {

namespace fs = std::filesystem;

using ::testing::IsEmpty;
using ::testing::IsSupersetOf;
using Channels = std::vector<int>;
using Pairs = std::set<std::pair<int, int>>;

fs::path ExamplesFolder() { return shorttest::PathFromUtf8(EXAMPLES_DIR); }

struct Example {
  std::string harness;
  std::string device;
};

void PrintTo(const Example& example, std::ostream* out) { *out << example.harness << "/" << example.device; }

std::vector<Example> AllExamples() {
  std::vector<Example> examples;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(ExamplesFolder())) {
    if (entry.path().extension() != ".device") continue;
    examples.push_back({entry.path().parent_path().filename().string(), entry.path().stem().string()});
  }
  std::sort(examples.begin(), examples.end(),
            [](const Example& a, const Example& b) { return a.harness + a.device < b.harness + b.device; });
  return examples;
}

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

/// All numbers in a text: the channels that a finding names.
Channels NumbersIn(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c < '0' || c > '9'; }, ' ');
  std::istringstream stream(text);
  return {std::istream_iterator<int>(stream), {}};
}

/// The records that a device's comments promise, in fields.
std::vector<std::vector<std::string>> PromisedRecords(const fs::path& device) {
  constexpr std::string_view Prefix = "# record: ";
  std::vector<std::vector<std::string>> records;
  std::ifstream file(device);
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with(Prefix)) records.push_back(Split(line.substr(Prefix.size()), '|'));
  }
  return records;
}

class ExampleDevice : public Bench, public testing::WithParamInterface<Example> {
 protected:
  ExampleDevice()
      : folder_(ExamplesFolder() / GetParam().harness),
        expectation_(shorttest::Utf8FromPath(folder_ / (GetParam().harness + ".dat"))),
        records_(PromisedRecords(DeviceFile())) {
    tester_.emplace(ReadDeviceDescription(DeviceFile()), time_);
    for (int card = 0; card < expectation_.AnzahlKarten(); ++card) CloseAuxiliaries(card);
  }

  fs::path DeviceFile() const { return folder_ / (GetParam().device + ".device"); }

  CellState Expected(int a, int b) const {
    return expectation_.Get(a - expectation_.von, b - expectation_.von);
  }

  Channels AllChannels() const {
    Channels channels(static_cast<std::size_t>(expectation_.bis - expectation_.von + 1));
    std::iota(channels.begin(), channels.end(), expectation_.von);
    return channels;
  }

  bool Connected(int a, int b) { return Between(a, b) < expectation_.Schwelle; }

  /// Pairs expected to be connected that are not.
  Pairs Missing() {
    Pairs missing;
    for (const int a : AllChannels()) {
      for (int b = a + 1; b <= expectation_.bis; ++b) {
        if (Expected(a, b) == CellState::Connected && !Connected(a, b)) missing.emplace(a, b);
      }
    }
    return missing;
  }

  /// Pairs connected that are not expected to be.
  Pairs Shorted() {
    Pairs shorted;
    for (const int a : AllChannels()) {
      Channels others;
      for (const int b : AllChannels()) {
        if (a != b && Expected(a, b) == CellState::NotConnected) others.push_back(b);
      }
      if (Against(a, others) >= expectation_.Schwelle2) continue;
      for (const int b : others) {
        if (a < b && Connected(a, b)) shorted.emplace(a, b);
      }
    }
    return shorted;
  }

  /// Reading of one channel against many at once.
  double Against(int channel, const Channels& others) {
    Close(channel, 0);
    for (const int other : others) Close(other, 1);
    const double reading = Reading();
    Open(channel, 0);
    for (const int other : others) Open(other, 1);
    return reading;
  }

  /// The promised records of one kind, by the text that they start with.
  std::vector<std::vector<std::string>> Records(std::string_view start) const {
    std::vector<std::vector<std::string>> chosen;
    std::copy_if(records_.begin(), records_.end(), std::back_inserter(chosen),
                 [&](const auto& fields) { return fields[0].starts_with(start); });
    return chosen;
  }

  /// A check that found a voltage or too many errors has not looked at everything.
  bool StopsEarly() const {
    return !Records("Spannung").empty() ||
           std::any_of(records_.begin(), records_.end(),
                       [](const auto& fields) { return fields[0].ends_with("ABBRUCH"); });
  }

  fs::path folder_;
  TShortTestData expectation_;
  std::vector<std::vector<std::string>> records_;
};

TEST_P(ExampleDevice, HasTheMissingConnectionsItPromises) {
  const Pairs missing = Missing();
  Pairs promised;
  for (const auto& fields : Records("fehlende Verbindung")) {
    const Channels channels = NumbersIn(fields[0]);
    ASSERT_EQ(channels.size(), 2U);
    if (fields[2] == "-1") continue;  // not measured: one of the two carries a voltage
    EXPECT_EQ(Between(channels[0], channels[1]), std::stod(fields[2])) << fields[0];
    promised.emplace(channels[0], channels[1]);
  }
  if (StopsEarly()) {
    EXPECT_THAT(missing, IsSupersetOf(promised));
  } else {
    EXPECT_EQ(missing, promised);
  }
}

TEST_P(ExampleDevice, HasTheShortCircuitsItPromises) {
  const Pairs shorted = Shorted();
  Pairs promised;
  for (const auto& fields : Records("Kurzschluss zwischen")) {
    const std::size_t middle = fields[0].find(" und ");
    ASSERT_NE(middle, std::string::npos);
    const Channels net = NumbersIn(fields[0].substr(0, middle));
    for (const int b : NumbersIn(fields[0].substr(middle))) {
      const auto isShorted = [&](int a) { return shorted.contains(std::minmax(a, b)); };
      EXPECT_TRUE(std::any_of(net.begin(), net.end(), isShorted)) << fields[0];
      for (const int a : net) promised.insert(std::minmax(a, b));
    }
  }
  // A net that is broken as well is named as a whole, though only a part of it is shorted.
  EXPECT_THAT(promised, IsSupersetOf(shorted));
}

TEST_P(ExampleDevice, HasTheVoltageItPromises) {
  Pairs live;  // channel and its millivolts against all channels below it
  for (const int channel : AllChannels()) {
    Close(channel, 0);
    const double volts = Volts();
    Open(channel, 0);
    Close(channel, 1);
    if (volts < 0.7) continue;
    live.emplace(channel, static_cast<int>(volts * 1000.0));
    break;
  }
  Pairs promised;
  for (const auto& fields : Records("Spannung an Kanal")) {
    promised.emplace(NumbersIn(fields[0])[0], static_cast<int>(std::stod(fields[2]) * 1000.0));
  }
  if (GetParam().device == "charged-capacitor" && promised.empty()) {
    EXPECT_FALSE(live.empty()) << "nothing to wait for";
    Wait(expectation_.Timeout / 1000.0);
    EXPECT_LT(std::abs(Volts()), 0.7) << "not discharged in time";
  } else {
    EXPECT_EQ(live, promised);
  }
}

TEST_P(ExampleDevice, CountsItsPairs) {
  const auto summary = Records("Verbindungstest");
  ASSERT_EQ(summary.size(), 1U);
  int expected = 0;
  for (const int a : AllChannels()) {
    for (int b = a + 1; b <= expectation_.bis; ++b)
      expected += Expected(a, b) == CellState::Connected ? 1 : 0;
  }
  EXPECT_EQ(std::stoi(summary[0][1]), expected);
  EXPECT_EQ(std::stoi(summary[0][4]), expected);
  if (!StopsEarly()) {
    EXPECT_EQ(std::stoi(summary[0][2]), expected - static_cast<int>(Missing().size()));
  }
  const auto shorts = Records("Kurzschlusstest");
  ASSERT_EQ(shorts.size(), 1U);
  EXPECT_EQ(std::stoul(shorts[0][2]), Records("Kurzschluss zwischen").size());
}

TEST_P(ExampleDevice, GoodMeansNoFinding) {
  const bool good = records_.size() == 2;
  const bool harmless = GetParam().device == "good" || GetParam().device == "charged-capacitor";
  EXPECT_TRUE(good ? harmless : GetParam().device != "good");
}

INSTANTIATE_TEST_SUITE_P(Files, ExampleDevice, testing::ValuesIn(AllExamples()), [](const auto& row) {
  std::string name = row.param.harness + "_" + row.param.device;
  std::replace(name.begin(), name.end(), '-', '_');
  return name;
});

TEST(Examples, ShowEveryKindOfFault) {
  const std::set<std::string> kinds{"open-wire", "swapped-pair", "short-between-nets",
                                    "high-resistance-joint", "charged-capacitor"};
  std::map<std::string, std::set<std::string>> shown;
  for (const Example& example : AllExamples()) {
    if (kinds.contains(example.device)) shown[example.harness].insert(example.device);
  }
  EXPECT_TRUE(std::any_of(shown.begin(), shown.end(), [&](const auto& one) { return one.second == kinds; }))
      << "no harness has them all";
}

TEST(Examples, EveryHarnessHasItsFiles) {
  for (const Example& example : AllExamples()) {
    const fs::path folder = ExamplesFolder() / example.harness;
    for (const std::string& file : {std::string("README.md"), std::string("good.device"),
                                    std::string("check.kxs"), example.harness + ".dat"}) {
      EXPECT_TRUE(fs::exists(folder / file)) << example.harness << "/" << file;
    }
  }
}

TEST(Examples, ExpectationsEndTheirLinesWithCarriageReturnAndLineFeed) {
  std::vector<std::string> wrong;
  for (const Example& example : AllExamples()) {
    std::ifstream file(ExamplesFolder() / example.harness / (example.harness + ".dat"), std::ios::binary);
    for (std::string line; std::getline(file, line);) {
      if (!line.ends_with('\r')) wrong.push_back(example.harness + ": " + line);
    }
  }
  EXPECT_THAT(wrong, IsEmpty());
}

}  // namespace
}  // namespace simulator
