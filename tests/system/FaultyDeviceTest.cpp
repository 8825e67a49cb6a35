// A device is learned, then spoiled: the check must find it.
#include <gmock/gmock.h>

#include <algorithm>

#include "tests/system/RandomHarness.h"
#include "tests/system/SystemBench.h"

namespace shorttest::testkit {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr int DevicesPerKind = 300;
constexpr const char* Missing = "fehlende Verbindung zwischen ";
constexpr const char* Short = "Kurzschluss zwischen ";
constexpr const char* Live = "Spannung an Kanal ";

std::string Positive(double value) { return std::to_string(std::max(value, 0.001)); }

class FaultyDevice : public SystemBench {
 protected:
  /// Learns random harnesses and checks each with what `spoil` adds to its description; `judge` takes the
  /// records. `spoil` may return nothing: then the harness has no place for the fault.
  template <typename Spoil, typename Judge>
  void ForRandomDevices(Spoil spoil, Judge judge) {
    int spoiled = 0;
    for (int seed = 0; spoiled < DevicesPerKind && !HasFailure(); ++seed) {
      ASSERT_LT(seed, 20 * DevicesPerKind) << "the harnesses have no place for this fault";
      Random random(static_cast<std::uint64_t>(2'000'000 + seed));
      HarnessOptions options;
      options.channels = random.Between(2, 14);
      // What lies within a net adds to what is measured between nets; see LimitsTest.
      options.netPart = 0.2;
      const RandomHarness harness = MakeHarness(random, options);
      const std::string fault = spoil(harness, random);
      if (fault.empty()) continue;
      ++spoiled;
      SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + harness.description + "spoiled by\n" + fault);
      TShortTestData data = harness.blank;
      data.U_Control = 1;
      Connect(harness.description);
      Learn(data);
      Connect(harness.description + fault);
      judge(harness, Check(data));
      EXPECT_TRUE(TesterIsSafe());
    }
  }

  static const std::vector<int>* NetOf(const RandomHarness& harness, int channel) {
    for (const auto& net : harness.nets) {
      if (std::find(net.begin(), net.end(), channel) != net.end()) return &net;
    }
    return nullptr;
  }

  static int AnyChannel(const RandomHarness& harness, Random& random) {
    return random.Between(harness.blank.von, harness.blank.bis);
  }

  /// A channel that belongs to a net; 0 when there is none.
  static int AnyWired(const RandomHarness& harness, Random& random) {
    return harness.nets.empty() ? 0 : random.Pick(random.Pick(harness.nets));
  }

  /// Two channels that do not belong together; equal when none were found.
  static std::pair<int, int> AnyStrangers(const RandomHarness& harness, Random& random) {
    for (int attempt = 0; attempt < 20; ++attempt) {
      const int a = AnyChannel(harness, random);
      const int b = AnyChannel(harness, random);
      if (a != b && (NetOf(harness, a) == nullptr || NetOf(harness, a) != NetOf(harness, b))) return {a, b};
    }
    return {0, 0};
  }
};

TEST_F(FaultyDevice, ABrokenWireIsFound) {
  ForRandomDevices(
      [](const RandomHarness& harness, Random& random) {
        const int channel = AnyWired(harness, random);
        return channel == 0 ? std::string() : "disconnect " + std::to_string(channel) + "\n";
      },
      [](const RandomHarness&, const std::string& records) {
        EXPECT_THAT(records, HasSubstr(Missing));
        EXPECT_THAT(records, Not(HasSubstr(Short)));
      });
}

TEST_F(FaultyDevice, AJointOfHighResistanceIsFound) {
  int channel = 0;
  ForRandomDevices(
      [&](const RandomHarness& harness, Random& random) {
        channel = AnyWired(harness, random);
        const double ohm = harness.blank.Schwelle * random.Real(1.1, 50.0);
        return channel == 0 ? std::string() : "joint " + std::to_string(channel) + " " + Positive(ohm) + "\n";
      },
      [&](const RandomHarness&, const std::string& records) {
        EXPECT_THAT(records, HasSubstr(Missing));
        const std::string name = std::to_string(channel);
        EXPECT_TRUE(records.find(" " + name + " und ") != std::string::npos ||
                    records.find(" und " + name + "|") != std::string::npos ||
                    records.find(" und " + name + " ") != std::string::npos)
            << records;
        EXPECT_THAT(records, Not(HasSubstr(Short)));
      });
}

TEST_F(FaultyDevice, AShortIsFound) {
  ForRandomDevices(
      [](const RandomHarness& harness, Random& random) {
        const auto [a, b] = AnyStrangers(harness, random);
        if (a == b) return std::string();
        const double ohm = harness.blank.Schwelle * random.Real(0.0, 0.3);
        return "wire " + std::to_string(a) + " " + std::to_string(b) + " " + Positive(ohm) + "\n";
      },
      [](const RandomHarness&, const std::string& records) {
        EXPECT_THAT(records, HasSubstr(Short));
        EXPECT_THAT(records, Not(HasSubstr(Missing)));
      });
}

TEST_F(FaultyDevice, SwappedWiresAreFound) {
  ForRandomDevices(
      [](const RandomHarness& harness, Random& random) {
        const auto [a, b] = AnyStrangers(harness, random);
        const bool wired = a != b && (NetOf(harness, a) != nullptr || NetOf(harness, b) != nullptr);
        return wired ? "swap " + std::to_string(a) + " " + std::to_string(b) + "\n" : std::string();
      },
      [](const RandomHarness&, const std::string& records) { EXPECT_GE(Findings(records), 2); });
}

TEST_F(FaultyDevice, ALiveChannelIsFound) {
  ForRandomDevices(
      [](const RandomHarness& harness, Random& random) {
        const int channel = AnyChannel(harness, random);
        // The first channel is the reference of all others; see LimitsTest.
        const auto* const net = NetOf(harness, channel);
        const int first = harness.blank.von;
        if (channel == first || (net != nullptr && net->front() == first)) return std::string();
        return "charge " + std::to_string(channel) + " " + Positive(random.Real(1.0, 100.0)) + " tau never\n";
      },
      [](const RandomHarness&, const std::string& records) {
        EXPECT_THAT(records, HasSubstr(Live));
        EXPECT_THAT(records, Not(HasSubstr(Short)));
      });
}

}  // namespace
}  // namespace shorttest::testkit
