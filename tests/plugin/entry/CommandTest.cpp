// The script command, called as the host calls it: through the base class.
#include <gmock/gmock.h>

#include <system_error>

#include "framework/Kxcommandinterfaces.h"
#include "plugin/data/ShorttestData.h"
#include "simulator/SimulatedTester.h"
#include "tests/plugin/entry/LoadedPlugin.h"
#include "tests/support/FakeTestEnvironment.h"

namespace shorttest::testkit {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class Command : public PluginTest {
 protected:
  void SetUp() override { command = MakeCommand(); }

  TKXRunEdit& Base() { return *command; }

  std::unique_ptr<TKXFuncRunEdit> command;
};

TEST_F(Command, DeclaresItsPrototype) {
  EXPECT_EQ(command->Prototype(), "procedure ShortTest(Datafile : String)");
}

TEST_F(Command, HasItsFixedIdentifierInEveryInstance) {
  EXPECT_EQ(Base().GetID(), 10020);
  EXPECT_EQ(MakeCommand()->GetID(), 10020);
}

TEST_F(Command, MakesAnotherOfItsClass) {
  const std::unique_ptr<TKXRunEdit> other(Base().Create(&parser));
  ASSERT_NE(other, nullptr);
  EXPECT_NE(other.get(), command.get());
  EXPECT_EQ(other->GetID(), 10020);
  Run(*other, ExpectationFile("good.ini", true));
  EXPECT_EQ(initCalls, 1);
}

TEST_F(Command, WantsItsOneParameter) {
  TParamList params;
  EXPECT_FALSE(Base().CheckParams(params));
  params.Set("Datafile", "\"x\"", nullptr);
  EXPECT_TRUE(Base().CheckParams(params));
}

// --- parameters and the editor dialog ---

TEST_F(Command, MovesTheParameterIntoTheDialogAndBack) {
  TParamList params;
  params.Set("Datafile", "PROJEKTPFAD + \"a.ini\"", nullptr);
  Base().ReadParams(params);
  TParamList moved;
  Base().SetParams(moved);
  EXPECT_EQ(moved.GetExpression("Datafile"), "PROJEKTPFAD + \"a.ini\"");
}

TEST_F(Command, HasNoFileNameByDefault) {
  TParamList params;
  params.Set("Datafile", "\"a.ini\"", nullptr);
  Base().ReadParams(params);
  Base().SetDefaults();
  Base().SetParams(params);
  EXPECT_EQ(params.GetExpression("Datafile"), "");
}

TEST_F(Command, EachInstanceHasADialogOfItsOwn) {
  const auto other = MakeCommand();
  TParamList params;
  params.Set("Datafile", "\"a.ini\"", nullptr);
  Base().ReadParams(params);
  other->SetParams(params);
  EXPECT_EQ(params.GetExpression("Datafile"), "");
}

// --- Run ---

TEST_F(Command, InitialisesTheHardwareOnceAndThenChecks) {
  Run(Base(), ExpectationFile("good.ini", true));
  EXPECT_EQ(initCalls, 1);
  EXPECT_EQ(driverCallsAtInit, 0);
  EXPECT_GT(brenmor_sim_call_count(), 0);
  EXPECT_THAT(records, ElementsAre("Verbindungstest|1|1||1||", "Kurzschlusstest|0|0||0||"));
  EXPECT_TRUE(ui.AllWindowsEnabled());
}

TEST_F(Command, ReportsAFaultyDevice) {
  Run(Base(), ExpectationFile("open.ini", false));
  EXPECT_THAT(records,
              ElementsAre(StartsWith("Kurzschluss zwischen 1 und 2|10|"), "Kurzschlusstest|0|1||0||"));
}

TEST_F(Command, OutOfARunningOneIsRefusedBeforeTheHardwareIsInitialised) {
  const std::string file = ExpectationFile("good.ini", true);
  int refused = 0;
  ui.WithinMessages([&] {
    EXPECT_THROW(Run(Base(), file), std::logic_error);
    ++refused;
  });
  Run(Base(), file);
  EXPECT_GT(refused, 0);
  EXPECT_EQ(initCalls, 1);
  EXPECT_THAT(records, ElementsAre("Verbindungstest|1|1||1||", "Kurzschlusstest|0|0||0||"));
}

TEST_F(Command, RunsAsOftenAsItIsTold) {
  const std::string good = ExpectationFile("good.ini", true);
  const std::string open = ExpectationFile("open.ini", false);
  for (const std::string& file : {good, open, good}) Run(Base(), file);
  EXPECT_EQ(initCalls, 3);
  EXPECT_THAT(records, ElementsAre("Verbindungstest|1|1||1||", "Kurzschlusstest|0|0||0||",
                                   StartsWith("Kurzschluss zwischen"), "Kurzschlusstest|0|1||0||",
                                   "Verbindungstest|1|1||1||", "Kurzschlusstest|0|0||0||"));
}

TEST_F(Command, TakesTheFileNameAsItStands) {
  Run(Base(), ExpectationFile("Prüfling %PROJEKTPFAD% 1.ini", true));
  EXPECT_EQ(initCalls, 1);
}

TEST_F(Command, AMissingFileStopsItBeforeAnythingElse) {
  EXPECT_THROW(Run(Base(), InFolder("nowhere.ini")), std::system_error);
  EXPECT_EQ(initCalls, 0);
  EXPECT_EQ(brenmor_sim_call_count(), 0);
  EXPECT_EQ(log.Text(), "");
}

TEST_F(Command, AMissingFileIsToldBeforeAMissingRoutine) {
  hostValues.Put("BreInit", 0);
  Register();
  EXPECT_THROW(Run(Base(), InFolder("nowhere.ini")), std::system_error);
}

TEST_F(Command, AHostWithoutTheRoutineGetsAnError) {
  hostValues.Put("BreInit", 0);
  Register();
  EXPECT_THROW(Run(Base(), ExpectationFile("good.ini", true)), std::logic_error);
  EXPECT_EQ(brenmor_sim_call_count(), 0);
}

TEST_F(Command, AHostWithoutTheParameterGetsAnError) {
  const TParamList none;
  EXPECT_THROW(Base().Run(none), std::invalid_argument);
  EXPECT_EQ(initCalls, 0);
}

TEST_F(Command, AFailedInitialisationPassesThroughAndNothingIsChecked) {
  initThrows = true;
  try {
    Run(Base(), ExpectationFile("good.ini", true));
    ADD_FAILURE() << "the host's failure was swallowed";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "the tester is switched off");
  }
  EXPECT_EQ(brenmor_sim_call_count(), 0);
  EXPECT_EQ(log.Text(), "");
}

