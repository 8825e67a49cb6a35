#pragma once

#include <wx/dc.h>
#include <wx/window.h>

#include <functional>

#include "plugin/data/ShorttestData.h"
#include "plugin/editor/GridPicture.h"

namespace shorttest {

/// Draw grid over the matrix: one cell a pair, without text and without scroll bars. Paints only what
/// changed. The arrow keys and the mouse move a focus rectangle.
class GridView : public wxWindow {
 public:
  /// Paints the cell at (column, row), or a run of cells of the same state that begins there, on `rectangle`.
  using CellPainter =
      std::function<void(wxDC& dc, int column, int row, const wxRect& rectangle, bool focused)>;

  static constexpr int LineWidth = 1;  ///< between two cells, pixels

  GridView(wxWindow& parent, CellPainter painter);

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

 private:
  void Paint();
  void PaintCells(wxDC& dc, const CellRange& range);
  void OnKey(wxKeyEvent& event);
  void MoveFocus(const wxPoint& cell);
  void RefreshCells(const CellRange& range);
  wxSize Pitch() const;
  CellRange CellsIn(const wxRect& area) const;

  CellPainter painter_;
  GridPicture picture_;
  wxSize cellSize_{15, 15};
  wxPoint focused_{0, 0};
};

}  // namespace shorttest
