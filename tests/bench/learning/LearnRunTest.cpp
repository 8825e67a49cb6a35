#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/learning/LearnRun.h"
#include "framework/kxcomponents.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/support/Bench.h"
#include "tests/support/FakeUserInterface.h"

namespace kxbench {
namespace {

using shorttest::testkit::FakeDriver;
using shorttest::testkit::FakeUserInterface;
using shorttest::testkit::UserInterfaceFailure;
using testing::ElementsAre;
using testing::HasSubstr;

/// A device at the bench and an expectation file to learn it into.
class LearningAFile : public shorttest::testkit::Bench {
 protected:
  void SetUp() override {
    SetApplication(&ui);
    request.file = (folder.Path() / "harness.dat").string();
    driver.Wire(1, 5, 0.4);
    driver.Wire(2, 3, 0.4);
    clock.ticksStep = 500;  // so that waiting for a discharge ends
  }
  void TearDown() override {
    SetApplication(nullptr);
    EXPECT_TRUE(driver.AllRelaysOpen());
    EXPECT_FALSE(driver.TerminationOn());
    EXPECT_EQ(ui.Dialogs(), 0);
    Bench::TearDown();
  }

  void Range(std::int32_t first, std::int32_t last) {
    request.firstChannel = first;
    request.lastChannel = last;
  }

  /// A file with every setting other than the default; channel 4 suspended, pair (1, 2) excluded.
  void ExistingFile() {
    TShortTestData data(1, 5);
    data.Schwelle = 7.0;
    data.Schwelle2 = 20.0;
    data.U_Control = 1;
    data.LastRelaisKarte = 1;
    data.LastRelais = 3;
    data.Timeout = 1234;
    data.MaxError = 3;
    data.SetC(1, 0, CellState::ExcludedPair, NoResistance);
    data.SuspendChannel(3, 0.0);
    data.SaveExpectationFile(request.file);
    before = folder.Read("harness.dat");
  }

  LearnSummary Learn() {
    LearnSummary summary;
    LearnFile(request, summary);
    return summary;
  }

  TShortTestData Saved() const { return TShortTestData(request.file); }
  bool FileUnchanged() const { return folder.Read("harness.dat") == before; }

