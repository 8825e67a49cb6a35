#include <gtest/gtest.h>

#include <cmath>

#include "simulator/Instrument.h"
#include "simulator/Tester.h"
#include "tests/simulator/Bench.h"

namespace simulator {
namespace {

constexpr double Over = Instrument::OverRange;

using ResistanceBench = Bench;

TEST_F(ResistanceBench, WireReadsItsResistance) {
  Connect("wire 1 5 0.42");
  EXPECT_EQ(Between(1, 5), 0.42);
  EXPECT_EQ(Between(5, 1), 0.42);
}

TEST_F(ResistanceBench, NothingBetweenReadsOverRangeInEveryRange) {
  Connect("wire 1 5");
  for (int range = 1; range <= 6; ++range) EXPECT_EQ(Between(1, 2, range), Over) << range;
}

TEST_F(ResistanceBench, RelaysOpenReadOverRange) {
  Connect("wire 1 5");
  EXPECT_EQ(Reading(), Over);
  Close(1, 0);
  EXPECT_EQ(Reading(), Over);
}

TEST_F(ResistanceBench, ChannelOnBothLinesShortsThem) {
  Connect("");
  Close(7, 0);
  Close(7, 1);
  EXPECT_EQ(Reading(), 0.0);
}

TEST_F(ResistanceBench, ChannelsOfOneLineAreOne) {
  // 1 and 2 together against 3: 30 and 60 Ohm side by side.
  Connect("wire 1 3 30\nwire 2 3 60");
  Close(1, 0);
  Close(2, 0);
  Close(3, 1);
  EXPECT_EQ(Reading(), 20.0);
}

TEST_F(ResistanceBench, FloatingChannelsCarryCurrentOnTheirWay) {
  Connect("wire 1 2 1\nwire 2 3 2\nwire 3 4 4");
  EXPECT_EQ(Between(1, 4), 7.0);
}

TEST_F(ResistanceBench, CardsShareTheLines) {
  Connect("wire 48 49 3\nwire 1 240 5", 5);
  EXPECT_EQ(Between(48, 49), 3.0);
  EXPECT_EQ(Between(240, 1), 5.0);
}

TEST_F(ResistanceBench, LineResetDisconnects) {
  Connect("wire 1 5");
  Close(1, 0);
  Close(5, 1);
  ResetLine(0, 1);
  EXPECT_EQ(Reading(), Over);
}

TEST_F(ResistanceBench, NothingReachesTheInstrumentWithoutTheAuxiliaryRelays) {
  Connect("wire 1 5", 0);
  EXPECT_EQ(Between(1, 5), Over);
  Write(0, 0, 176);
  Write(0, 1, 177);
  Write(0, 0, 178);
  EXPECT_EQ(Between(1, 5), Over) << "line 1 has its force side alone";
  Write(0, 1, 179);
  EXPECT_EQ(Between(1, 5), 0.1);
}

TEST_F(ResistanceBench, CardLineWithoutItsAuxiliaryRelaysStillTiesItsChannels) {
  // Both channels of card 2 meet on its piece of line 0, which lies open; card 1 sees the loop through them.
  Connect("wire 1 49 3\nwire 2 50 4", 1);
  Close(49, 0);
  Close(50, 0);
  EXPECT_EQ(Between(1, 2), 7.0);
}

TEST_F(ResistanceBench, ContactsAddTheirResistance) {
  Connect("contact-resistance 0.05\nwire 1 5 1");
  EXPECT_EQ(Between(1, 5), 1.1);
}

TEST_F(ResistanceBench, InsulationLiesBetweenAnyTwoChannels) {
  Connect("leakage 10M");
  EXPECT_EQ(Between(1, 2, 6), 20.0);
  EXPECT_EQ(Between(47, 48, 6), 20.0);
}

TEST_F(ResistanceBench, InsulationOfABundleIsThatMuchSmaller) {
  Connect("leakage 10M");
  Close(1, 0);
  for (int channel = 2; channel <= 6; ++channel) Close(channel, 1);
  EXPECT_EQ(Reading(6), 12.0);
}

TEST_F(ResistanceBench, CapacitancesAreOpenToAResistanceReading) {
  Connect("capacitor 1 2 24 tau never");
  EXPECT_EQ(Between(1, 2), Over);
}

TEST_F(ResistanceBench, StuckOpenRelayDoesNotConnect) {
  Connect("wire 1 5 3\nstuck-open 1 0");
  EXPECT_EQ(Between(1, 5), Over);
  EXPECT_EQ(Between(5, 1), 3.0);
}

TEST_F(ResistanceBench, StuckClosedRelayStaysAndIsNotCounted) {
  Connect("wire 1 5 3\nstuck-closed 1 0");
  EXPECT_EQ(tester_->Relays().ClosedChannelRelays(), 0);
  Close(5, 1);
  EXPECT_EQ(Reading(), 3.0);
  ResetLine(0, 0);
  CloseAuxiliaries(0);
  EXPECT_EQ(Reading(), 3.0);
}

TEST_F(ResistanceBench, DriftStartsAnewOnlyWhenARelayMoves) {
  Connect("wire 1 5 10\ndrift -0.5 1");
  Close(1, 0);
  Close(5, 1);
  EXPECT_EQ(Reading(), 5.0);
  const double second = Reading();
  EXPECT_GT(second, 5.0);
  Close(5, 1);  // is closed already
  EXPECT_GT(Reading(), second);
  Open(6, 1);  // is open already
  Open(5, 1);
  Close(5, 1);
  EXPECT_EQ(Reading(), 5.0);
  Terminator(true);
  EXPECT_EQ(Reading(), 5.0);
}

/// Voltage of line 0 against line 1.
using VoltageBench = Bench;

TEST_F(VoltageBench, NothingConnectedReadsZero) {
  Connect("");
  Close(1, 0);
  EXPECT_EQ(Volts(), 0.0);
}

TEST_F(VoltageBench, CapacitanceBetweenTheLinesShowsWithItsSign) {
  Connect("capacitor 3 4 24 tau never");
  Close(3, 0);
  EXPECT_EQ(Volts(), 0.0) << "the other end floats";
  Close(4, 1);
  EXPECT_EQ(Volts(), 24.0);
  ResetLine(0, 0);
  ResetLine(0, 1);
  CloseAuxiliaries(0);
  Close(4, 0);
  Close(3, 1);
  EXPECT_EQ(Volts(), -24.0);
}

TEST_F(VoltageBench, ChargeShowsAgainstAnyOtherChannel) {
  Connect("charge 3 12 tau never");
  Close(3, 0);
  Close(9, 1);
  EXPECT_EQ(Volts(), 12.0);
  Open(3, 0);
  Open(9, 1);
  Close(9, 0);
  Close(3, 1);
  EXPECT_EQ(Volts(), -12.0);
}

TEST_F(VoltageBench, TwoChargesShowTheirDifference) {
  Connect("charge 3 12 tau never\ncharge 4 5 tau never");
  Close(3, 0);
  Close(4, 1);
  EXPECT_EQ(Volts(), 7.0);
}

TEST_F(VoltageBench, InstrumentLoadsASourceOfHighResistance) {
  // 10 MOhm from either line to ground, so 20 MOhm across a floating source of 5 MOhm.
  Connect("capacitor 1 2 25 tau never series 5M");
  Close(1, 0);
  Close(2, 1);
  EXPECT_EQ(Volts(), 20.0);
}

TEST_F(VoltageBench, ReadsThroughTheDevicesResistors) {
  Connect("node n\nwire 1 n 1k\ncapacitor n 2 5 tau never");
  Close(1, 0);
  Close(2, 1);
  EXPECT_NEAR(Volts(), 5.0, 1e-3);
}

TEST_F(VoltageBench, DecaysWithItsTimeConstantFromTheStart) {
  Connect("charge 3 24 tau 500ms");
  Wait(0.25);
  Close(3, 0);
  EXPECT_NEAR(Volts(), 24.0 * std::exp(-0.5), 1e-5);
  Wait(0.75);
  EXPECT_NEAR(Volts(), 24.0 * std::exp(-2.0), 1e-6);
}

TEST_F(VoltageBench, FirstGenerationDischargesOnlyWithTheTerminatingResistor) {
  Connect("generation 1\ncharge 3 24 tau 1");
  Close(3, 0);
  Wait(10.0);
  EXPECT_EQ(Volts(), 24.0);
  Terminator(true);
  Wait(1.0);
  EXPECT_NEAR(Volts(), 24.0 * std::exp(-1.0), 1e-5);
  Terminator(false);
  Wait(10.0);
  EXPECT_NEAR(Volts(), 24.0 * std::exp(-1.0), 1e-5);
}

TEST_F(VoltageBench, BothEndsOnOneLineEmptyACapacitanceForGood) {
  Connect("capacitor 3 4 24 tau 1000");
  Close(3, 1);
  Close(4, 1);
  Open(4, 1);
  Close(4, 0);
  EXPECT_EQ(Volts(), 0.0);
}

TEST_F(VoltageBench, ShortThroughAnOpenCardLineEmptiesToo) {
  Connect("capacitor 3 4 24 tau 1000", 0);
  Close(3, 1);
  Close(4, 1);
  Open(4, 1);
  CloseAuxiliaries(0);
  Close(4, 0);
  EXPECT_EQ(Volts(), 0.0);
}

TEST_F(VoltageBench, SourceThatStaysSurvivesAShort) {
  Connect("capacitor 3 4 24 tau never");
  Close(3, 1);
  Close(4, 1);
  Open(3, 1);
  Close(3, 0);
  EXPECT_EQ(Volts(), 24.0);
}

TEST_F(VoltageBench, BridgeWithoutResistanceEmptiesFromTheStart) {
  Connect("capacitor 3 4 24 tau 1000\nnode n\nwire 3 n 0\nwire n 4 0\ncapacitor 5 6 12 tau 1000");
  Close(5, 0);
  Close(6, 1);
  EXPECT_EQ(Volts(), 12.0);
  Open(5, 0);
  Open(6, 1);
  Close(3, 0);
  Close(4, 1);
  EXPECT_EQ(Volts(), 0.0);
}

/// Calls that fail.
using ErrorBench = Bench;

TEST_F(ErrorBench, FirstErrorStaysUntilItIsDeleted) {
  Connect("");
  Write(1, 0, 128);
  Write(2, 0, 128);
  EXPECT_EQ(Error(), "bus address 130: relay card 2 does not answer");
  tester_->DeletePendingError();
  EXPECT_EQ(Error(), "");
  Write(2, 0, 128);
  EXPECT_EQ(Error(), "bus address 132: relay card 3 does not answer");
}

TEST_F(ErrorBench, PendingErrorDoesNotStopTheTester) {
  Connect("wire 1 5 3");
  Write(1, 0, 128);
  EXPECT_EQ(Between(1, 5), 3.0);
}

TEST_F(ErrorBench, FailingCallHasNoEffect) {
  Connect("wire 1 5 3");
  const std::int64_t call = tester_->CallCount();
  tester_->FailCall(call + 1, "bus time-out");
  tester_->FailCall(call + 4, "no reading");
  Close(1, 0);
  EXPECT_EQ(Error(), "bus time-out");
  EXPECT_FALSE(tester_->Relays().IsClosed(0, 0, 0));
  Close(1, 0);
  Close(5, 1);
  tester_->DeletePendingError();
  EXPECT_EQ(Reading(), Over);
  EXPECT_EQ(Error(), "no reading");
  EXPECT_EQ(Reading(), 3.0);
}

TEST_F(ErrorBench, DescribedFaultsCountEveryCallToTheHardware) {
  Connect("fail-call 6 \"Überlast\"\nfail-from 8 \"unplugged\"", 0);
  Write(0, 0, 64);
  EXPECT_EQ(tester_->MsuWriteRelay(1, 2), 1);
  EXPECT_EQ(tester_->AdxHwGeneration(), 2);
  Terminator(true);
  EXPECT_EQ(Reading(), Over);
  EXPECT_EQ(tester_->CallCount(), 5);
  EXPECT_EQ(Error(), "");
  EXPECT_EQ(tester_->MsuWriteRelay(1, 2), 0);
  EXPECT_EQ(Error(), "Überlast");
  tester_->DeletePendingError();
  EXPECT_EQ(tester_->MsuWriteRelay(1, 2), 1);
  EXPECT_EQ(Error(), "");
  for (int i = 0; i < 3; ++i) {
    tester_->DeletePendingError();
    EXPECT_EQ(tester_->AdxHwGeneration(), 0);
    EXPECT_EQ(Error(), "unplugged");
  }
}

TEST_F(ErrorBench, MissingCardAmongFittedOnes) {
  Connect("cards 3\nmissing-card 2");
  EXPECT_EQ(tester_->MsuWriteRelay(1, 2), 1);
  EXPECT_EQ(Error(), "");
  EXPECT_EQ(tester_->MsuWriteRelay(96, 2), 0);
  EXPECT_EQ(Error(), "relay 96: relay card 2 does not answer");
  EXPECT_EQ(tester_->MsuWriteRelay(144, 2), 1);
}

TEST_F(ErrorBench, UnusableTesterFailsEveryCall) {
  tester_.emplace("the file is gone", time_);
  const auto expectError = [&](const char* call) {
    EXPECT_EQ(Error(), "the file is gone") << call;
    tester_->DeletePendingError();
  };
  Write(0, 0, 64);
  expectError("bus write");
  Terminator(true);
  expectError("relay set");
  EXPECT_EQ(tester_->MsuWriteRelay(1, 2), 0);
  expectError("probe");
  EXPECT_EQ(Reading(), Over);
  expectError("resistance");
  EXPECT_EQ(Volts(), Over);
  expectError("voltage");
  EXPECT_EQ(tester_->AdxHwGeneration(), 0);
  expectError("generation");
}

TEST_F(ErrorBench, SecondArgumentOfABusWriteIsZero) {
  Connect("");
  tester_->BusWrite(128, 1, 128);
  EXPECT_EQ(Error(), "bus write with 1 instead of 0");
  EXPECT_EQ(tester_->Relays().ClosedChannelRelays(), 0);
}

TEST_F(ErrorBench, ProbeHasItsMode) {
  Connect("");
  EXPECT_EQ(tester_->MsuWriteRelay(1, 1), 0);
  EXPECT_EQ(Error(), "a relay is probed with mode 2, not 1");
}

struct ReadingRow {
  const char* name;
  std::int32_t function;
  std::int32_t range;
  std::int32_t setting;
};

class RefusedReading : public Bench, public testing::WithParamInterface<ReadingRow> {};

TEST_P(RefusedReading, IsAnErrorAndNoShort) {
  Connect("");
  Close(1, 0);
  Close(1, 1);
  const auto& [name, function, range, setting] = GetParam();
  EXPECT_EQ(tester_->AdxRead(function, range, setting), Over);
  EXPECT_EQ(Error(), "the instrument has no function " + std::to_string(function) + " with range " +
                         std::to_string(range) + " and setting " + std::to_string(setting));
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, RefusedReading,
    testing::Values(ReadingRow{"UnknownFunction", 9, 2, 20}, ReadingRow{"ResistanceRangeZero", 10, 0, 2},
                    ReadingRow{"ResistanceRangeSeven", 10, 7, 2}, ReadingRow{"ResistanceSetting", 10, 1, 20},
                    ReadingRow{"VoltageRange", 8, 1, 20}, ReadingRow{"VoltageSetting", 8, 2, 2}),
    RowName<ReadingRow>);

/// The relay of the terminating resistor.
using TerminatorBench = Bench;

TEST_F(TerminatorBench, AnswersAtEveryRelayOfEveryCardByDefault) {
  Connect("cards 2");
  tester_->RelaySet(1, 63, 1);
  EXPECT_TRUE(tester_->TerminatorOn());
  tester_->RelaySet(1, 63, 0);
  EXPECT_FALSE(tester_->TerminatorOn());
  EXPECT_EQ(Error(), "");
}

TEST_F(TerminatorBench, IsNoChannelRelay) {
  Connect("wire 1 5");
  Terminator(true);
  EXPECT_EQ(tester_->Relays().ClosedChannelRelays(), 0);
  EXPECT_EQ(Between(1, 5), 0.1);
}

TEST_F(TerminatorBench, AnswersAtItsAddressAloneWhenItHasOne) {
  Connect("cards 2\nterminator 7 3");
  tester_->RelaySet(0, 0, 1);
  EXPECT_EQ(Error(), "there is no terminating resistor at relay 1 of card 1");
  EXPECT_FALSE(tester_->TerminatorOn());
  tester_->DeletePendingError();
  tester_->RelaySet(6, 2, 1);
  EXPECT_TRUE(tester_->TerminatorOn());
  EXPECT_EQ(Error(), "");
}

struct TerminatorRow {
  const char* name;
  std::int32_t card;
  std::int32_t relay;
  std::int32_t state;
};

class RefusedTerminator : public Bench, public testing::WithParamInterface<TerminatorRow> {};

TEST_P(RefusedTerminator, IsAnError) {
  Connect("cards 2");
  tester_->RelaySet(GetParam().card, GetParam().relay, GetParam().state);
  EXPECT_NE(Error(), "");
  EXPECT_FALSE(tester_->TerminatorOn());
}

INSTANTIATE_TEST_SUITE_P(Addresses, RefusedTerminator,
                         testing::Values(TerminatorRow{"CardNotFitted", 2, 0, 1},
                                         TerminatorRow{"CardNegative", -1, 0, 1},
                                         TerminatorRow{"RelayNegative", 0, -1, 1},
                                         TerminatorRow{"RelayTooHigh", 0, 64, 1},
                                         TerminatorRow{"LargestNumbers", INT32_MAX, INT32_MAX, 1},
                                         TerminatorRow{"UnknownState", 0, 0, 2}),
                         RowName<TerminatorRow>);

}  // namespace
}  // namespace simulator
