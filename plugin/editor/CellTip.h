#pragma once

#include <wx/popupwin.h>
#include <wx/weakref.h>

class wxStaticText;

namespace shorttest {

/// A small window with a text beside an area of the screen, in the look of a tooltip. The toolkit's own
/// tooltips show under the mouse alone, and not before it has come to rest.
class CellTip {
 public:
  /// Shows the tip. `area`, in screen coordinates, is what it must not cover. The mouse cannot enter it
  /// there.
  CellTip(wxWindow& parent, const wxString& text, const wxRect& area);
  ~CellTip();
  CellTip(const CellTip&) = delete;
  CellTip& operator=(const CellTip&) = delete;

  /// Shows another text, beside another area.
  void Show(const wxString& text, const wxRect& area);

  wxString Text() const;

  /// Its place on the screen.
  wxRect Area() const;

 private:
  wxWeakRef<wxPopupWindow> window_;  // gone without us when the dialog goes first
  wxStaticText* label_;
};

}  // namespace shorttest