  TemporaryFolder folder;
  FakeUserInterface ui{log};
  LearnRequest request;
  std::string before;
};

TEST_F(LearningAFile, NewFileTakesRangeAndDefaults) {
  Range(1, 6);
  EXPECT_EQ(Learn().end, LearnEnd::Learned);
  const TShortTestData data = Saved();
  EXPECT_EQ(data.von, 1);
  EXPECT_EQ(data.bis, 6);
  EXPECT_EQ(data.Schwelle, 10.0);
  EXPECT_EQ(data.Schwelle2, 10.0);
  EXPECT_EQ(data.U_Control, 2);
  EXPECT_EQ(data.Get(4, 0), CellState::Connected);
  EXPECT_EQ(data.Get(2, 1), CellState::Connected);
  EXPECT_EQ(data.Get(5, 0), CellState::NotConnected);
}

TEST_F(LearningAFile, NewFileNeedsARange) {
  EXPECT_THROW(Learn(), std::invalid_argument);
  EXPECT_FALSE(std::filesystem::exists(request.file));
  EXPECT_EQ(log.Text(), "") << "nothing was asked of the tester";
}

TEST_F(LearningAFile, NewFileTakesTheThresholdTwice) {
  Range(1, 6);
  request.thresholdOhm = 3.5;
  request.voltageControl = 0;
  Learn();
  EXPECT_EQ(Saved().Schwelle, 3.5);
  EXPECT_EQ(Saved().Schwelle2, 3.5);
  EXPECT_EQ(Saved().U_Control, 0);
}

TEST_F(LearningAFile, ExistingFileKeepsWhatIsNotLearned) {
  ExistingFile();
  EXPECT_EQ(Learn().end, LearnEnd::Learned);
  const TShortTestData data = Saved();
  EXPECT_EQ(data.von, 1);
  EXPECT_EQ(data.bis, 5);
  EXPECT_EQ(data.Schwelle, 7.0);
  EXPECT_EQ(data.Schwelle2, 20.0);
  EXPECT_EQ(data.U_Control, 1);
  EXPECT_EQ(data.LastRelaisKarte, 1);
  EXPECT_EQ(data.LastRelais, 3);
  EXPECT_EQ(data.Timeout, 1234);
  EXPECT_EQ(data.MaxError, 3);
  EXPECT_EQ(data.Get(1, 0), CellState::ExcludedPair);
  EXPECT_EQ(data.Get(3, 3), CellState::Suspended);
  EXPECT_EQ(data.Get(4, 0), CellState::Connected);
}

TEST_F(LearningAFile, OptionsReplaceWhatTheFileSays) {
  ExistingFile();
  request.thresholdOhm = 3.5;
  request.voltageControl = 2;
  Learn();
  EXPECT_EQ(Saved().Schwelle, 3.5);
  EXPECT_EQ(Saved().Schwelle2, 20.0) << "the short-circuit threshold is the file's";
  EXPECT_EQ(Saved().U_Control, 2);
}

TEST_F(LearningAFile, NewRangeKeepsWhatIsKnownOfItsChannels) {
  ExistingFile();
  Range(2, 8);
  driver.Wire(6, 8, 0.4);
  Learn();
  const TShortTestData data = Saved();
  EXPECT_EQ(data.von, 2);
  EXPECT_EQ(data.bis, 8);
  EXPECT_EQ(data.Get(2, 2), CellState::Suspended) << "channel 4";
  EXPECT_EQ(data.Get(6, 4), CellState::Connected) << "channels 6 and 8";
  EXPECT_EQ(data.Timeout, 1234);
}

TEST_F(LearningAFile, HardwareIsAskedForItsCardsFirst) {
  Range(1, 6);
  Learn();
  EXPECT_TRUE(log.Text().starts_with("clear\nbus 128 0 64\n")) << log.Text().substr(0, 100);
}

TEST_F(LearningAFile, WithoutCardsIsAnError) {
  ExistingFile();
  driver.Cards(0);
  try {
    Learn();
    FAIL() << "no error";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(), "Konnte Anzahl Kanäle nicht ermitteln.");
  }
  EXPECT_TRUE(FileUnchanged());
}

struct RangeRow {
  const char* name;
  std::int32_t first;
  std::int32_t last;
};

class RangeBeyondTheTester : public LearningAFile, public testing::WithParamInterface<RangeRow> {};

TEST_P(RangeBeyondTheTester, IsRefusedBeforeAChannelIsSwitched) {
  ExistingFile();
  Range(GetParam().first, GetParam().last);
  driver.Cards(2);
  EXPECT_THROW(Learn(), std::runtime_error);
  EXPECT_TRUE(FileUnchanged());
  const auto closes = [](std::string_view line) { return line.starts_with("bus") && !line.ends_with(" 64"); };
  EXPECT_EQ(log.Select(closes), "") << "no relay was closed";
  EXPECT_EQ(log.Count("read"), 0);
}

INSTANTIATE_TEST_SUITE_P(Ranges, RangeBeyondTheTester,
                         testing::Values(RangeRow{"EndsBeyond", 1, 97}, RangeRow{"LiesBeyond", 100, 120},
                                         RangeRow{"StartsAtZero", 0, 5}, RangeRow{"IsEmpty", 5, 4}),
                         [](const auto& row) { return row.param.name; });

TEST_F(LearningAFile, RangeMayReachTheLastChannel) {
  Range(95, 96);
  driver.Cards(2);
  EXPECT_EQ(Learn().end, LearnEnd::Learned);
}

TEST_F(LearningAFile, CancelAtAnyMomentSavesNothing) {
  ExistingFile();
  Learn();
  const int steps = ui.MessageCalls();
  ASSERT_GT(steps, 10);
  for (int step = 1; step <= steps; ++step) {
    SCOPED_TRACE("cancelled at progress call " + std::to_string(step));
    ExistingFile();
    ui.PressCancelAt(step);
    EXPECT_EQ(Learn().end, LearnEnd::Cancelled);
    EXPECT_TRUE(FileUnchanged());
    EXPECT_TRUE(driver.AllRelaysOpen());
  }
}

TEST_F(LearningAFile, CloseBoxSavesNothing) {
  ExistingFile();
  ui.CloseBoxAt(5);
  EXPECT_EQ(Learn().end, LearnEnd::Cancelled);
  EXPECT_TRUE(FileUnchanged());
}

TEST_F(LearningAFile, DriverErrorAtAnyCallSavesNothing) {
  ExistingFile();
  driver.FailAt(1000000, "never reached");
  Learn();
  const int calls = driver.FailableCalls();
  int failures = 0;
  for (int call = 1; call <= calls; ++call) {
    SCOPED_TRACE("the driver failed at call " + std::to_string(call));
    ExistingFile();
    driver.FailAt(call, "no answer");
    try {
      Learn();
    } catch (const TShortTestHWException& error) {
      ++failures;
      EXPECT_STREQ(error.what(), "no answer");
      EXPECT_TRUE(FileUnchanged());
      EXPECT_TRUE(driver.AllRelaysOpen());
    }
  }
  // The last calls are the clean-up's, whose errors nobody looks at.
  EXPECT_GT(failures, calls / 2);
  driver.NoFault();
}

TEST_F(LearningAFile, UserInterfaceThatFailsSavesNothing) {
  ExistingFile();
  ui.ThrowAtCall(9);
  EXPECT_THROW(Learn(), UserInterfaceFailure);
  EXPECT_TRUE(FileUnchanged());
}

class ReadingNearTheThreshold : public LearningAFile {
 protected:
  void SetUp() override {
    LearningAFile::SetUp();
    ExistingFile();
    driver.Wire(1, 5, 6.5);  // 7 Ohm is the threshold
  }
};

TEST_F(ReadingNearTheThreshold, IgnoredIsLearned) {
  ui.Answer({mrIgnore});
  EXPECT_EQ(Learn().end, LearnEnd::Learned);
  EXPECT_EQ(Saved().Get(4, 0), CellState::Connected);
  ASSERT_EQ(ui.Boxes().size(), 1U);
  EXPECT_THAT(ui.Boxes()[0].text, HasSubstr("zwischen den Kanälen 5 und 1 "));
}

TEST_F(ReadingNearTheThreshold, CancelledSavesNothing) {
  ui.Answer({mrCancel});
  EXPECT_EQ(Learn().end, LearnEnd::Cancelled);
  EXPECT_TRUE(FileUnchanged());
}

TEST_F(LearningAFile, FileThatCannotBeWrittenIsAnError) {
  Range(1, 6);
  request.file = (folder.Path() / "missing" / "harness.dat").string();
  EXPECT_THROW(Learn(), std::system_error);
}

TEST_F(LearningAFile, SummaryTellsWhatItTook) {
  Range(1, 6);
  driver.Live(4, 3.0);
  const LearnSummary summary = Learn();
  EXPECT_THAT(summary.nets, ElementsAre(ElementsAre(1, 5), ElementsAre(2, 3)));
  EXPECT_THAT(summary.unconnected, ElementsAre(6));
  ASSERT_EQ(summary.suspended.size(), 1U);
  EXPECT_EQ(summary.suspended[0].channel, 4);
  EXPECT_EQ(summary.suspended[0].volts, 3.0);
  EXPECT_EQ(static_cast<std::int64_t>(summary.readings), log.Count("read"));
  EXPECT_EQ(static_cast<std::int64_t>(summary.relayOperations), log.Count("bus") + log.Count("relay"));
  EXPECT_GT(summary.seconds, 0.0);

  const LearnSummary again = Learn();
  EXPECT_LE(again.readings, summary.readings) << "each summary counts its own";
}

TEST_F(LearningAFile, BarFollowsThePosition) {
  Range(1, 6);
  Learn();
  EXPECT_EQ(ui.BarPosition(), 100);
  EXPECT_THAT(log.Text(), HasSubstr("bar 1\n"));
}

}  // namespace
}  // namespace kxbench
