// The parameters: what the data holds, and what the controls show.

#include <wx/choice.h>
#include <wx/gauge.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "plugin/editor/EditorLayout.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "plugin/editor/ShownParameters.h"
#include "plugin/editor/UpDownEdit.h"

// Shows without telling the controls' handlers: showing a data file must not change what a device is tested
// for. What the number fields of waiting time and errors cannot hold is the exception, see the document.
void TShortTestForm::ShowData() {
  if (Data() == nullptr) return;
  const shorttest::ShownParameters shown = document_.ShowParameters();
  ShowGrid();
  const bool isListed =
      0 <= shown.voltageControl && shown.voltageControl < static_cast<int>(CB_U->GetCount());
  CB_U->SetSelection(isListed ? shown.voltageControl : wxNOT_FOUND);
  UpDownTimeout->Show(shown.timeoutMs, std::to_string(shown.timeoutMs));
  UpDownMaxError->Show(shown.maxError, std::to_string(shown.maxError));
  UpDownSchwelle->Show(shown.thresholdPosition, shown.thresholdText);
  UpDownSchwelle2->SetMinimum(shown.upperThresholdMinimum);
  UpDownSchwelle2->Show(shown.upperThresholdPosition, shown.upperThresholdText);
  if (shown.terminatingRelay) {
    UpDownLastRelaisKarte->Show(shown.terminatingRelay->card, std::to_string(shown.terminatingRelay->card));
    UpDownLastRelais->Show(shown.terminatingRelay->relay, std::to_string(shown.terminatingRelay->relay));
  } else {
    UpDownLastRelaisKarte->ShowText("");
    UpDownLastRelais->ShowText("");
  }
  ProgressBar1->SetValue(0);
  ShowConnections();
  Mm_SollChange();  // the names may be others even where the texts are the same
  UpdateWarning();
}

void TShortTestForm::UpdateWarning() {
  shorttest::ShowWarning(*LabelWarning, wxString::FromUTF8(document_.Warning(CB_U->GetSelection())));
}

void TShortTestForm::CB_UChange() {
  document_.SetVoltageControl(CB_U->GetSelection());
  UpdateWarning();
}

void TShortTestForm::Ed_TimeoutChange() { document_.SetTimeout(UpDownTimeout->Position()); }

void TShortTestForm::Ed_MaxErrorChange() { document_.SetMaxError(UpDownMaxError->Position()); }

void TShortTestForm::Ed_SchwelleChange() {
  document_.TypeLowerThreshold(UpDownSchwelle->Text());
  if (Data() != nullptr) UpDownSchwelle2->SetMinimum(shorttest::UpperThresholdMinimum(Data()->Schwelle));
}

void TShortTestForm::Ed_SchwelleExit() {
  LeaveField(
      *UpDownSchwelle, [this](const std::string& typed) { document_.LeaveLowerThreshold(typed); },
      [this] { return document_.LowerThresholdText(); });
}

void TShortTestForm::Ed_Schwelle2Change() { document_.TypeUpperThreshold(UpDownSchwelle2->Text()); }

void TShortTestForm::Ed_Schwelle2Exit() {
  LeaveField(
      *UpDownSchwelle2, [this](const std::string& typed) { document_.LeaveUpperThreshold(typed); },
      [this] { return document_.UpperThresholdText(); });
}

// Leaves the warning as it is: it follows the relay's number alone.
void TShortTestForm::Ed_LastRelaisKarteChange() { document_.TypeRelayCard(UpDownLastRelaisKarte->Text()); }

void TShortTestForm::Ed_LastRelaisKarteExit() {
  LeaveField(
      *UpDownLastRelaisKarte, [this](const std::string& typed) { document_.LeaveRelayCard(typed); },
      [this] { return document_.RelayCardText(); });
}

void TShortTestForm::Ed_LastRelaisChange() {
  document_.TypeRelay(UpDownLastRelais->Text());
  UpdateWarning();
}

void TShortTestForm::Ed_LastRelaisExit() {
  LeaveField(
      *UpDownLastRelais, [this](const std::string& typed) { document_.LeaveRelay(typed); },
      [this] { return document_.RelayText(); });
}

// Whatever comes of leaving it, the field then shows what counts.
void TShortTestForm::LeaveField(shorttest::UpDownEdit& field,
                                const std::function<void(const std::string& typed)>& leave,
                                const std::function<std::string()>& textThatCounts) {
  if (Data() == nullptr) return;
  try {
    leave(field.Text());
  } catch (...) {
    field.ShowText(textThatCounts());
    throw;
  }
  field.ShowText(textThatCounts());
}

void TShortTestForm::LeavePosition(shorttest::UpDownEdit& field) {
  LeaveField(
      field, [](const std::string& typed) { shorttest::IntegerFromText(typed); },
      [&field] { return std::to_string(field.Position()); });
}
