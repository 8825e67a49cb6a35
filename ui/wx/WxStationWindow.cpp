#include "ui/wx/WxStationWindow.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/sizer.h>

#include <algorithm>
#include <utility>

#include "ui/wx/SheetPanel.h"

namespace kxbench {

namespace {

constexpr int LookAroundMs = 200;
constexpr int GaugeRange = 1000;

wxString StationText(const std::string& text) { return wxString::FromUTF8(text); }

}  // namespace

/// The progress of a check, in the window's own bar.
class WxStationWindow::EmbeddedProgress : public ProgressDialog {
 public:
  EmbeddedProgress(WxStationWindow& window, const ProgressDialogLayout& layout)
      : window_(window), layout_(layout) {}
  ~EmbeddedProgress() override { window_.gauge_->SetValue(0); }

  void Show() override { shown_ = true; }
  bool Visible() const override { return shown_; }
  int GetModalResult() const override { return window_.cancelled_ ? layout_.buttonResult : mrNone; }
  int BarMaximum() const override { return layout_.barMaximum; }
  void SetBarPosition(int position) override {
    const int range = std::max(1, layout_.barMaximum - layout_.barMinimum);
    const int clipped = std::clamp(position, layout_.barMinimum, layout_.barMaximum);
    window_.gauge_->SetValue((clipped - layout_.barMinimum) * GaugeRange / range);
  }
  WindowHandle Handle() const override { return 0; }

 private:
  WxStationWindow& window_;
  ProgressDialogLayout layout_;
  bool shown_ = false;
};

class WxStationWindow::EmbeddedUserInterface : public UserInterface {
 public:
  EmbeddedUserInterface(WxStationWindow& window, UserInterface& outer) : window_(window), outer_(outer) {}

  void ProcessMessages() override { outer_.ProcessMessages(); }
  int ShowMessage(const MessageBoxRequest& request) override {
    const int answer = outer_.ShowMessage(request);
    window_.KeepKeyboard();
    return answer;
  }
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout& layout) override {
    return std::make_unique<EmbeddedProgress>(window_, layout);
  }
  // The window takes what is typed during a check.
  TaskWindowList DisableTaskWindows(WindowHandle) override { return {}; }
  void EnableTaskWindows(const TaskWindowList&) override {}

 private:
  WxStationWindow& window_;
  UserInterface& outer_;
};

WxStationWindow::WxStationWindow(UserInterface& userInterface, const wxString& title)
    : frame_(new wxFrame(nullptr, wxID_ANY, title)),
      embedded_(std::make_unique<EmbeddedUserInterface>(*this, userInterface)) {
  frame_->SetName("station");
  Arrange();
  BindAll();
  frame_->SetClientSize(frame_->FromDIP(wxSize(960, 640)));
  frame_->SetMinClientSize(frame_->FromDIP(wxSize(320, 240)));
  frame_->Centre();
  frame_->Show();
  field_->SetFocus();
}

WxStationWindow::~WxStationWindow() {
  clock_.Stop();
  // Not later, as Destroy would: its handlers are this object's.
  frame_->DeletePendingEvents();
  delete frame_;
}

UserInterface& WxStationWindow::Embedded() { return *embedded_; }

void WxStationWindow::Arrange() {
  auto* const panel = new wxPanel(frame_);
  sheet_ = new SheetPanel(panel);
  said_ = new wxStaticText(panel, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxST_ELLIPSIZE_END);
  prompt_ = new wxStaticText(panel, wxID_ANY, "");
  field_ = new wxTextCtrl(panel, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
  field_->SetFont(wxFont(wxFontInfo(16)));
  gauge_ = new wxGauge(panel, wxID_ANY, GaugeRange);
  cancel_ = new wxButton(panel, wxID_ANY, "&Cancel check");
  cancel_->Disable();
  counters_ = new wxStaticText(panel, wxID_ANY, "");
  const int gap = frame_->FromDIP(8);
  auto* const field = new wxBoxSizer(wxHORIZONTAL);
  field->Add(prompt_, wxSizerFlags().CentreVertical().Border(wxRIGHT, gap));
  field->Add(field_, wxSizerFlags(1).CentreVertical());
  auto* const below = new wxBoxSizer(wxHORIZONTAL);
  below->Add(counters_, wxSizerFlags(2).CentreVertical());
  below->Add(gauge_, wxSizerFlags(1).CentreVertical().Border(wxRIGHT, gap));
  below->Add(cancel_, wxSizerFlags().CentreVertical());
  auto* const rows = new wxBoxSizer(wxVERTICAL);
  rows->Add(sheet_, wxSizerFlags(1).Expand());
  rows->Add(said_, wxSizerFlags().Expand().Border(wxALL, gap));
  rows->Add(field, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, gap));
  rows->Add(below, wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, gap));
  panel->SetSizer(rows);
  auto* const whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(panel, wxSizerFlags(1).Expand());
  frame_->SetSizer(whole);
}

