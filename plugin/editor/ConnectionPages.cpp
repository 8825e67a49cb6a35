#include <wx/notebook.h>
#include <wx/panel.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbox.h>

#include "plugin/editor/DesignScale.h"
#include "plugin/editor/EditorLayout.h"
#include "plugin/editor/Memos.h"
#include "plugin/editor/PaneSplitter.h"

namespace shorttest {
namespace {

constexpr int TextPageBorder = 5;
constexpr int GridPageBorder = 3;
constexpr int SkipHeight = 45;
constexpr int SkipConHeight = 105;
constexpr int SollWidth = 385;
constexpr int GroupBorder = 3;

wxString PageText(const char* utf8) { return wxString::FromUTF8(utf8); }

wxStaticBoxSizer* MakeGroup(wxWindow* parent, const char* caption) {
  return new wxStaticBoxSizer(wxVERTICAL, parent, PageText(caption));
}

// A group that fills a pane of a splitter.
wxPanel* MakePane(wxWindow* parent) { return new wxPanel(parent); }

wxSizer* LayOutBlockedPoints(wxWindow* parent, const EditorLayout& layout) {
  constexpr const char* Caption = "&Gesperrte Messpunkte";
  wxStaticBoxSizer* const group = MakeGroup(parent, Caption);
  auto* const edit = new wxTextCtrl(group->GetStaticBox(), wxID_ANY);
  edit->SetMinSize(wxSize(1, LineHeight(*parent)));
  group->Add(edit, wxSizerFlags().Expand().Border(wxALL, Scaled(*parent, GroupBorder)));
  group->SetMinSize(-1, Scaled(*parent, SkipHeight));
  layout.controls.Ed_Skip = edit;
  layout.dialog.AddAccelerator(PageText(Caption), *edit);
  return group;
}

wxWindow* LayOutSkippedConnections(wxWindow* parent, const EditorLayout& layout) {
  wxPanel* const pane = MakePane(parent);
  wxStaticBoxSizer* const group = MakeGroup(pane, "Übersprungene Verbindungen");
  layout.controls.Mm_SkipCon = MakeMemoWithoutHorizontalBar(group->GetStaticBox());
  group->Add(layout.controls.Mm_SkipCon,
             wxSizerFlags(1).Expand().Border(wxALL, Scaled(*parent, GroupBorder)));
  pane->SetSizer(group);
  return pane;
}

wxWindow* LayOutExpectedConnections(wxWindow* parent, const EditorLayout& layout) {
  constexpr const char* Caption = "Soll-&Verbindungen";
  wxPanel* const pane = MakePane(parent);
  wxStaticBoxSizer* const group = MakeGroup(pane, Caption);
  auto* const splitter = new PaneSplitter(group->GetStaticBox());
  layout.controls.Mm_Soll = MakeMemo(splitter, 0);
  layout.controls.Mm_SollNames = MakeMemo(splitter, wxTE_READONLY | wxBORDER_NONE);
  ScrollTogether(*layout.controls.Mm_Soll, *layout.controls.Mm_SollNames);
  splitter->SetPanesSideBySide(layout.controls.Mm_Soll, layout.controls.Mm_SollNames,
                               Scaled(*parent, SollWidth));
  group->Add(splitter, wxSizerFlags(1).Expand().Border(wxALL, Scaled(*parent, GroupBorder)));
  pane->SetSizer(group);
  layout.dialog.AddAccelerator(PageText(Caption), *layout.controls.Mm_Soll);
  return pane;
}

wxWindow* LayOutTextPage(wxWindow* parent, const EditorLayout& layout) {
  auto* const page = new wxPanel(parent);
  page->SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW));

  // Made in the order in which Tab visits them: from top to bottom.
  wxSizer* const blocked = LayOutBlockedPoints(page, layout);
  auto* const splitter = new PaneSplitter(page);
  wxWindow* const skipped = LayOutSkippedConnections(splitter, layout);
  wxWindow* const expected = LayOutExpectedConnections(splitter, layout);
  splitter->SetPanesOnTopOfEachOther(skipped, expected, Scaled(*parent, SkipConHeight));

  const int border = Scaled(*parent, TextPageBorder);
  auto* const rows = new wxBoxSizer(wxVERTICAL);
  rows->Add(blocked, wxSizerFlags().Expand().Border(wxALL, border));
  rows->Add(splitter, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, border));
  page->SetSizer(rows);
  return page;
}

wxWindow* LayOutGridPage(wxWindow* parent, const EditorLayout& layout) {
  auto* const page = new wxPanel(parent);
  layout.controls.ConnectionGrid = new GridView(*page, layout.cellPainter, layout.cellDescriber);
  auto* const sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(layout.controls.ConnectionGrid,
             wxSizerFlags(1).Expand().Border(wxALL, Scaled(*parent, GridPageBorder)));
  page->SetSizer(sizer);
  return page;
}

}  // namespace

wxWindow* LayOutPages(wxWindow& parent, const EditorLayout& layout) {
  auto* const pages = new wxNotebook(&parent, wxID_ANY);
  layout.controls.PageControl1 = pages;
  pages->AddPage(LayOutTextPage(pages, layout), "Text");
  pages->AddPage(LayOutGridPage(pages, layout), "Grafik");
  pages->SetMinSize(wxSize(1, 1));  // the dialog may be made narrower than the design's width
  return pages;
}

}  // namespace shorttest
