// Ranges that hold no channel, and ranges that no tester has: what a damaged file can bring in.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"

namespace data_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::int32_t Smallest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t Largest = std::numeric_limits<std::int32_t>::max();

struct Range {
  const char* name;
  std::int32_t von;
  std::int32_t bis;
};

std::string FileOf(const Range& range) {
  return Lines(
      {"[BEREICH]", "START=" + std::to_string(range.von), "ENDE=" + std::to_string(range.bis), "[DATEN]"});
}

class RangeThatHoldsNoChannel : public FileTest, public testing::WithParamInterface<Range> {
 protected:
  void ExpectEmpty(const TShortTestData& data) const {
    EXPECT_EQ(data.von, GetParam().von);
    EXPECT_EQ(data.bis, GetParam().bis);
    EXPECT_EQ(data.Highconnections(), -1);
    EXPECT_THAT(data.connections, IsEmpty());
    EXPECT_THAT(data.voltages, IsEmpty());
  }
};

TEST_P(RangeThatHoldsNoChannel, MakesAnEmptyMatrix) {
  ExpectEmpty(TShortTestData(GetParam().von, GetParam().bis));
}

TEST_P(RangeThatHoldsNoChannel, IsReadAsAnEmptyMatrix) {
  Write("empty.exp", FileOf(GetParam()));
  ExpectEmpty(TShortTestData(Name("empty.exp")));
}

TEST_P(RangeThatHoldsNoChannel, CanBeSet) {
  TShortTestData data(1, 4);
  data.SetVonBis(GetParam().von, GetParam().bis);
  ExpectEmpty(data);
}

TEST_P(RangeThatHoldsNoChannel, IsSavedWithoutADataLine) {
  TShortTestData(GetParam().von, GetParam().bis).SaveExpectationFile(Name("saved.exp"));
  EXPECT_THAT(Content("saved.exp"), testing::EndsWith("MAX ERROR=10\r\n[DATEN]\r\n"));
  ExpectEmpty(TShortTestData(Name("saved.exp")));
}

INSTANTIATE_TEST_SUITE_P(, RangeThatHoldsNoChannel,
                         testing::Values(Range{"EndsOneBeforeItsStart", 5, 4},
                                         Range{"EndsFarBeforeItsStart", 100, 1}, Range{"EndsAtZero", 1, 0},
                                         Range{"EndsNegative", 1, -5},
                                         Range{"LargestToSmallest", Largest, Smallest}),
                         CaseName());

// Refused before anything is allocated: the message is ours, not that of memory running out half-way.
class RangeThatNoMemoryHolds : public FileTest, public testing::WithParamInterface<Range> {
 protected:
  static void ExpectNamesTheRange(const std::string& message) {
    EXPECT_THAT(message, HasSubstr(std::to_string(GetParam().von) + " to " + std::to_string(GetParam().bis)));
  }
};

TEST_P(RangeThatNoMemoryHolds, IsRefusedByTheConstructor) {
  const auto error = Thrown<std::length_error>([] { TShortTestData(GetParam().von, GetParam().bis); });
  ASSERT_TRUE(error);
  ExpectNamesTheRange(error->message);
}

TEST_P(RangeThatNoMemoryHolds, IsRefusedWithTheNameOfTheFile) {
  Write("damaged.exp", FileOf(GetParam()));
  const auto error = Thrown<std::length_error>([this] { TShortTestData data(Name("damaged.exp")); });
  ASSERT_TRUE(error);
  ExpectNamesTheRange(error->message);
  EXPECT_THAT(error->message, HasSubstr(Name("damaged.exp")));
}

TEST_P(RangeThatNoMemoryHolds, IsNotSetAndNothingChanges) {
  TShortTestData data(1, 2);
  data.SetC(0, 1, CellState::Connected, 0.5);
  data.voltages[1] = 7.0;
  const auto error = Thrown<std::length_error>([&] { data.SetVonBis(GetParam().von, GetParam().bis); });
  ASSERT_TRUE(error);
  ExpectNamesTheRange(error->message);
  EXPECT_EQ(data.von, 1);
  EXPECT_EQ(data.bis, 2);
  EXPECT_EQ(States(data), (StateRows{{8, 8}, {2, 8}}));
  EXPECT_EQ(data.GetR(0, 1), 0.5);
  EXPECT_EQ(data.GetVoltage(1), 7.0);
}

INSTANTIATE_TEST_SUITE_P(, RangeThatNoMemoryHolds,
                         testing::Values(Range{"OneMoreThanPossible", 1, 2401},
                                         Range{"OneToTwoThousandMillion", 1, 2000000000},
                                         Range{"CountOverflows", Smallest, Largest},
                                         Range{"CountIsTwoToTheThirtyOne", 0, Largest},
                                         Range{"FromSmallest", Smallest, 0}),
                         CaseName());

struct UsableRange {
  const char* name;
  std::int32_t von;
  std::int32_t bis;
  std::int32_t highest;
};

class RangeInUse : public FileTest, public testing::WithParamInterface<UsableRange> {};

TEST_P(RangeInUse, HasARowForEveryChannel) {
  const UsableRange& c = GetParam();
  const TShortTestData data(c.von, c.bis);
  EXPECT_EQ(data.Highconnections(), c.highest);
  EXPECT_EQ(data.voltages.size(), data.connections.size());
  EXPECT_EQ(data.connections.back().size(), data.connections.size());
}

INSTANTIATE_TEST_SUITE_P(, RangeInUse,
                         testing::Values(UsableRange{"OneChannel", 1, 1, 0},
                                         UsableRange{"OneCard", 1, 48, 47},
                                         UsableRange{"LargestTester", 1, 240, 239},
                                         UsableRange{"Negative", -5, -2, 3},
                                         UsableRange{"AcrossZero", -1, 1, 2},
                                         UsableRange{"LastPossibleNumbers", Largest - 1, Largest, 1},
                                         UsableRange{"FirstPossibleNumbers", Smallest, Smallest + 2, 2},
                                         UsableRange{"AsManyAsPossible", 1, 2400, 2399}),
                         CaseName());

}  // namespace
}  // namespace data_test
