// The parameters: what the data holds, and what the controls show.

#include <wx/choice.h>
#include <wx/gauge.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include "contracts/BrenmorHWDevice.h"
#include "plugin/editor/ChannelNumbers.h"
#include "plugin/editor/EditorLayout.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "plugin/editor/ShownParameters.h"
#include "plugin/editor/UpDownEdit.h"

using shorttest::FloatFromText;
using shorttest::IntegerFromText;
using shorttest::OhmPerKiloOhm;

namespace {

constexpr int WithoutVoltageControl = 0;
constexpr int WithDischarge = 2;
constexpr int GenerationWithoutOwnDischarge = 1;
constexpr std::int32_t NoRelay = -1;

bool IsVoltageControl(std::int32_t control) {
  return WithoutVoltageControl <= control && control <= WithDischarge;
}

// An empty edit names no relay.
std::int32_t RelayFromText(const std::string& text) { return text.empty() ? NoRelay : IntegerFromText(text); }

}  // namespace

// Setting the position of a pair writes a rounded number into its edit, and from there into the data. The
// exact thresholds and relays follow: showing a data file must not change what a device is tested for.
void TShortTestForm::ShowData() {
  const shorttest::ShownParameters shown = shorttest::ShowParameters(*comp_);
  const double lowerThreshold = comp_->Schwelle;
  const double upperThreshold = comp_->Schwelle2;
  ShowGrid();
  CB_U->SetSelection(IsVoltageControl(shown.voltageControl) ? shown.voltageControl : wxNOT_FOUND);
  UpDownTimeout->SetPosition(shown.timeoutMs);
  UpDownMaxError->SetPosition(shown.maxError);
  UpDownSchwelle->SetPosition(shown.thresholdPosition);
  UpDownSchwelle->SetText(shown.thresholdText);
  UpDownSchwelle2->SetMinimum(shown.upperThresholdMinimum);
  UpDownSchwelle2->SetPosition(shown.upperThresholdPosition);
  UpDownSchwelle2->SetText(shown.upperThresholdText);
  comp_->Schwelle = lowerThreshold;
  comp_->Schwelle2 = upperThreshold;
  if (shown.terminatingRelay) {
    UpDownLastRelaisKarte->SetPosition(shown.terminatingRelay->card);
    UpDownLastRelaisKarte->SetText(std::to_string(shown.terminatingRelay->card));
    UpDownLastRelais->SetPosition(shown.terminatingRelay->relay);
    UpDownLastRelais->SetText(std::to_string(shown.terminatingRelay->relay));
  } else {
    UpDownLastRelaisKarte->SetText("");
    UpDownLastRelais->SetText("");
  }
  ProgressBar1->SetValue(0);
  ShowConnections();
  Mm_SollChange();  // the names may be others even where the texts are the same
  UpdateWarning();
}

void TShortTestForm::UpdateWarning() {
  const int control = CB_U->GetSelection();
  const char* warning = "";
  if (control == WithoutVoltageControl) {
    warning = "Warnung: Spannung im Prüfling kann Messkanäle beschädigen";
  } else if (control == WithDischarge && comp_ && comp_->LastRelaisKarte <= 0 && comp_->LastRelais <= 0 &&
             brenmor_adx_hw_generation() == GenerationWithoutOwnDischarge) {
    warning = "Warnung: Die Entladungsfunktion funktioniert nur mit Abschlusswiderstand.";
  }
  shorttest::ShowWarning(*LabelWarning, wxString::FromUTF8(warning));
}

void TShortTestForm::CB_UChange() {
  if (comp_) comp_->U_Control = CB_U->GetSelection();
  UpdateWarning();
}

void TShortTestForm::Ed_TimeoutChange() {
  if (comp_) comp_->Timeout = UpDownTimeout->Position();
}

void TShortTestForm::Ed_MaxErrorChange() {
  if (comp_) comp_->MaxError = UpDownMaxError->Position();
}

void TShortTestForm::Ed_SchwelleChange() {
  if (!comp_ || UpDownSchwelle->Text().empty()) return;
  comp_->Schwelle = FloatFromText(UpDownSchwelle->Text());
  UpDownSchwelle2->SetMinimum(shorttest::UpperThresholdMinimum(comp_->Schwelle));
}

// An empty lower threshold has no meaning: it is the error that any other text is.
void TShortTestForm::Ed_SchwelleExit() {
  if (comp_) comp_->Schwelle = FloatFromText(UpDownSchwelle->Text());
}

void TShortTestForm::Ed_Schwelle2Change() {
  if (!comp_ || UpDownSchwelle2->Text().empty()) return;
  comp_->Schwelle2 = FloatFromText(UpDownSchwelle2->Text()) * OhmPerKiloOhm;
}

void TShortTestForm::Ed_Schwelle2Exit() {
  if (!comp_) return;
  const std::string text = UpDownSchwelle2->Text();
  comp_->Schwelle2 = text.empty() ? comp_->Schwelle : FloatFromText(text) * OhmPerKiloOhm;
}

// Leaves the warning as it is: it follows the relay's number alone.
void TShortTestForm::Ed_LastRelaisKarteChange() {
  const std::string text = UpDownLastRelaisKarte->Text();
  if (comp_ && !text.empty()) comp_->LastRelaisKarte = IntegerFromText(text);
}

void TShortTestForm::Ed_LastRelaisKarteExit() {
  if (comp_) comp_->LastRelaisKarte = RelayFromText(UpDownLastRelaisKarte->Text());
}

void TShortTestForm::Ed_LastRelaisChange() {
  const std::string text = UpDownLastRelais->Text();
  if (comp_ && !text.empty()) comp_->LastRelais = IntegerFromText(text);
  UpdateWarning();
}

void TShortTestForm::Ed_LastRelaisExit() {
  if (comp_) comp_->LastRelais = RelayFromText(UpDownLastRelais->Text());
}
