#pragma once

#include <wx/splitter.h>

namespace shorttest {

/// Two panes with a sash that moves live. A window that is made too small for them pushes the sash; when it
/// is large again, the sash is where the user, or the layout, had put it.
class PaneSplitter : public wxSplitterWindow {
 public:
  explicit PaneSplitter(wxWindow* parent);

  /// `firstExtent` pixels for the left pane.
  void SetPanesSideBySide(wxWindow* left, wxWindow* right, int firstExtent);

  /// `firstExtent` pixels for the upper pane.
  void SetPanesOnTopOfEachOther(wxWindow* upper, wxWindow* lower, int firstExtent);

 private:
  void LimitPanes();

  int wanted_ = 0;
};

}  // namespace shorttest
