#include <wx/button.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>
#include <array>
#include <tuple>
#include <utility>

#include "plugin/editor/DataFileEdit.h"
#include "plugin/editor/DesignScale.h"
#include "plugin/editor/EditorLayout.h"
#include "plugin/editor/ExpectationDocument.h"
#include "plugin/editor/FittingColumn.h"

namespace shorttest {
namespace {

constexpr int ColumnWidth = 158;
constexpr int WarningWidth = 156;
constexpr int WarningHeight = 58;
constexpr int NumberWidth = 80;
constexpr int ChannelWidth = 48;
constexpr int SideGap = 8;   // between two controls side by side
constexpr int SmallGap = 2;  // between a label and its control

wxString Text(const char* utf8) { return wxString::FromUTF8(utf8); }

// Wider by a little than the toolkit measures it: some fonts are drawn wider than they are measured.
wxStaticText* MakeLabel(wxWindow& parent, const char* caption, long style = 0) {
  auto* const label =
      new wxStaticText(&parent, wxID_ANY, Text(caption), wxDefaultPosition, wxDefaultSize, style);
  label->SetMinSize(wxSize(label->GetBestSize().x + Scaled(parent, SmallGap), -1));
  return label;
}

// Builds the column from the top, one parameter after the other.
class Column {
 public:
  Column(FittingColumn& parent, EditorDialog& dialog) : parent_(parent), dialog_(dialog) {}

  // The label is made before its control: that is how screen readers find it.
  void AddLabel(const char* caption) {
    if (!parent_.Rows().IsEmpty()) AddGap();
    parent_.Rows().Add(MakeLabel(parent_, caption));
    parent_.Rows().AddSpacer(Scaled(parent_, SmallGap));
  }

  void Accelerate(const char* caption, wxWindow& target) { dialog_.AddAccelerator(Text(caption), target); }

  void Add(wxWindow* control) { parent_.Rows().Add(control, wxSizerFlags().Expand()); }
  void Add(wxSizer* row) { parent_.Rows().Add(row, wxSizerFlags().Expand()); }
  void AddGap() { parent_.AddGap(); }

  wxTextCtrl* MakeEdit(int width) {
    auto* const edit = new wxTextCtrl(&parent_, wxID_ANY);
    edit->SetMinSize(wxSize(Scaled(parent_, width), LineHeight(parent_)));
    return edit;
  }

  // An edit with arrow buttons.
  std::pair<wxTextCtrl*, UpDownEdit*> MakeNumber(int width, const NumberLimits& limits,
                                                 std::int32_t position) {
    wxTextCtrl* const edit = MakeEdit(width);
    return {edit, dialog_.AddUpDown(*edit, limits, position)};
  }

  static wxSizer* Pair(const UpDownEdit& number) {
    auto* const row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(&number.Edit());
    row->Add(&number.Buttons(), wxSizerFlags().Expand());
    return row;
  }

  // A label, an edit with arrow buttons, and the unit.
  std::pair<wxTextCtrl*, UpDownEdit*> AddNumber(const char* caption, const char* unit,
                                                const NumberLimits& limits, std::int32_t position) {
    AddLabel(caption);
    const auto number = MakeNumber(NumberWidth, limits, position);
    Accelerate(caption, *number.first);
    wxSizer* const row = Pair(*number.second);
    if (*unit != '\0') {
      row->Add(MakeLabel(parent_, unit),
               wxSizerFlags().CentreVertical().Border(wxLEFT, Scaled(parent_, Border)));
    }
    Add(row);
    return number;
  }

  wxWindow& Parent() const { return parent_; }

 private:
  static constexpr int Border = 6;

