// The expected connections: as text, by name, and as a grid.

#include <wx/brush.h>
#include <wx/button.h>
#include <wx/dc.h>
#include <wx/notebook.h>
#include <wx/renderer.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "plugin/editor/CellDescription.h"
#include "plugin/editor/ConnectionTexts.h"
#include "plugin/editor/DelimitedText.h"
#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "plugin/editor/GridPicture.h"
#include "plugin/editor/GridView.h"
#include "plugin/editor/NamesView.h"
#include "plugin/editor/ProjectChannelNames.h"
#include "plugin/editor/UpDownEdit.h"

namespace {

constexpr int TextPage = 0;

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

void TShortTestForm::ShowConnections() {
  if (Data() != nullptr) ShowTexts(document_.ShowTexts());
}

// Texts that are right already are left alone, with their caret and scroll position.
void TShortTestForm::ShowTexts(const shorttest::ConnectionTexts& texts) {
  const shorttest::ConnectionTexts typed = TypedTexts();
  if (texts.expected != typed.expected) {
    Mm_SollNames->Clear();
    SetLines(*Mm_Soll, texts.expected);
  }
  if (texts.skipped != typed.skipped) SetLines(*Mm_SkipCon, texts.skipped);
  if (texts.blocked != typed.blocked) Ed_Skip->SetValue(wxString::FromUTF8(texts.blocked));
}

// Neither rebuilds the texts nor repaints the grid, which is on the other page.
void TShortTestForm::Ed_Exit() { document_.TakeTexts(TypedTexts()); }

// The wrong item is selected, with the keyboard in its text. Not again while the text stays as it is: what
// mends the error may be elsewhere.
void TShortTestForm::LeaveText() {
  try {
    Ed_Exit();
    reportedTexts_.reset();
  } catch (shorttest::WrongItem& error) {
    const shorttest::ConnectionTexts typed = TypedTexts();
    if (reportedTexts_ == typed) error.place.reset();
    reportedTexts_ = typed;
    throw;
  }
}

void TShortTestForm::SelectItem(const shorttest::ItemPlace& place) {
  using Text = shorttest::ItemPlace::Text;
  wxTextCtrl& text = place.text == Text::Blocked   ? *Ed_Skip
                     : place.text == Text::Skipped ? *Mm_SkipCon
                                                   : *Mm_Soll;
  const std::vector<std::string> lines = Lines(text);
  if (place.line >= lines.size()) return;
  const auto position = [&](std::size_t bytes) {
    const auto column = static_cast<long>(wxString::FromUTF8(lines[place.line].substr(0, bytes)).length());
    return place.text == Text::Blocked ? column : text.XYToPosition(column, static_cast<long>(place.line));
  };
  if (PageControl1->GetSelection() != TextPage) {
    PageControl1->ChangeSelection(TextPage);
    Window()->ForgetControl();  // the toolkit goes to the page's first text: that is not entering it
  }
  text.SetFocus();
  text.SetSelection(position(place.begin), position(place.end));
}

void TShortTestForm::Mm_SollChange() {
  if (Data() == nullptr) return;
  const auto name = [this](std::int32_t channel) { return channelNames_->Name(channel); };
  const wxString names = wxString::FromUTF8(
      shorttest::JoinLines(shorttest::NamesView(Lines(*Mm_Soll), Data()->von, Data()->bis, name)));
  if (Mm_SollNames->GetValue() != names) Mm_SollNames->ChangeValue(names);
}

void TShortTestForm::ConnectionGridDrawCell(wxDC& dc, CellState state, const wxRect& rectangle,
                                            bool focused) {
  const shorttest::GridColour colour =
      Data() != nullptr ? shorttest::ColourOfState(state) : shorttest::NoDataColour;
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(wxColour(colour.red, colour.green, colour.blue));
  dc.DrawRectangle(rectangle);
  if (focused) wxRendererNative::Get().DrawFocusRect(ConnectionGrid, dc, rectangle);
}

// The texts may have changed the data since the grid was shown: it may be of another size.
wxString TShortTestForm::DescribeCell(int column, int row) const {
  if (Data() == nullptr || std::max(column, row) > Data()->Highconnections()) return {};
  const auto name = [this](std::int32_t channel) { return channelNames_->Name(channel); };
  return wxString::FromUTF8(shorttest::CellDescription(*Data(), column, row, name));
}

void TShortTestForm::ShowGrid() {
  if (Data() != nullptr) ConnectionGrid->ShowData(*Data());
  FormResize();
}

// The controls stay, so that another file can be opened; texts without data would mean nothing.
void TShortTestForm::ShowNoData() {
  ShowTexts({});
  Mm_SollNames->ChangeValue("");
  ConnectionGrid->Refresh();
}

void TShortTestForm::FormResize() {
  const wxSize size = ConnectionGrid->GetClientSize();
  const int count = ConnectionGrid->Count();
  ConnectionGrid->SetCellSize({shorttest::GridCellSize(size.x, count, shorttest::GridView::LineWidth),
                               shorttest::GridCellSize(size.y, count, shorttest::GridView::LineWidth)});
}

// The texts stay: they are what the matrix is rebuilt from when the range is back to what they need.
void TShortTestForm::Ed_NChannelChange() {
  document_.ChangeRange(UpDownMin->Position(), UpDownMax->Position());
  ShowGrid();
}

void TShortTestForm::LeaveChannel(shorttest::UpDownEdit& field) {
  if (Data() == nullptr) return;
  const std::string typed = field.Text();
  try {
    document_.LeaveRange(typed);
  } catch (...) {
    ShowRange();
    throw;
  }
  ShowRange();
  if (shorttest::IntegerFromText(typed) != shorttest::IntegerFromText(field.Text())) {
    replacedChannel_ = "Kanal " + typed + " ist nicht möglich, es gilt " + field.Text() + ".";
  }
}

// Who goes on to another control has seen the number that counts instead of the one typed; who presses OK has
// not.
void TShortTestForm::ForgetReplacedChannel(const wxWindow* entered) {
  if (entered != BT_OK && entered != BT_Filesave && entered != BT_Learn) replacedChannel_.clear();
}

// A file's channels beyond the limits are shown as they are.
void TShortTestForm::ShowRange() {
  UpDownMin->Show(Data()->von, std::to_string(Data()->von));
  UpDownMax->Show(Data()->bis, std::to_string(Data()->bis));
}
