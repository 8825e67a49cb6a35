// Which control calls which handler.

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>

#include <stdexcept>
#include <utility>

#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "plugin/editor/GridView.h"
#include "plugin/editor/UpDownEdit.h"

void TShortTestForm::BindEvents() {
  BindParameters();
  BindConnections();
  BindClosing();
}

void TShortTestForm::BindParameters() {
  const auto click = [this](wxButton* button, void (TShortTestForm::*handler)()) {
    button->Bind(wxEVT_BUTTON,
                 [this, handler](wxCommandEvent&) { HandleClick([=, this] { (this->*handler)(); }); });
  };
  const auto change = [this](shorttest::UpDownEdit* number, void (TShortTestForm::*handler)()) {
    number->OnChange([this, handler] { Handle([=, this] { (this->*handler)(); }); });
  };
  const auto exit = [this](wxTextCtrl* edit, void (TShortTestForm::*handler)()) {
    Window()->OnLeave(*edit, [this, handler] { Handle([=, this] { (this->*handler)(); }); });
  };

  click(BT_Fileopen, &TShortTestForm::BT_FileopenClick);
  click(BT_Filesave, &TShortTestForm::BT_FilesaveClick);
  BT_Learn->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
    HandleClick([this] { BT_LearnClick(); });
    CloseIfRequested();  // "Abbruch" was pressed meanwhile
  });
  KXHelpButton1.Control()->Bind(wxEVT_BUTTON,
                                [this](wxCommandEvent&) { HandleClick([this] { KXHelpButton1.Click(); }); });
  CB_U->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { Handle([this] { CB_UChange(); }); });

  change(UpDownTimeout, &TShortTestForm::Ed_TimeoutChange);
  change(UpDownMaxError, &TShortTestForm::Ed_MaxErrorChange);
  change(UpDownSchwelle, &TShortTestForm::Ed_SchwelleChange);
  change(UpDownSchwelle2, &TShortTestForm::Ed_Schwelle2Change);
  change(UpDownLastRelaisKarte, &TShortTestForm::Ed_LastRelaisKarteChange);
  change(UpDownLastRelais, &TShortTestForm::Ed_LastRelaisChange);
  change(UpDownMin, &TShortTestForm::Ed_NChannelChange);
  change(UpDownMax, &TShortTestForm::Ed_NChannelChange);

  exit(Ed_Schwelle, &TShortTestForm::Ed_SchwelleExit);
  exit(Ed_Schwelle2, &TShortTestForm::Ed_Schwelle2Exit);
  exit(Ed_LastRelaisKarte, &TShortTestForm::Ed_LastRelaisKarteExit);
  exit(Ed_LastRelais, &TShortTestForm::Ed_LastRelaisExit);
  const auto leave = [this](shorttest::UpDownEdit* field,
                            void (TShortTestForm::*handler)(shorttest::UpDownEdit&)) {
    Window()->OnLeave(field->Edit(), [=, this] { Handle([=, this] { (this->*handler)(*field); }); });
  };
  leave(UpDownTimeout, &TShortTestForm::LeavePosition);
  leave(UpDownMaxError, &TShortTestForm::LeavePosition);
  leave(UpDownMin, &TShortTestForm::LeaveChannel);
  leave(UpDownMax, &TShortTestForm::LeaveChannel);
  Window()->OnEnter([this](const wxWindow* entered) { ForgetReplacedChannel(entered); });
}

void TShortTestForm::BindConnections() {
  for (wxTextCtrl* const text : {Ed_Skip, Mm_SkipCon, Mm_Soll}) {
    Window()->OnLeave(*text, [this] { Handle([this] { LeaveText(); }); });
  }
  Mm_Soll->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { Handle([this] { Mm_SollChange(); }); });
  ConnectionGrid->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    FormResize();
  });
  PageControl1->Bind(wxEVT_NOTEBOOK_PAGE_CHANGED, [this](wxBookCtrlEvent& event) {
    event.Skip();
    Window()->LeaveControl();  // a text that is no longer shown does not have the keyboard any more
    ShowGrid();
    // The toolkit goes on to the first text of the page; looking at the texts is not yet entering one. An
    // error in a text has meanwhile brought its page back.
    Window()->CallAfter([this, page = event.GetSelection()] {
      if (PageControl1->GetSelection() != page) return;
      Window()->ForgetControl();
      PageControl1->SetFocus();
    });
  });
  Window()->OnPageKey([this](bool forward) {
    if (PageControl1->IsEnabled()) PageControl1->AdvanceSelection(forward);
  });
}

void TShortTestForm::BindClosing() {
  BT_OK->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
    HandleClick([this] {
      if (!WritesFile() || IsReadyToWrite()) RequestClose(mrOk);
    });
  });
  ButtonCancel->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { RequestClose(mrCancel); });
  Window()->Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) { RequestClose(mrCancel); });
  Window()->OnHelpKey([this] { Handle([this] { KXHelpButton1.Click(); }); });
}

// A key that presses a button leaves the keyboard where it is: what was typed there counts all the same.
bool TShortTestForm::TakeOverControl() {
  Window()->TakeOverControl();
  if (!pendingErrors_.empty()) return false;
  if (!replacedChannel_.empty()) throw std::invalid_argument(std::exchange(replacedChannel_, {}));
  return true;
}

bool TShortTestForm::IsReadyToWrite() {
  document_.RequireData();
  if (!TakeOverControl()) return false;
  document_.RequireComplete(TypedTexts());
  return true;
}
