#pragma once

#include <wx/scrolwin.h>
#include <wx/sizer.h>

#include <vector>

namespace shorttest {

/// A column of controls that can be reached in a low window, too: the gaps between its rows shrink, and when
/// that is not enough, it scrolls. The scroll bar gets room of its own beside the controls. The mouse wheel
/// scrolls the column; it changes only the control that has the keyboard.
class FittingColumn : public wxScrolledWindow {
 public:
  explicit FittingColumn(wxWindow& parent);

  /// What the rows are added to.
  wxBoxSizer& Rows() { return *rows_; }

  /// A gap below the last row.
  void AddGap();

  /// To be called once all rows are there. The column becomes as wide as they need, `width` pixels at least.
  void Finish(int width);

 private:
  void FitToHeight();

  wxBoxSizer* rows_;
  std::vector<wxSizerItem*> gaps_;
  int width_ = 0;
};

}  // namespace shorttest
