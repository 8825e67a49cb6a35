#pragma once

#include <wx/dc.h>
#include <wx/timer.h>
#include <wx/window.h>

#include <functional>
#include <memory>

#include "plugin/data/ShorttestData.h"
#include "plugin/editor/CellTip.h"
#include "plugin/editor/GridPicture.h"

namespace shorttest {

/// Draw grid over the matrix: one cell a pair, without text and without scroll bars. Paints only what
/// changed. The arrow keys and the mouse move a focus rectangle. A tip tells which cell is under the mouse,
/// or was reached with the keyboard.
class GridView : public wxWindow {
 public:
  /// Paints a cell, or a run of cells, of that state on `rectangle`.
  using CellPainter = std::function<void(wxDC& dc, CellState state, const wxRect& rectangle, bool focused)>;

  /// What the tip of a cell says; empty for no tip.
  using CellDescriber = std::function<wxString(int column, int row)>;

  static constexpr int LineWidth = 1;  ///< between two cells, pixels

  GridView(wxWindow& parent, CellPainter painter, CellDescriber describer);

  /// Takes over what `data` holds now and has the cells painted anew that look different. Cheap when nothing
  /// changed.
  void ShowData(const TShortTestData& data);

  /// Number of columns, and of rows.
  int Count() const { return picture_.Count(); }

  /// Size of a cell without its line, pixels. Cells too small to be seen between lines are painted over them;
  /// a cell has at least one pixel, whatever its size says.
  void SetCellSize(const wxSize& size);
  wxSize CellSize() const { return cellSize_; }

  /// Area painted for a cell.
  wxRect CellRect(int column, int row) const;

  /// The cell that has the focus rectangle: column and row.
  wxPoint FocusedCell() const { return focused_; }

  /// The tip, as long as it shows; null otherwise.
  const CellTip* Tip() const { return tip_.get(); }

 private:
  void BindTip(wxWindow& page);
  void Paint();
  void PaintCells(wxDC& dc, const CellRange& range);
  void OnKey(wxKeyEvent& event);
  void MoveFocus(const wxPoint& cell);
  void MoveFocusWithKey(const wxPoint& cell);
  void ShowTip(const wxPoint& cell, const wxRect& area);
  void ShowTipUnderMouse(const wxPoint& position);
  void ShowTipOfFocus();
  void HideTip();
  void RefreshCells(const CellRange& range);
  wxSize Pitch() const;
  CellRange CellsIn(const wxRect& area) const;

  CellPainter painter_;
  CellDescriber describer_;
  std::unique_ptr<CellTip> tip_;
  wxTimer mouseCheck_;  // while the tip is that of the mouse
  GridPicture picture_;
  wxSize cellSize_{15, 15};
  wxPoint focused_{0, 0};
};

}  // namespace shorttest