TEST_F(Command, ADriverErrorPassesThroughWithItsText) {
  brenmor_sim_fail_call(30, "relay card 1 is gone");
  try {
    Run(Base(), ExpectationFile("good.ini", true));
    ADD_FAILURE() << "the driver's error was swallowed";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "relay card 1 is gone");
  }
  EXPECT_EQ(initCalls, 1);
  EXPECT_THAT(records, IsEmpty());
  EXPECT_TRUE(ui.AllWindowsEnabled());

  // The next run clears the driver's error and is right.
  Run(Base(), ExpectationFile("good.ini", true));
  EXPECT_THAT(records, ElementsAre("Verbindungstest|1|1||1||", "Kurzschlusstest|0|0||0||"));
}

TEST_F(Command, AnExpectationBeyondTheFittedCardsIsADriverError) {
  TShortTestData data(1, 60);
  const std::string file = InFolder("large.ini");
  data.SaveExpectationFile(file);
  EXPECT_THROW(Run(Base(), file), std::runtime_error);
  EXPECT_THAT(records, IsEmpty());
}

TEST_F(Command, ACancelReachesTheHost) {
  FakeTestEnvironment environment(log);
  SetTestEnvironment(&environment);
  ui.PressCancelAt(2);
  Run(Base(), ExpectationFile("good.ini", true));
  SetTestEnvironment(nullptr);
  EXPECT_EQ(environment.Cancels(), 1);
  EXPECT_THAT(records, IsEmpty());
}

}  // namespace
}  // namespace shorttest::testkit