  FittingColumn& parent_;
  EditorDialog& dialog_;
};

void AddFile(Column& column, const EditorLayout& layout) {
  column.AddLabel("&Dateiname");
  wxTextCtrl* const name = column.MakeEdit(ColumnWidth);
  column.Accelerate("&Dateiname", *name);
  layout.dataFileEdit.Attach(*name);
  column.Add(name);

  EditorControls& controls = layout.controls;
  auto* const buttons = new wxBoxSizer(wxHORIZONTAL);
  const auto addButton = [&](const char* caption) {
    auto* const button = new wxButton(&column.Parent(), wxID_ANY, Text(caption), wxDefaultPosition,
                                      wxDefaultSize, wxBU_EXACTFIT);
    column.Accelerate(caption, *button);
    buttons->Add(button, wxSizerFlags(1));
    return button;
  };
  column.AddGap();
  controls.BT_Fileopen = addButton("Ö&ffnen");
  buttons->AddSpacer(Scaled(column.Parent(), SideGap));
  controls.BT_Filesave = addButton("&Speichern");
  column.Add(buttons);
}

void AddThresholds(Column& column, EditorControls& controls) {
  std::tie(controls.Ed_Schwelle, controls.UpDownSchwelle) =
      column.AddNumber("&Unterer Schwellenwert", "Ohm", {0, 32767}, 10);
  std::tie(controls.Ed_Schwelle2, controls.UpDownSchwelle2) =
      column.AddNumber("&Oberer Schwellenwert", "KOhm", {0, 1900}, 0);
}

void AddVoltageControl(Column& column, EditorControls& controls) {
  column.AddLabel("Spannungs&kontrolle");
  const std::array<wxString, 3> items = {"Ohne", "Mit", "Entladung"};
  controls.CB_U = new wxChoice(&column.Parent(), wxID_ANY, wxDefaultPosition, wxDefaultSize,
                               static_cast<int>(items.size()), items.data());
  controls.CB_U->SetSelection(2);
  column.Accelerate("Spannungs&kontrolle", *controls.CB_U);
  column.Add(controls.CB_U);

  auto* const warning =
      new wxStaticText(&column.Parent(), wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE);
  // Room for four lines, also where the font is taller than the design's.
  const int lines = 4 * warning->GetTextExtent("Warnung").y;
  warning->SetMinSize(
      wxSize(Scaled(*warning, WarningWidth), std::max(Scaled(*warning, WarningHeight), lines)));
  warning->SetForegroundColour(*wxRED);
  controls.LabelWarning = warning;
  column.Add(warning);
}

void AddOptions(Column& column, EditorControls& controls) {
  std::tie(controls.Ed_Timeout, controls.UpDownTimeout) =
      column.AddNumber("&Wartezeit für Entladung", "ms", TimeoutLimits, 5000);
  std::tie(controls.Ed_MaxError, controls.UpDownMaxError) =
      column.AddNumber("Maximale Anzahl &Fehler", "", MaxErrorLimits, 10);
}

void AddTerminatingResistor(Column& column, EditorControls& controls) {
  column.AddLabel("Abschluss&widerstand");
  auto* const table =
      new wxFlexGridSizer(2, Scaled(column.Parent(), SmallGap), Scaled(column.Parent(), SideGap));
  for (const char* const caption : {"Karte", "Relais"}) {
    table->Add(MakeLabel(column.Parent(), caption));
  }
  std::tie(controls.Ed_LastRelaisKarte, controls.UpDownLastRelaisKarte) =
      column.MakeNumber(ChannelWidth, {0, 10}, 0);
  std::tie(controls.Ed_LastRelais, controls.UpDownLastRelais) = column.MakeNumber(ChannelWidth, {0, 18}, 0);
  column.Accelerate("Abschluss&widerstand", *controls.Ed_LastRelaisKarte);
  table->Add(Column::Pair(*controls.UpDownLastRelaisKarte));
  table->Add(Column::Pair(*controls.UpDownLastRelais));
  column.Add(table);
}

void AddChannels(Column& column, EditorControls& controls) {
  column.AddLabel("&Kanäle");
  std::tie(controls.Ed_MinChannel, controls.UpDownMin) = column.MakeNumber(ChannelWidth, {1, 239}, 1);
  wxStaticText* const dash = MakeLabel(column.Parent(), "-", wxALIGN_CENTRE_HORIZONTAL);
  std::tie(controls.Ed_MaxChannel, controls.UpDownMax) = column.MakeNumber(ChannelWidth, {2, 240}, 48);
  column.Accelerate("&Kanäle", *controls.Ed_MinChannel);

  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(Column::Pair(*controls.UpDownMin));
  row->Add(dash, wxSizerFlags(1).CentreVertical());
  row->Add(Column::Pair(*controls.UpDownMax));
  column.Add(row);
}

}  // namespace

wxWindow* LayOutParameters(wxWindow& parent, const EditorLayout& layout) {
  auto* const window = new FittingColumn(parent);
  Column column(*window, layout.dialog);
  AddFile(column, layout);
  AddThresholds(column, layout.controls);
  AddVoltageControl(column, layout.controls);
  AddOptions(column, layout.controls);
  AddTerminatingResistor(column, layout.controls);
  AddChannels(column, layout.controls);
  window->Finish(Scaled(parent, ColumnWidth));
  return window;
}

void ShowWarning(wxStaticText& label, const wxString& text) {
  label.SetLabel(text);
  label.Wrap(label.GetMinSize().x);
}

}  // namespace shorttest
