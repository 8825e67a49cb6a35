// The expected connections: as text, by name, and as a grid.

#include <wx/brush.h>
#include <wx/dc.h>
#include <wx/renderer.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "plugin/editor/CellDescription.h"
#include "plugin/editor/ConnectionTexts.h"
#include "plugin/editor/DelimitedText.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "plugin/editor/GridPicture.h"
#include "plugin/editor/GridView.h"
#include "plugin/editor/NamesView.h"
#include "plugin/editor/ProjectChannelNames.h"
#include "plugin/editor/UpDownEdit.h"

namespace {

std::vector<std::string> Lines(const wxTextCtrl& memo) {
  return shorttest::SplitLines(memo.GetValue().utf8_string());
}

void SetLines(wxTextCtrl& memo, const std::vector<std::string>& lines) {
  memo.SetValue(wxString::FromUTF8(shorttest::JoinLines(lines)));
}

}  // namespace

shorttest::ConnectionTexts TShortTestForm::TypedTexts() const {
  return {.expected = Lines(*Mm_Soll),
          .skipped = Lines(*Mm_SkipCon),
          .blocked = Ed_Skip->GetValue().utf8_string()};
}

// Texts that are right already are left alone, with their caret and scroll position.
void TShortTestForm::ShowConnections() {
  const shorttest::ConnectionTexts texts = shorttest::TextsFromMatrix(*comp_);
  const shorttest::ConnectionTexts typed = TypedTexts();
  if (texts.expected != typed.expected) {
    Mm_SollNames->Clear();
    SetLines(*Mm_Soll, texts.expected);
  }
  if (texts.skipped != typed.skipped) SetLines(*Mm_SkipCon, texts.skipped);
  if (texts.blocked != typed.blocked) Ed_Skip->SetValue(wxString::FromUTF8(texts.blocked));
  textsRejected_ = false;
}

// Neither rebuilds the texts nor repaints the grid, which is on the other page.
void TShortTestForm::Ed_Exit() {
  if (!comp_) return;
  textsRejected_ = true;
  shorttest::MatrixFromTexts(TypedTexts(), *comp_);
  textsRejected_ = false;
}

void TShortTestForm::Mm_SollChange() {
  if (!comp_) return;
  const auto name = [this](std::int32_t channel) { return channelNames_->Name(channel); };
  const wxString names = wxString::FromUTF8(
      shorttest::JoinLines(shorttest::NamesView(Lines(*Mm_Soll), comp_->von, comp_->bis, name)));
  if (Mm_SollNames->GetValue() != names) Mm_SollNames->ChangeValue(names);
}

void TShortTestForm::ConnectionGridDrawCell(wxDC& dc, CellState state, const wxRect& rectangle,
                                            bool focused) {
  const shorttest::GridColour colour = comp_ ? shorttest::ColourOfState(state) : shorttest::NoDataColour;
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxColour(colour.red, colour.green, colour.blue));
  dc.DrawRectangle(rectangle);
  if (focused) wxRendererNative::Get().DrawFocusRect(ConnectionGrid, dc, rectangle);
}

// The texts may have changed the data since the grid was shown: it may be of another size.
wxString TShortTestForm::DescribeCell(int column, int row) const {
  if (!comp_ || std::max(column, row) > comp_->Highconnections()) return {};
  const auto name = [this](std::int32_t channel) { return channelNames_->Name(channel); };
  return wxString::FromUTF8(shorttest::CellDescription(*comp_, column, row, name));
}

void TShortTestForm::ShowGrid() {
  if (comp_) ConnectionGrid->ShowData(*comp_);
  FormResize();
}

void TShortTestForm::FormResize() {
  const wxSize size = ConnectionGrid->GetClientSize();
  const int count = ConnectionGrid->Count();
  ConnectionGrid->SetCellSize({shorttest::GridCellSize(size.x, count, shorttest::GridView::LineWidth),
                               shorttest::GridCellSize(size.y, count, shorttest::GridView::LineWidth)});
}

// The texts stay: they are what the matrix is rebuilt from when the range is back to what they need.
void TShortTestForm::Ed_NChannelChange() {
  if (!comp_ || showingRange_) return;
  comp_->SetVonBis(UpDownMin->Position(), UpDownMax->Position());
  ShowGrid();
}

// Both ends are set before anything is made of them: with only one of them set, the range could end before it
// begins, and changing the data to it would lose what is known of the channels in between. A file's channels
// beyond the limits are shown as they are.
void TShortTestForm::ShowRange() {
  showingRange_ = true;
  UpDownMin->SetPosition(comp_->von);
  UpDownMin->SetText(std::to_string(comp_->von));
  UpDownMax->SetPosition(comp_->bis);
  UpDownMax->SetText(std::to_string(comp_->bis));
  showingRange_ = false;
}
