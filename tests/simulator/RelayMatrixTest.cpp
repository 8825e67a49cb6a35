#include <gtest/gtest.h>

#include "simulator/DriverError.h"
#include "simulator/RelayMatrix.h"
#include "tests/simulator/Bench.h"

namespace simulator {
namespace {

RelayMatrix Cards(int count) {
  DeviceDescription description;
  for (int card = 0; card < MaxCards; ++card)
    description.fittedCards[static_cast<std::size_t>(card)] = card < count;
  return RelayMatrix(description);
}

struct WriteRow {
  const char* name;
  std::int32_t address;
  std::int32_t value;
  int card;
  int line;
  int relay;
};

class WriteTest : public testing::TestWithParam<WriteRow> {};

TEST_P(WriteTest, SwitchesItsRelayAlone) {
  RelayMatrix relays = Cards(5);
  const auto& [name, address, value, card, line, relay] = GetParam();
  EXPECT_TRUE(relays.Write(address, value));
  EXPECT_TRUE(relays.IsClosed(card, line, relay));
  EXPECT_EQ(relays.ClosedChannelRelays() + relays.ClosedAuxiliaryRelays(), 1);
  EXPECT_FALSE(relays.Write(address, value)) << "closed already";
  EXPECT_TRUE(relays.Write(address, value - 128));
  EXPECT_FALSE(relays.IsClosed(card, line, relay));
}

INSTANTIATE_TEST_SUITE_P(Values, WriteTest,
                         testing::Values(WriteRow{"Channel1Line0", 128, 128, 0, 0, 0},
                                         WriteRow{"Channel1Line1", 129, 128, 0, 1, 0},
                                         WriteRow{"Channel48Line1", 129, 175, 0, 1, 47},
                                         WriteRow{"Channel49Line0", 130, 128, 1, 0, 0},
                                         WriteRow{"Channel240Line0", 136, 175, 4, 0, 47},
                                         WriteRow{"Channel240Line1", 137, 175, 4, 1, 47},
                                         WriteRow{"Auxiliary48", 128, 176, 0, 0, 48},
                                         WriteRow{"Auxiliary49", 129, 177, 0, 1, 49},
                                         WriteRow{"Auxiliary50", 132, 178, 2, 0, 50},
                                         WriteRow{"Auxiliary51", 133, 179, 2, 1, 51}),
                         RowName<WriteRow>);

TEST(RelayMatrix, ResetOpensAWholeLineAndNoOther) {
  RelayMatrix relays = Cards(2);
  for (const int address : {128, 129, 130}) {
    relays.Write(address, 128 + 3);
    relays.Write(address, address % 2 == 0 ? 176 : 177);
  }
  EXPECT_TRUE(relays.Write(128, 64));
  EXPECT_EQ(relays.ClosedChannelRelays(), 2);
  EXPECT_EQ(relays.ClosedAuxiliaryRelays(), 2);
  EXPECT_FALSE(relays.Write(128, 64)) << "nothing left to open";
}

struct RefusedRow {
  const char* name;
  std::int32_t address;
  std::int32_t value;
  const char* text;
};

class RefusedWriteTest : public testing::TestWithParam<RefusedRow> {};

TEST_P(RefusedWriteTest, IsNamedAndSwitchesNothing) {
  RelayMatrix relays = Cards(2);
  try {
    relays.Write(GetParam().address, GetParam().value);
    FAIL() << "accepted";
  } catch (const DriverError& error) {
    EXPECT_STREQ(error.what(), GetParam().text);
  }
  EXPECT_EQ(relays.ClosedChannelRelays() + relays.ClosedAuxiliaryRelays(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Writes, RefusedWriteTest,
    testing::Values(RefusedRow{"AddressBelow", 127, 128, "there is no bus address 127"},
                    RefusedRow{"AddressAbove", 138, 128, "there is no bus address 138"},
                    RefusedRow{"CardMissing", 132, 128, "bus address 132: relay card 3 does not answer"},
                    RefusedRow{"ResetOfAMissingCard", 133, 64,
                               "bus address 133: relay card 3 does not answer"},
                    RefusedRow{"RelayTooHigh", 128, 128 + 52,
                               "bus address 128: relay card 1 has no relay for the value 180 on line 0"},
                    RefusedRow{"AuxiliaryOfTheOtherLine", 128, 128 + 49,
                               "bus address 128: relay card 1 has no relay for the value 177 on line 0"},
                    RefusedRow{"ResetBitWithARelay", 129, 64 + 1,
                               "bus address 129: relay card 1 has no relay for the value 65 on line 1"},
                    RefusedRow{"NegativeValue", 129, -1,
                               "bus address 129: relay card 1 has no relay for the value -1 on line 1"},
                    RefusedRow{"ValueOfNineBits", 129, 256 + 128,
                               "bus address 129: relay card 1 has no relay for the value 384 on line 1"}),
    RowName<RefusedRow>);

TEST(RelayMatrix, ProbeTellsTheFittedCards) {
  const RelayMatrix relays = Cards(3);
  for (const int relay : {1, 96, 144}) EXPECT_TRUE(relays.Probe(relay)) << relay;
  for (const int relay : {192, 240}) EXPECT_THROW(relays.Probe(relay), DriverError) << relay;
  for (const int relay : {0, 241}) EXPECT_THROW(relays.Probe(relay), DriverError) << relay;
}

TEST(RelayMatrix, MissingFirstCardIsSilentToResetAndProbeAlone) {
  RelayMatrix relays = Cards(0);
  EXPECT_FALSE(relays.Write(128, 64));
  EXPECT_FALSE(relays.Write(129, 64));
  EXPECT_FALSE(relays.Probe(1));
  EXPECT_THROW(relays.Write(128, 176), DriverError);
  EXPECT_THROW(relays.Write(130, 64), DriverError);
  EXPECT_THROW(relays.Probe(96), DriverError);
}

TEST(RelayMatrix, MissingFirstCardIsAnErrorOnRequest) {
  DeviceDescription description;
  description.fittedCards = {};
  description.missingFirstCardIsError = true;
  RelayMatrix relays(description);
  EXPECT_THROW(relays.Write(128, 64), DriverError);
  EXPECT_THROW(relays.Probe(1), DriverError);
}

}  // namespace
}  // namespace simulator
