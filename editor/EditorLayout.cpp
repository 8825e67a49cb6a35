#include "editor/EditorLayout.h"

#include <wx/button.h>
#include <wx/display.h>
#include <wx/gauge.h>
#include <wx/panel.h>
#include <wx/sizer.h>

#include "editor/DesignScale.h"

namespace shorttest {
namespace {

constexpr int ClientWidth = 984;
constexpr int ClientHeight = 662;
constexpr int MinimumWidth = 300;
constexpr int MinimumHeight = 480;
constexpr int Border = 6;
constexpr int FrameWidth = 16;
constexpr int FrameHeight = 48;

// The design size, or what the screen has room for beside the window's frame.
void SetSizes(EditorDialog& dialog) {
  dialog.SetMinSize(wxSize(Scaled(dialog, MinimumWidth), Scaled(dialog, MinimumHeight)));
  wxSize client(Scaled(dialog, ClientWidth), Scaled(dialog, ClientHeight));
  client.DecTo(wxDisplay(&dialog).GetClientArea().GetSize() - wxSize(FrameWidth, FrameHeight));
  dialog.SetClientSize(client);
  dialog.CentreOnParent();
}

}  // namespace

wxWindow* LayOutBottomBar(wxWindow& parent, const EditorLayout& layout) {
  EditorControls& controls = layout.controls;
  auto* const bar = new wxPanel(&parent);
  controls.Panel2 = bar;
  controls.ProgressBar1 = new wxGauge(bar, wxID_ANY, 100);
  controls.BT_OK = new wxButton(bar, wxID_OK, "OK");
  controls.ButtonCancel = new wxButton(bar, wxID_CANCEL, "Abbruch");
  controls.BT_Learn = new wxButton(bar, wxID_ANY, "&Lernen");
  controls.KXHelpButton1 = new wxButton(bar, wxID_HELP, "Hilfe");
  controls.BT_OK->SetDefault();
  layout.dialog.AddAccelerator("&Lernen", *controls.BT_Learn);

  const int border = Scaled(parent, Border);
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(controls.ProgressBar1, wxSizerFlags(1).CentreVertical());
  for (wxButton* const button :
       {controls.BT_OK, controls.ButtonCancel, controls.BT_Learn, controls.KXHelpButton1}) {
    row->Add(button, wxSizerFlags().CentreVertical().Border(wxLEFT, border));
  }
  auto* const frame = new wxBoxSizer(wxHORIZONTAL);
  frame->Add(row, wxSizerFlags(1).Border(wxALL, border));
  bar->SetSizer(frame);
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
