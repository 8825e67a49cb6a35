#include "plugin/check/CheckForm.h"
#include "plugin/hardware/Measurement.h"
#include "tests/plugin/check/CheckBench.h"

namespace shorttest::testkit {
namespace {

class CheckFormTest : public CheckBench {
 protected:
  void SetUp() override {
    CheckBench::SetUp();
    ui.BarMaximum(100);
    CheckForm = std::make_unique<TShortTestCheckForm>();
  }
};

TEST_F(CheckFormTest, IsLaidOutAsDesigned) {
  const ProgressDialogLayout& layout = ui.Layout();
  EXPECT_EQ(layout.caption, "Kurzschlusstest");
  EXPECT_EQ(layout.clientWidth, 166);
  EXPECT_EQ(layout.clientHeight, 73);
  EXPECT_EQ(layout.fontName, "Segoe UI");
  EXPECT_EQ(layout.fontHeight, -12);
  EXPECT_EQ(layout.barMinimum, 0);
  EXPECT_EQ(layout.barMaximum, 100);
  EXPECT_EQ(layout.buttonCaption, "Abbrechen");
  EXPECT_EQ(layout.buttonResult, 2);
  const auto bounds = [](const ControlBounds& b) { return std::vector{b.left, b.top, b.width, b.height}; };
  EXPECT_EQ(bounds(layout.bar), (std::vector{8, 8, 150, 17}));
  EXPECT_EQ(bounds(layout.button), (std::vector{45, 40, 75, 25}));
}

TEST_F(CheckFormTest, IsNotShownByBeingMade) {
  EXPECT_EQ(log.Text(), "create dialog\n");
  EXPECT_FALSE(CheckForm->Visible());
}

TEST_F(CheckFormTest, ShowingPutsTheBarToTheStart) {
  CheckForm->Show();
  EXPECT_TRUE(CheckForm->Visible());
  EXPECT_EQ(ui.BarPosition(), 0);
}

struct BarRow {
  const char* name;
  double position;
  int bar;
};

class BarPosition : public CheckFormTest, public ::testing::WithParamInterface<BarRow> {};

TEST_P(BarPosition, IsRoundedTiesToEven) {
  CheckForm->Show();
  EXPECT_FALSE(UpdateProgress(GetParam().position));
  EXPECT_EQ(ui.BarPosition(), GetParam().bar);
}

INSTANTIATE_TEST_SUITE_P(Positions, BarPosition,
                         ::testing::Values(BarRow{"Start", 0.0, 0}, BarRow{"Half", 0.5, 50},
                                           BarRow{"TieToEvenBelow", 0.125, 12},
                                           BarRow{"TieToEvenAbove", 0.375, 38}, BarRow{"TieAtZero", 0.005, 0},
                                           BarRow{"JustAboveATie", 0.1251, 13},
                                           BarRow{"JustBelowATie", 0.3749, 37}, BarRow{"End", 1.0, 100}),
                         [](const auto& row) { return row.param.name; });

TEST_F(CheckFormTest, ThePositionIsAFractionOfTheBarsRange) {
  CheckForm->Show();
  ui.BarMaximum(8000);
  UpdateProgress(0.25);
  EXPECT_EQ(ui.BarPosition(), 2000);
}

TEST_F(CheckFormTest, MessagesAreProcessedBeforeTheBarMoves) {
  CheckForm->Show();
  log.Clear();
  UpdateProgress(0.5);
  EXPECT_EQ(log.Text(), "messages\nbar 50\n");
}

TEST_F(CheckFormTest, ThePressThatTheMessagesBringStopsAtOnceAndForGood) {
  CheckForm->Show();
  UpdateProgress(0.2);
  ui.PressCancelAt(1);
  log.Clear();
  for (const double position : {0.3, 0.4, 1.0}) EXPECT_TRUE(UpdateProgress(position));
  EXPECT_EQ(log.Text(), "messages\nmessages\nmessages\n");
  EXPECT_EQ(ui.BarPosition(), 20);
  EXPECT_EQ(CheckForm->GetModalResult(), 2);
  EXPECT_TRUE(CheckForm->Visible());
}

TEST_F(CheckFormTest, TheCloseBoxStopsForGoodAndLeavesTheResultAlone) {
  CheckForm->Show();
  UpdateProgress(0.2);
  ui.CloseBoxAt(1);
  for (const double position : {0.3, 0.4, 1.0}) EXPECT_TRUE(UpdateProgress(position));
  EXPECT_EQ(ui.BarPosition(), 20);
  EXPECT_EQ(CheckForm->GetModalResult(), 0);
}

TEST_F(CheckFormTest, ADialogThatWasNeverShownStops) { EXPECT_TRUE(UpdateProgress(0.5)); }

TEST_F(CheckFormTest, HasTheSignatureOfAProgressFunction) {
  const TProgressFunc progress = UpdateProgress;
  CheckForm->Show();
  EXPECT_FALSE(progress(0.5));
}

}  // namespace
}  // namespace shorttest::testkit
