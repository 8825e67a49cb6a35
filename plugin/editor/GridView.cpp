#include "plugin/editor/GridView.h"

#include <wx/dcclient.h>
#include <wx/toplevel.h>
#include <wx/utils.h>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace shorttest {
namespace {

// Beyond that many the parts cost more than the whole.
constexpr std::size_t MostPartialRefreshes = 64;

// Smaller cells, of a pixel or two, would be hidden by their lines more than they are told apart.
constexpr int SmallestCellWithLines = 3;

// How often the tip looks whether the mouse is still there.
constexpr int MouseCheckMs = 200;

bool HasLines(int cellSize) { return cellSize >= SmallestCellWithLines; }

}  // namespace

GridView::GridView(wxWindow& parent, CellPainter painter, CellDescriber describer)
    : painter_(std::move(painter)), describer_(std::move(describer)) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS);
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { Paint(); });
  Bind(wxEVT_KEY_DOWN, &GridView::OnKey, this);
  Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
    SetFocus();
    const wxSize pitch = Pitch();
    MoveFocus(wxPoint(event.GetX() / pitch.x, event.GetY() / pitch.y));
  });
  const auto refreshFocus = [this](wxFocusEvent& event) {
    RefreshCells({focused_.x, focused_.y, focused_.x, focused_.y});
    event.Skip();
  };
  Bind(wxEVT_SET_FOCUS, refreshFocus);
  Bind(wxEVT_KILL_FOCUS, refreshFocus);
  BindTip(parent);
}

void GridView::BindTip(wxWindow& page) {
  Bind(wxEVT_MOTION, [this](wxMouseEvent& event) {
    ShowTipUnderMouse(event.GetPosition());
    event.Skip();
  });
  const auto hide = [this](wxEvent& event) {
    HideTip();
    event.Skip();
  };
  Bind(wxEVT_LEAVE_WINDOW, [this](wxMouseEvent& event) {
    if (mouseCheck_.IsRunning()) HideTip();
    event.Skip();
  });
  Bind(wxEVT_KILL_FOCUS, hide);
  page.Bind(wxEVT_SHOW, hide);
  wxGetTopLevelParent(this)->Bind(wxEVT_SHOW, hide);
  wxGetTopLevelParent(this)->Bind(wxEVT_ACTIVATE, hide);
  // Not every window hears of it, or at once, when a mouse in a hurry leaves it: seen with Wine.
  mouseCheck_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
    if (!GetScreenRect().Contains(wxGetMousePosition())) HideTip();
  });
  // Navigation keys bring the keyboard here; the mouse has a cell of its own.
  Bind(wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
    if (!wxGetMouseState().LeftIsDown()) ShowTipOfFocus();
    event.Skip();
  });
}

void GridView::ShowData(const TShortTestData& data) {
  const int count = Count();
  const std::vector<CellRange> changed = picture_.Update(data);
  if (count != Count()) MoveFocus(focused_);
  if (count != Count() || !changed.empty()) HideTip();  // what it says may be wrong now
  if (changed.size() > MostPartialRefreshes) {
    Refresh();
  } else {
    for (const CellRange& range : changed) RefreshCells(range);
  }
}

void GridView::SetCellSize(const wxSize& size) {
  if (size == cellSize_) return;
  cellSize_ = size;
  Refresh();
}

wxRect GridView::CellRect(int column, int row) const {
  const wxSize pitch = Pitch();
  const wxSize cell(HasLines(cellSize_.x) ? cellSize_.x : pitch.x,
                    HasLines(cellSize_.y) ? cellSize_.y : pitch.y);
  return {wxPoint(column * pitch.x, row * pitch.y), cell};
}

wxSize GridView::Pitch() const { return {cellSize_.x + LineWidth, cellSize_.y + LineWidth}; }

// The cells that the area touches; right is left of left when there are none.
CellRange GridView::CellsIn(const wxRect& area) const {
  const wxSize pitch = Pitch();
  const int last = Count() - 1;
  return {std::max(0, area.GetLeft() / pitch.x), std::max(0, area.GetTop() / pitch.y),
          std::min(last, area.GetRight() / pitch.x), std::min(last, area.GetBottom() / pitch.y)};
}

void GridView::RefreshCells(const CellRange& range) {
  RefreshRect(CellRect(range.left, range.top).Union(CellRect(range.right, range.bottom)), false);
}

