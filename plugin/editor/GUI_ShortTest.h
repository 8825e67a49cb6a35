#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "framework/kxcomponents.h"
#include "plugin/editor/ChannelNumbers.h"
#include "plugin/editor/DataFileEdit.h"
#include "plugin/editor/EditorControls.h"
#include "plugin/editor/ExpectationDocument.h"
#include "plugin/editor/HelpButton.h"

class TKXParser;
class wxDC;
class wxRect;
class wxString;
class wxWindow;

namespace shorttest {
class EditorDialog;
class ProjectChannelNames;
}  // namespace shorttest

/// The modal editor dialog of the command `ShortTest`: names the data file, sets the test parameters, edits
/// the expected connections as text, shows them as a grid, and learns them from a device. What it edits, and
/// by which rules, is the ExpectationDocument; the dialog shows.
///
/// The object can be made without a toolkit and without a screen; the window comes with the first ShowModal.
/// It may be shown many times. Errors in what the user does appear in a message box and never end the
/// program. Everything runs on the user-interface thread.
class TShortTestForm : public TKXEditorForm, public shorttest::EditorControls {
 public:
  /// Help topic of the dialog.
  static constexpr int HelpContext = 140;

  /// `breInit` brings the tester hardware into a usable state; it is called each time the dialog is shown.
  /// Hands `KXEdit_Datafile` to the host's VarAccess.
  explicit TShortTestForm(std::function<void()> breInit);
  ~TShortTestForm() override;
  TShortTestForm(const TShortTestForm&) = delete;
  TShortTestForm& operator=(const TShortTestForm&) = delete;

  /// The host's parser, which evaluates the data file's expression. Not owned; null for none.
  void SetParser(TKXParser* parser) { parser_ = parser; }

  /// Shows the dialog and returns mrOk or mrCancel. Throws std::runtime_error when there is no user interface
  /// with windows, and what FormShow throws: an unreadable data file (std::system_error), an unknown variable
  /// in its name, an error of the hardware's initialisation.
  int ShowModal() override;

  /// "KXEdit_Datafile".
  TKXEdit* FindEdit(const std::string& controlName) override;

  /// The data file's name as a script expression.
  shorttest::DataFileEdit KXEdit_Datafile;

  /// The host's help about this dialog.
  shorttest::HelpButton KXHelpButton1;

  /// The data being edited; null before the first showing, after OK, and after "Öffnen" of a file that cannot
  /// be read.
  const TShortTestData* Data() const { return document_.Data(); }

  /// mrNone while the dialog is open.
  int ModalResult() const { return modalResult_; }

  /// The dialog's window; null until the first showing.
  shorttest::EditorDialog* Window() const;

  /// The data file's name: the value of the expression in `KXEdit_Datafile`, or its text where that is none.
  std::string GetDataFileName() const;

  // Data to controls.
  void ShowData();
  void ShowConnections();
  void UpdateWarning();

  // Event handlers. All throw what the user must be told.
  void BT_FileopenClick();
  void BT_FilesaveClick();
  void BT_LearnClick();
  void CB_UChange();
  void Ed_TimeoutChange();
  void Ed_MaxErrorChange();
  void Ed_SchwelleChange();
  void Ed_SchwelleExit();
  void Ed_Schwelle2Change();
  void Ed_Schwelle2Exit();
  void Ed_LastRelaisKarteChange();
  void Ed_LastRelaisKarteExit();
  void Ed_LastRelaisChange();
  void Ed_LastRelaisExit();
  void Ed_NChannelChange();
  /// Rebuilds the matrix from the texts, whatever it held.
  void Ed_Exit();
  void Mm_SollChange();
  void FormResize();
  void ConnectionGridDrawCell(wxDC& dc, CellState state, const wxRect& rectangle, bool focused);

  /// What the learn procedure calls at its progress points: moves the bar and refreshes texts and grid. True
  /// when the user pressed "Abbruch". REQUIRES: the dialog is learning.
  bool ShowLearnProgress(double position);

 private:
  class NativeWindow;

  /// The dialog while it learns.
  class LearningMode {
   public:
    explicit LearningMode(TShortTestForm& form);
    ~LearningMode();
    LearningMode(const LearningMode&) = delete;
    LearningMode& operator=(const LearningMode&) = delete;

   private:
    void Enable(bool enable);

    TShortTestForm& form_;
  };

  void FormCreate();
  void FormShow();
  void FormClose();
  void FormDestroy();

  void MakeWindow();
  void BindEvents();
  void BindParameters();
  void BindConnections();
  void BindClosing();

  void OpenChannelNames();
  void ShowRange();
  void ShowTexts(const shorttest::ConnectionTexts& texts);
  void ShowGrid();
  wxString DescribeCell(int column, int row) const;
  void ShowNoData();
  shorttest::ConnectionTexts TypedTexts() const;

  // Fields that are left. The texts have Ed_Exit, the thresholds and relays the handlers of their names.
  void LeaveField(shorttest::UpDownEdit& field, const std::function<void(const std::string& typed)>& leave,
                  const std::function<std::string()>& textThatCounts);
  void LeavePosition(shorttest::UpDownEdit& field);
  void LeaveChannel(shorttest::UpDownEdit& field);
  void LeaveText();
  void ForgetReplacedChannel(const wxWindow* entered);

  /// Comes before the data is used: the control that has the keyboard counts as left. False when leaving it
  /// is an error, which the user gets to see later.
  bool TakeOverControl();
  /// The same before it is written; throws what keeps it from that.
  bool IsReadyToWrite();
  bool WritesFile() const;

  /// An error for the user, and the item of the texts that it is about.
  struct Report {
    std::string text;
    std::optional<shorttest::ItemPlace> place;
  };

  /// Runs a handler; what it throws is shown to the user.
  void Handle(const std::function<void()>& handler);
  /// The same for a click; an error in the control that the click left cancels it.
  void HandleClick(const std::function<void()>& handler);
  void ReportError(Report report);
  void ShowReport(const Report& report);
  void SelectItem(const shorttest::ItemPlace& place);
  static void ShowError(const std::string& text);

  void RequestClose(int modalResult);
  void CloseIfRequested();

  std::function<void()> breInit_;
  TKXParser* parser_ = nullptr;
  shorttest::ExpectationDocument document_;
  std::unique_ptr<shorttest::ProjectChannelNames> channelNames_;
  std::unique_ptr<NativeWindow> window_;
  std::vector<Report> pendingErrors_;
  std::optional<shorttest::ConnectionTexts> reportedTexts_;  // whose wrong item has been selected
  std::string replacedChannel_;  // text of a range field just left, of a number that it cannot hold
  int modalResult_ = 0;
  bool learning_ = false;
};

/// The editor dialog that is showing; null when there is none.
extern TShortTestForm* ActiveShortTestForm;

/// The progress function of learning in the dialog (TProgressFunc): reports to ActiveShortTestForm, and
/// answers true when there is none.
bool LearnProgress(double position);
