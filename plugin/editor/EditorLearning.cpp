// Learning the connections from a device.

#include <wx/button.h>
#include <wx/gauge.h>
#include <wx/panel.h>

#include <algorithm>

#include "plugin/editor/DisplayEnd.h"
#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "plugin/editor/UpDownEdit.h"
#include "plugin/hardware/Bus.h"
#include "plugin/learn/ShorttestLearn.h"
#include "text/Rounding.h"

namespace {

std::string RangeBeyondTheTester(const TShortTestData& data) {
  return "Der Tester hat die Kanäle 1 bis " + std::to_string(HWChannelCount) + ", nicht " +
         std::to_string(data.von) + " bis " + std::to_string(data.bis) + ".";
}

}  // namespace

// A learning that does not come to its end leaves data, texts and grid as they were.
void TShortTestForm::BT_LearnClick() {
  document_.RequireData();
  if (!TakeOverControl()) return;
  if (!InitHardware()) {
    ShowError("Konnte Anzahl Kanäle nicht ermitteln.");
    return;
  }
  UpDownMin->SetMaximum(HWChannelCount - 1);
  UpDownMax->SetMaximum(HWChannelCount);
  if (!shorttest::HasChannelsFor(*Data())) {
    ShowError(RangeBeyondTheTester(*Data()));
    return;
  }

  const shorttest::ConnectionTexts before = TypedTexts();
  auto outcome = shorttest::LearnOutcome::Stopped;
  try {
    const LearningMode learning(*this);
    const shorttest::DisplayEndWatch displayEnd;
    outcome = document_.Learn([](TShortTestData& data) { return LearnConnections(data, LearnProgress); });
  } catch (...) {
    ShowGrid();
    ShowTexts(before);
    throw;
  }
  ShowGrid();
  if (outcome == shorttest::LearnOutcome::Learned) {
    ShowConnections();
  } else {
    ShowTexts(before);
  }
}

// What could change the data is disabled: the user's keys and clicks are handled while the learning runs.
TShortTestForm::LearningMode::LearningMode(TShortTestForm& form) : form_(form) {
  form_.learning_ = true;
  Enable(false);
  form_.ButtonCancel->SetFocus();
}

TShortTestForm::LearningMode::~LearningMode() {
  Enable(true);
  form_.BT_Learn->SetFocus();
  form_.learning_ = false;
}

void TShortTestForm::LearningMode::Enable(bool enable) {
  form_.BT_Learn->Enable(enable);
  form_.BT_OK->Enable(enable);
  form_.DatenPanel->Enable(enable);
  // The Enter that started the learning, held or pressed again, must not press "Abbruch".
  form_.Window()->IgnorePressingKeys(!enable);
}

bool TShortTestForm::ShowLearnProgress(double position) {
  if (modalResult_ == mrCancel) return true;
  const int percent = static_cast<int>(shorttest::RoundToEven(position * 100.0));
  ProgressBar1->SetValue(std::clamp(percent, 0, ProgressBar1->GetRange()));
  ShowConnections();
  ShowGrid();
  Application().ProcessMessages();
  return false;
}

bool LearnProgress(double position) {
  return ActiveShortTestForm == nullptr || ActiveShortTestForm->ShowLearnProgress(position);
}