void GridView::Paint() {
  wxPaintDC dc(this);
  for (wxRegionIterator part(GetUpdateRegion()); part; ++part) {
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(GetBackgroundColour());
    dc.DrawRectangle(part.GetRect());
    const CellRange cells = CellsIn(part.GetRect());
    if (cells.left <= cells.right && cells.top <= cells.bottom) PaintCells(dc, cells);
  }
}

// Cells of the same state that stand in a row are painted in one go, and the lines between them on top: one
// by one, 240 x 240 cells take thirty times as long.
void GridView::PaintCells(wxDC& dc, const CellRange& range) {
  for (int row = range.top; row <= range.bottom; ++row) {
    for (int column = range.left; column <= range.right;) {
      const int first = column;
      const CellState state = picture_.State(first, row);
      while (column <= range.right && picture_.State(column, row) == state) ++column;
      painter_(dc, state, CellRect(first, row).Union(CellRect(column - 1, row)), false);
    }
  }

  const wxRect area = CellRect(range.left, range.top).Union(CellRect(range.right, range.bottom));
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.SetBrush(GetBackgroundColour());
  for (int column = range.left; HasLines(cellSize_.x) && column <= range.right; ++column) {
    dc.DrawRectangle(CellRect(column, 0).GetRight() + 1, area.y, LineWidth, area.height);
  }

  const bool focusInside = range.left <= focused_.x && focused_.x <= range.right && range.top <= focused_.y &&
                           focused_.y <= range.bottom;
  if (HasFocus() && focusInside) {
    painter_(dc, picture_.State(focused_.x, focused_.y), CellRect(focused_.x, focused_.y), true);
  }
}

void GridView::OnKey(wxKeyEvent& event) {
  switch (event.GetKeyCode()) {
    case WXK_LEFT:
      return MoveFocusWithKey(focused_ + wxPoint(-1, 0));
    case WXK_RIGHT:
      return MoveFocusWithKey(focused_ + wxPoint(1, 0));
    case WXK_UP:
      return MoveFocusWithKey(focused_ + wxPoint(0, -1));
    case WXK_DOWN:
      return MoveFocusWithKey(focused_ + wxPoint(0, 1));
    case WXK_HOME:
      return MoveFocusWithKey({0, 0});
    case WXK_END:
      return MoveFocusWithKey({Count() - 1, Count() - 1});
    case WXK_TAB:
      HandleAsNavigationKey(event);
      return;
    default:
      event.Skip();
  }
}

void GridView::MoveFocus(const wxPoint& cell) {
  const int last = std::max(0, Count() - 1);
  const wxPoint target(std::clamp(cell.x, 0, last), std::clamp(cell.y, 0, last));
  if (target == focused_) return;
  RefreshCells({focused_.x, focused_.y, focused_.x, focused_.y});
  focused_ = target;
  RefreshCells({focused_.x, focused_.y, focused_.x, focused_.y});
}

void GridView::MoveFocusWithKey(const wxPoint& cell) {
  MoveFocus(cell);
  ShowTipOfFocus();
}

void GridView::ShowTip(const wxPoint& cell, const wxRect& area) {
  const wxString text = describer_(cell.x, cell.y);
  if (text.empty() || !IsShownOnScreen()) {
    HideTip();
  } else if (tip_) {
    tip_->Show(text, area);
  } else {
    tip_ = std::make_unique<CellTip>(*this, text, area);
  }
}

void GridView::HideTip() {
  tip_.reset();
  mouseCheck_.Stop();
}

void GridView::ShowTipUnderMouse(const wxPoint& position) {
  const wxSize pitch = Pitch();
  const wxPoint cell(position.x / pitch.x, position.y / pitch.y);
  if (position.x < 0 || position.y < 0 || cell.x >= Count() || cell.y >= Count()) return HideTip();
  const wxSize pointer = FromDIP(wxSize(16, 16));
  ShowTip(cell, wxRect(ClientToScreen(position), pointer));
  if (tip_) mouseCheck_.Start(MouseCheckMs);
}

void GridView::ShowTipOfFocus() {
  mouseCheck_.Stop();
  if (focused_.x >= Count() || focused_.y >= Count()) return HideTip();
  // Of very many cells in a small window some lie outside of it.
  wxRect area = CellRect(focused_.x, focused_.y);
  const wxSize size = GetClientSize();
  area.x = std::min(area.x, size.x);
  area.y = std::min(area.y, size.y);
  ShowTip(focused_, wxRect(ClientToScreen(area.GetPosition()), area.GetSize()));
}

}  // namespace shorttest
