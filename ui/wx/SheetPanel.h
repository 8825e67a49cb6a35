#pragma once

#include <wx/bitmap.h>
#include <wx/panel.h>

#include "contracts/StationWindow.h"

namespace kxbench {

/// Verdict, faults and drawing: shown, never with the keyboard.
class SheetPanel : public wxPanel {
 public:
  explicit SheetPanel(wxWindow* parent);

  void ShowSheet(const StationSheet& sheet);
  bool AcceptsFocus() const override { return false; }
  bool AcceptsFocusFromKeyboard() const override { return false; }

 private:
  void Paint();
  wxRect PaintWord(wxDC& dc, const wxRect& room) const;
  void PaintLines(wxDC& dc, const wxRect& room) const;
  void PaintDrawing(wxDC& dc, const wxRect& room);

  StationSheet sheet_;
  wxBitmap drawing_;
  wxSize drawnFor_;
};

}  // namespace kxbench