void WxStationWindow::BindAll() {
  frame_->Bind(wxEVT_CHAR_HOOK, &WxStationWindow::OnKey, this);
  field_->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { OnEnter(); });
  field_->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
    // Another window of the program or of another one may have it: it comes back with this window.
    frame_->CallAfter([this] { KeepKeyboard(); });
    event.Skip();
  });
  frame_->Bind(wxEVT_ACTIVATE, [this](wxActivateEvent& event) {
    if (event.GetActive()) frame_->CallAfter([this] { KeepKeyboard(); });
    event.Skip();
  });
  cancel_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
    Cancel();
    KeepKeyboard();
  });
  frame_->Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent&) {
    Cancel();
    ended_ = true;
  });
}

void WxStationWindow::OnKey(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool control = event.GetModifiers() == wxMOD_CONTROL;
  if (key == WXK_ESCAPE || (control && key == 'D')) {
    ended_ = true;
  } else if (checking_ && control && key == 'C') {
    Cancel();
  } else if (key != WXK_TAB) {
    event.Skip();
  }
}

void WxStationWindow::OnEnter() {
  StationScan scan{field_->GetValue().utf8_string(), checking_, ""};
  field_->ChangeValue("");
  if (scan.text.empty()) return;
  if (!offered_.empty() && scan.text != offered_) scan.replaced = offered_;
  offered_.clear();
  // What was confirmed goes before what waits.
  const auto waiting = std::find_if(scans_.begin(), scans_.end(),
                                    [&scan](const StationScan& other) { return other.ahead && !scan.ahead; });
  scans_.insert(waiting, std::move(scan));
}

void WxStationWindow::KeepKeyboard() {
  if (frame_->IsActive() && wxWindow::FindFocus() != field_) field_->SetFocus();
}

void WxStationWindow::ShowSheet(const StationSheet& sheet) { sheet_->ShowSheet(sheet); }

void WxStationWindow::SetPrompt(const std::string& prompt) {
  const wxString label = StationText(prompt) + ":";
  if (prompt_->GetLabel() == label) return;
  prompt_->SetLabel(label);
  frame_->Layout();
  prompt_->GetParent()->Layout();
}

void WxStationWindow::SetCounters(const std::string& text) { counters_->SetLabelText(StationText(text)); }

void WxStationWindow::Say(const std::string& line) { said_->SetLabelText(StationText(line)); }

void WxStationWindow::Offer(const std::string& text) {
  if (!field_->IsEmpty()) return;  // somebody is typing already; the line said names the text
  field_->ChangeValue(StationText(text));
  field_->SelectAll();
  offered_ = text;
}

void WxStationWindow::SetChecking(bool checking) {
  if (checking) {
    // Nothing that was entered until now is about the device that is checked.
    for (StationScan& scan : scans_) scan.ahead = true;
  } else {
    embedded_->ProcessMessages();  // what was typed until now was typed during the check
    gauge_->SetValue(0);
  }
  checking_ = checking;
  cancelled_ = false;
  cancel_->Enable(checking);
}

std::optional<StationScan> WxStationWindow::Next(bool (*interrupted)()) {
  KeepKeyboard();
  clock_.Start(LookAroundMs);
  wxEventLoopBase& loop = *wxEventLoopBase::GetActive();
  // An offered text is confirmed before the next one that waits is offered.
  while (!ended_ && !interrupted() && (scans_.empty() || (scans_.front().ahead && !offered_.empty()))) {
    loop.Dispatch();
    while (loop.Pending()) loop.Dispatch();
    wxTheApp->ProcessPendingEvents();
    loop.ProcessIdle();
  }
  clock_.Stop();
  if (ended_ || interrupted() || scans_.empty()) return std::nullopt;
  StationScan scan = std::move(scans_.front());
  scans_.pop_front();
  return scan;
}

}  // namespace kxbench

StationWindow* kxCreateStationWindow(UserInterface* userInterface, const char* title) {
  try {
    return new kxbench::WxStationWindow(*userInterface, wxString::FromUTF8(title));
  } catch (const std::exception&) {
    return nullptr;
  }
}

void kxDestroyStationWindow(StationWindow* window) { delete window; }
