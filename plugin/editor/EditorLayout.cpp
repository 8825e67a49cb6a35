#include "plugin/editor/EditorLayout.h"

#include <wx/button.h>
#include <wx/display.h>
#include <wx/gauge.h>
#include <wx/panel.h>
#include <wx/sizer.h>

#include <cstddef>
#include <utility>
#include <vector>

#include "plugin/editor/DesignScale.h"
#include "plugin/editor/HelpButton.h"

namespace shorttest {
namespace {

constexpr int ClientWidth = 984;
constexpr int ClientHeight = 662;
constexpr int MinimumWidth = 300;
constexpr int MinimumHeight = 480;
constexpr int Border = 6;
constexpr int FrameWidth = 16;
constexpr int FrameHeight = 48;

// The buttons of the bottom bar. At their usual size they need more room than the smallest dialog has: there
// they are as wide as their captions.
class BarButtons {
 public:
  explicit BarButtons(std::vector<wxButton*> buttons) : buttons_(std::move(buttons)) {
    for (const wxButton* const button : buttons_) {
      const wxSize smallest = button->GetBestSize();
      wxSize usual = wxButton::GetDefaultSize(button->GetParent());
      usual.IncTo(smallest);
      sizes_.push_back({usual, wxSize(smallest.x, usual.y)});
      width_ += usual.x;
    }
    FitInto(width_);
  }

  void FitInto(int width) const {
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
      buttons_[i]->SetMinSize(width_ <= width ? sizes_[i].usual : sizes_[i].smallest);
    }
  }

 private:
  struct Sizes {
    wxSize usual;
    wxSize smallest;
  };

  std::vector<wxButton*> buttons_;
  std::vector<Sizes> sizes_;
  int width_ = 0;
};

// The design size, or what the screen has room for beside the window's frame.
void SetSizes(EditorDialog& dialog) {
  dialog.SetMinSize(wxSize(Scaled(dialog, MinimumWidth), Scaled(dialog, MinimumHeight)));
  wxSize client(Scaled(dialog, ClientWidth), Scaled(dialog, ClientHeight));
  client.DecTo(wxDisplay(&dialog).GetClientArea().GetSize() - wxSize(FrameWidth, FrameHeight));
  dialog.SetClientSize(client);
}

}  // namespace

wxWindow* LayOutBottomBar(wxWindow& parent, const EditorLayout& layout) {
  EditorControls& controls = layout.controls;
  auto* const bar = new wxPanel(&parent);
  controls.Panel2 = bar;
  controls.ProgressBar1 = new wxGauge(bar, wxID_ANY, 100);
  const auto makeButton = [bar](int id, const char* caption) {
    return new wxButton(bar, id, caption, wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT);
  };
  controls.BT_OK = makeButton(wxID_OK, "OK");
  controls.ButtonCancel = makeButton(wxID_CANCEL, "Abbruch");
  controls.BT_Learn = makeButton(wxID_ANY, "&Lernen");
  wxButton* const help = makeButton(wxID_HELP, "Hilfe");
  layout.helpButton.Attach(*help);
  controls.BT_OK->SetDefault();
  layout.dialog.AddAccelerator("&Lernen", *controls.BT_Learn);

  const int border = Scaled(parent, Border);
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(controls.ProgressBar1, wxSizerFlags(1).CentreVertical());
  const std::vector<wxButton*> buttons = {controls.BT_OK, controls.ButtonCancel, controls.BT_Learn, help};
  for (wxButton* const button : buttons) {
    row->Add(button, wxSizerFlags().CentreVertical().Border(wxLEFT, border));
  }
  auto* const frame = new wxBoxSizer(wxHORIZONTAL);
  frame->Add(row, wxSizerFlags(1).Border(wxALL, border));
  bar->SetSizer(frame);
  const int gaps = border * (static_cast<int>(buttons.size()) + 2);
  bar->Bind(wxEVT_SIZE, [fitting = BarButtons(buttons), gaps](wxSizeEvent& event) {
    fitting.FitInto(event.GetSize().x - gaps);
    event.Skip();
  });
  return bar;
}

void LayOutEditor(const EditorLayout& layout) {
  EditorDialog& dialog = layout.dialog;
  const int border = Scaled(dialog, Border);

  auto* const data = new wxPanel(&dialog);
  layout.controls.DatenPanel = data;
  auto* const columns = new wxBoxSizer(wxHORIZONTAL);
  columns->Add(LayOutParameters(*data, layout), wxSizerFlags().Expand());
  columns->Add(LayOutPages(*data, layout), wxSizerFlags(1).Expand().Border(wxLEFT, border));
  auto* const frame = new wxBoxSizer(wxHORIZONTAL);
  frame->Add(columns, wxSizerFlags(1).Expand().Border(wxLEFT | wxTOP | wxRIGHT, border));
  data->SetSizer(frame);

  auto* const rows = new wxBoxSizer(wxVERTICAL);
  rows->Add(data, wxSizerFlags(1).Expand());
  rows->Add(LayOutBottomBar(dialog, layout), wxSizerFlags().Expand());
  dialog.SetSizer(rows);
  SetSizes(dialog);
}

}  // namespace shorttest
