#pragma once

class wxButton;
class wxChoice;
class wxGauge;
class wxNotebook;
class wxPanel;
class wxStaticText;
class wxTextCtrl;

namespace shorttest {

class GridView;
class UpDownEdit;

/// The controls of the editor dialog, by the names under which the host's users know them. Null until the
/// dialog was shown for the first time; the dialog's window owns them.
struct EditorControls {
  // Bottom bar
  wxPanel* Panel2 = nullptr;
  wxGauge* ProgressBar1 = nullptr;
  wxButton* BT_OK = nullptr;
  wxButton* ButtonCancel = nullptr;
  wxButton* BT_Learn = nullptr;

  // Parameters
  wxPanel* DatenPanel = nullptr;
  wxButton* BT_Fileopen = nullptr;
  wxButton* BT_Filesave = nullptr;
  wxTextCtrl* Ed_Schwelle = nullptr;  ///< Ohm
  UpDownEdit* UpDownSchwelle = nullptr;
  wxTextCtrl* Ed_Schwelle2 = nullptr;  ///< kOhm
  UpDownEdit* UpDownSchwelle2 = nullptr;
  wxChoice* CB_U = nullptr;
  wxStaticText* LabelWarning = nullptr;
  wxTextCtrl* Ed_Timeout = nullptr;  ///< ms
  UpDownEdit* UpDownTimeout = nullptr;
  wxTextCtrl* Ed_MaxError = nullptr;
  UpDownEdit* UpDownMaxError = nullptr;
  wxTextCtrl* Ed_LastRelaisKarte = nullptr;
  UpDownEdit* UpDownLastRelaisKarte = nullptr;
  wxTextCtrl* Ed_LastRelais = nullptr;
  UpDownEdit* UpDownLastRelais = nullptr;
  wxTextCtrl* Ed_MinChannel = nullptr;
  UpDownEdit* UpDownMin = nullptr;
  wxTextCtrl* Ed_MaxChannel = nullptr;
  UpDownEdit* UpDownMax = nullptr;

  // Connections
  wxNotebook* PageControl1 = nullptr;
  wxTextCtrl* Ed_Skip = nullptr;
  wxTextCtrl* Mm_SkipCon = nullptr;
  wxTextCtrl* Mm_Soll = nullptr;
  wxTextCtrl* Mm_SollNames = nullptr;
  GridView* ConnectionGrid = nullptr;
};

}  // namespace shorttest
