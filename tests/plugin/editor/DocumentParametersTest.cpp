// The parameters: what is typed, what counts once the field is left, what is shown and saved.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugin/editor/ChannelNumbers.h"
#include "tests/plugin/editor/DocumentBench.h"
#include "tests/support/FakeDriver.h"

namespace shorttest::testkit {
namespace {

using ::testing::HasSubstr;

class DocumentParameters : public DocumentBench {
 protected:
  DocumentParameters() { document.New(1, 48); }

  const TShortTestData& Data() const { return *document.Data(); }

  CallLog log;
  FakeDriver driver{log};
};

TEST_F(DocumentParameters, NewDataHasTheDefaults) {
  EXPECT_EQ(Data().von, 1);
  EXPECT_EQ(Data().bis, 48);
  const ShownParameters shown = document.ShowParameters();
  EXPECT_EQ(shown.thresholdText, "10");
  EXPECT_EQ(shown.upperThresholdText, "");
  EXPECT_EQ(shown.voltageControl, 2);
  EXPECT_EQ(shown.timeoutMs, 5000);
  EXPECT_EQ(shown.maxError, 10);
}

TEST_F(DocumentParameters, ShowingClipsWhatTheFieldsForTimeAndErrorsCannotHold) {
  TShortTestData data(1, 4);
  data.Timeout = 20000;
  data.MaxError = 0;
  Open(data);
  const ShownParameters shown = document.ShowParameters();
  EXPECT_EQ(shown.timeoutMs, 10000);
  EXPECT_EQ(shown.maxError, 1);
  EXPECT_EQ(Data().Timeout, 10000);
  EXPECT_EQ(Data().MaxError, 1);
}

TEST_F(DocumentParameters, ShowingKeepsThresholdsAndRelaysAsTheyAre) {
  TShortTestData data(1, 4);
  data.Schwelle = 0.123456789012345;
  data.Schwelle2 = 2500.25;
  data.U_Control = 9;
  data.LastRelaisKarte = 12;
  data.LastRelais = 40;
  Open(data);
  EXPECT_EQ(Data().Schwelle, 0.123456789012345);
  EXPECT_EQ(Data().Schwelle2, 2500.25);
  EXPECT_EQ(Data().U_Control, 9);
  EXPECT_EQ(Data().LastRelaisKarte, 12);
  EXPECT_EQ(Data().LastRelais, 40);
}

TEST_F(DocumentParameters, ChoicesAndPositionsReachTheData) {
  document.SetVoltageControl(1);
  document.SetTimeout(1234);
  document.SetMaxError(99);
  EXPECT_EQ(Data().U_Control, 1);
  EXPECT_EQ(Data().Timeout, 1234);
  EXPECT_EQ(Data().MaxError, 99);
}

TEST_F(DocumentParameters, LowerThresholdIsTakenAtEveryKey) {
  document.TypeLowerThreshold("2");
  EXPECT_EQ(Data().Schwelle, 2.0);
  document.TypeLowerThreshold("2,");
  document.TypeLowerThreshold("2,5");
  EXPECT_EQ(Data().Schwelle, 2.5);
  document.TypeLowerThreshold("");
  EXPECT_EQ(Data().Schwelle, 2.5);
}

TEST_F(DocumentParameters, WrongLowerThresholdIsAnErrorAndTheOldOneCounts) {
  EXPECT_THROW(document.TypeLowerThreshold("x"), ConversionError);
  EXPECT_THROW(document.LeaveLowerThreshold("x"), ConversionError);
  EXPECT_THROW(document.LeaveLowerThreshold(""), ConversionError);
  EXPECT_EQ(Data().Schwelle, 10.0);
  EXPECT_EQ(document.LowerThresholdText(), "10");
}

TEST_F(DocumentParameters, LeftLowerThresholdShowsTheNumberThatCounts) {
  document.LeaveLowerThreshold(" 007,50 ");
  EXPECT_EQ(document.LowerThresholdText(), "7,5");
}

TEST_F(DocumentParameters, UpperThresholdIsTypedInKiloOhm) {
  document.TypeUpperThreshold("1,5");
  EXPECT_EQ(Data().Schwelle2, 1500.0);
  document.LeaveUpperThreshold("1,50");
  EXPECT_EQ(document.UpperThresholdText(), "1,5");
}

TEST_F(DocumentParameters, UpperThresholdLeftEmptyIsTheLowerOne) {
  document.TypeUpperThreshold("15");
  document.TypeUpperThreshold("");
  EXPECT_EQ(Data().Schwelle2, 15000.0);
  document.TypeLowerThreshold("25");
  document.LeaveUpperThreshold("");
  EXPECT_EQ(Data().Schwelle2, 25.0);
  EXPECT_EQ(document.UpperThresholdText(), "");
}

TEST_F(DocumentParameters, EmptyUpperThresholdFollowsTheLowerOneThatIsChangedLast) {
  Open(Learned(1, 4, {}));
  document.TypeLowerThreshold("25");
  document.LeaveLowerThreshold("25");
  EXPECT_EQ(Saved().Schwelle2, 25.0);
}

TEST_F(DocumentParameters, UpperThresholdThatIsTypedFollowsNothing) {
  Open(Learned(1, 4, {}));
  document.TypeUpperThreshold("0,005");
  document.LeaveUpperThreshold("0,005");
  document.LeaveLowerThreshold("25");
  EXPECT_EQ(document.UpperThresholdText(), "0,005");
  EXPECT_EQ(Saved().Schwelle2, 5.0);
}

TEST_F(DocumentParameters, WrongUpperThresholdLeavesTheOneThatCounts) {
  document.LeaveUpperThreshold("15");
  EXPECT_THROW(document.LeaveUpperThreshold("15x"), ConversionError);
  EXPECT_EQ(document.UpperThresholdText(), "15");
  document.LeaveUpperThreshold("");
  EXPECT_THROW(document.LeaveUpperThreshold("x"), ConversionError);
  EXPECT_EQ(document.UpperThresholdText(), "");
  document.TypeUpperThreshold("5");
  EXPECT_THROW(document.LeaveUpperThreshold("5x"), ConversionError);
  EXPECT_EQ(document.UpperThresholdText(), "5");
}

TEST_F(DocumentParameters, RelaysAreTakenAtEveryKeyAndMinusOneOnceLeftEmpty) {
  document.TypeRelayCard("12");
  document.TypeRelay("40");
  EXPECT_EQ(Data().LastRelaisKarte, 12);
  EXPECT_EQ(Data().LastRelais, 40);
  document.TypeRelayCard("");
  document.TypeRelay("");
  EXPECT_EQ(Data().LastRelaisKarte, 12);
  EXPECT_EQ(Data().LastRelais, 40);
  document.LeaveRelayCard("");
  EXPECT_EQ(Data().LastRelaisKarte, -1);
  EXPECT_EQ(Data().LastRelais, 40);
  document.LeaveRelay("");
  EXPECT_EQ(Data().LastRelais, -1);
  EXPECT_EQ(document.RelayCardText() + document.RelayText(), "");
}

TEST_F(DocumentParameters, WrongRelayIsAnErrorAndTheOldOneCounts) {
  document.LeaveRelayCard("3");
  document.LeaveRelay("4");
  EXPECT_THROW(document.LeaveRelayCard("x"), ConversionError);
  EXPECT_THROW(document.TypeRelay("1.5"), ConversionError);
  EXPECT_THROW(document.LeaveRelay("1.5"), ConversionError);
  EXPECT_EQ(document.RelayCardText(), "3");
  EXPECT_EQ(document.RelayText(), "4");
}

struct WarningRow {
  const char* name;
  int voltageControl;
  int generation;
  int card;
  int relay;
  const char* expected;
};

TEST_F(DocumentParameters, WarnsOfVoltagesAndOfDischargingWithoutAResistor) {
  const std::vector<WarningRow> rows = {
      {"without control, generation 1", 0, 1, 0, 0, "Messkanäle beschädigen"},
      {"without control, generation 2", 0, 2, 1, 1, "Messkanäle beschädigen"},
      {"with control", 1, 1, 0, 0, ""},
      {"discharge, generation 1, no resistor", 2, 1, 0, 0, "nur mit Abschlusswiderstand."},
      {"discharge, generation 1, card alone", 2, 1, 1, 0, ""},
      {"discharge, generation 1, relay alone", 2, 1, -1, 1, ""},
      {"discharge, generation 2", 2, 2, 0, 0, ""},
      {"nothing chosen", -1, 1, 0, 0, ""},
  };
  for (const WarningRow& row : rows) {
    SCOPED_TRACE(row.name);
    driver.Generation(row.generation);
    document.LeaveRelayCard(std::to_string(row.card));
    document.LeaveRelay(std::to_string(row.relay));
    const std::string warning = document.Warning(row.voltageControl);
    EXPECT_EQ(warning.empty(), *row.expected == '\0') << warning;
    EXPECT_THAT(warning, HasSubstr(row.expected));
  }
}

TEST_F(DocumentParameters, WithoutDataOnlyTheVoltageIsWarnedOf) {
  document.Close();
  driver.Generation(1);
  EXPECT_NE(document.Warning(0), "");
  EXPECT_EQ(document.Warning(2), "");
  EXPECT_EQ(log.Count("generation"), 0);
}

}  // namespace
}  // namespace shorttest::testkit
