#include "plugin/editor/GUI_ShortTest.h"

#include <wx/app.h>
#include <wx/button.h>
#include <wx/weakref.h>

#include <exception>
#include <stdexcept>
#include <utility>

#include "framework/Kxcommandinterfaces.h"
#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/EditorLayout.h"
#include "plugin/editor/ProjectChannelNames.h"
#include "plugin/editor/UpDownEdit.h"

TShortTestForm* ActiveShortTestForm = nullptr;

namespace {

std::string HostVariable(const char* name) {
  return VarAccess() == nullptr ? std::string() : TStringValue::GetVal(VarAccess()->GetVariable(name));
}

}  // namespace

// The dialog's window. A toolkit that ends before the form takes it along.
class TShortTestForm::NativeWindow {
 public:
  NativeWindow() : dialog_(new shorttest::EditorDialog("Kurzschlusstest")) {}
  ~NativeWindow() { delete dialog_.get(); }
  NativeWindow(const NativeWindow&) = delete;
  NativeWindow& operator=(const NativeWindow&) = delete;

  shorttest::EditorDialog* Get() const { return dialog_.get(); }

 private:
  wxWeakRef<shorttest::EditorDialog> dialog_;
};

TShortTestForm::TShortTestForm(std::function<void()> breInit) : breInit_(std::move(breInit)) { FormCreate(); }

TShortTestForm::~TShortTestForm() { FormDestroy(); }

shorttest::EditorDialog* TShortTestForm::Window() const { return window_ ? window_->Get() : nullptr; }

TKXEdit* TShortTestForm::FindEdit(const std::string& controlName) {
  return controlName == "KXEdit_Datafile" ? &KXEdit_Datafile : nullptr;
}

void TShortTestForm::FormCreate() {
  if (VarAccess() != nullptr) VarAccess()->AttachEdit(KXEdit_Datafile);
  KXHelpButton1.SetHelpContext(HelpContext);
}

void TShortTestForm::FormDestroy() {
  window_.reset();
  channelNames_.reset();
  document_.Close();
  if (ActiveShortTestForm == this) ActiveShortTestForm = nullptr;
}

int TShortTestForm::ShowModal() {
  if (wxTheApp == nullptr) {
    throw std::runtime_error(
        "Der Dialog kann nicht angezeigt werden: Es gibt keine Oberfläche mit Fenstern.");
  }
  if (Window() == nullptr) MakeWindow();
  modalResult_ = mrNone;
  pendingErrors_.clear();
  reportedTexts_.reset();
  replacedChannel_.clear();
  Window()->ForgetControl();
  FormShow();
  KXEdit_Datafile.Control()->SetFocus();
  Window()->ShowModal();
  return modalResult_;
}

void TShortTestForm::MakeWindow() {
  window_ = std::make_unique<NativeWindow>();
  shorttest::LayOutEditor(
      {.dialog = *Window(),
       .controls = *this,
       .dataFileEdit = KXEdit_Datafile,
       .helpButton = KXHelpButton1,
       .cellPainter = [this](wxDC& dc, CellState state, const wxRect& rectangle,
                             bool focused) { ConnectionGridDrawCell(dc, state, rectangle, focused); },
       .cellDescriber = [this](int column, int row) { return DescribeCell(column, row); }});
  BindEvents();
}

void TShortTestForm::FormShow() {
  ActiveShortTestForm = this;
  if (KXEdit_Datafile.GetText().empty()) {
    document_.New(UpDownMin->Position(), UpDownMax->Position());
  } else {
    document_.Close();
    document_.Open(GetDataFileName());
  }
  ShowRange();
  OpenChannelNames();
  ShowData();
  if (breInit_) breInit_();
}

void TShortTestForm::OpenChannelNames() {
  channelNames_ = std::make_unique<shorttest::ProjectChannelNames>(HostVariable("PROJEKTPFAD") +
                                                                   HostVariable("PROJECTNAME") + ".ini");
}

void TShortTestForm::FormClose() {
  if (modalResult_ == mrCancel || modalResult_ == mrAbort) return;
  if (WritesFile()) document_.Save(GetDataFileName());
  document_.Close();
  ActiveShortTestForm = nullptr;
}

// Without a file name the data is discarded, without a message.
bool TShortTestForm::WritesFile() const {
  return document_.Data() != nullptr && !KXEdit_Datafile.GetText().empty();
}

void TShortTestForm::RequestClose(int modalResult) {
  modalResult_ = modalResult;
  if (!learning_)
    CloseIfRequested();  // else learning stops at its next progress point, and the dialog closes
}

// A data file that cannot be written leaves the dialog open: the data is not lost, and another name can be
// tried.
void TShortTestForm::CloseIfRequested() {
  if (modalResult_ == mrNone) return;
  Handle([this] {
    try {
      FormClose();
    } catch (...) {
      modalResult_ = mrNone;
      throw;
    }
    // Nothing is left any more, neither a control nor an error on leaving one.
    Window()->ForgetControl();
    pendingErrors_.clear();
    Window()->EndModal(modalResult_ == mrOk ? wxID_OK : wxID_CANCEL);
  });
}

void TShortTestForm::Handle(const std::function<void()>& handler) {
  try {
    handler();
  } catch (const shorttest::WrongItem& error) {
    ReportError({error.what(), error.place});
  } catch (const std::exception& error) {
    ReportError({error.what(), std::nullopt});
  }
}

void TShortTestForm::HandleClick(const std::function<void()>& handler) {
  if (!pendingErrors_.empty()) return;
  try {
    handler();
  } catch (const shorttest::WrongItem& error) {
    ShowReport({error.what(), error.place});
  } catch (const std::exception& error) {
    ShowError(error.what());
  }
}

// Shown once the event at hand is dealt with: these come from an edit that is just losing the keyboard or
// taking a key, and a message box must not open in the middle of that.
void TShortTestForm::ReportError(Report report) {
  pendingErrors_.push_back(std::move(report));
  if (pendingErrors_.size() > 1) return;
  Window()->CallAfter([this] {
    for (const Report& pending : std::exchange(pendingErrors_, {})) ShowReport(pending);
  });
}

void TShortTestForm::ShowReport(const Report& report) {
  ShowError(report.text);
  if (report.place) SelectItem(*report.place);
}

void TShortTestForm::ShowError(const std::string& text) {
  Application().ShowMessage(
      {.text = text, .kind = MessageKind::Error, .buttons = {mrOk}, .helpContext = HelpContext});
}
