#include "plugin/editor/StepButtons.h"

#ifdef __WXGTK__
#include <wx/dcclient.h>
#include <wx/settings.h>
#include <wx/timer.h>

#include <array>
#else
#include <wx/spinbutt.h>
#endif

#include <utility>

#include "plugin/editor/DesignScale.h"

namespace shorttest {

#ifdef __WXGTK__

namespace {

// The toolkit's own spin button is two large buttons side by side here, four times as wide as there is room
// for; it cannot be made smaller.
class ArrowButtons : public wxWindow {
 public:
  ArrowButtons(wxWindow& parent, StepHandler onStep) : onStep_(std::move(onStep)) {
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(&parent, wxID_ANY);
    const wxSize size(Scaled(*this, Width), Scaled(*this, MinimumHeight));
    SetMinSize(size);
    SetInitialSize(size);

    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { Paint(); });
    Bind(wxEVT_LEFT_DOWN, &ArrowButtons::Press, this);
    Bind(wxEVT_LEFT_DCLICK, &ArrowButtons::Press, this);  // two clicks are two steps
    Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { Release(); });
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { Release(); });
    repeat_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
      repeat_.StartOnce(RepeatMs);
      onStep_(direction_);
    });
  }

  bool AcceptsFocus() const override { return false; }

 private:
  static constexpr int Width = 17;
  static constexpr int MinimumHeight = 20;
  static constexpr int FirstRepeatMs = 400;
  static constexpr int RepeatMs = 60;

  void Press(wxMouseEvent& event) {
    direction_ = event.GetY() < GetClientSize().y / 2 ? 1 : -1;
    if (!HasCapture()) CaptureMouse();
    Refresh();
    repeat_.StartOnce(FirstRepeatMs);
    onStep_(direction_);
  }

  void Release() {
    repeat_.Stop();
    direction_ = 0;
    if (HasCapture()) ReleaseMouse();
    Refresh();
  }

  void Paint() {
    wxPaintDC dc(this);
    const wxSize size = GetClientSize();
    const int middle = size.y / 2;
    PaintButton(dc, wxRect(0, 0, size.x, middle), 1);
    PaintButton(dc, wxRect(0, middle, size.x, size.y - middle), -1);
  }

  void PaintButton(wxDC& dc, const wxRect& area, int direction) const {
    dc.SetPen(wxSystemSettings::GetColour(wxSYS_COLOUR_BTNSHADOW));
    dc.SetBrush(
        wxSystemSettings::GetColour(direction == direction_ ? wxSYS_COLOUR_BTNSHADOW : wxSYS_COLOUR_BTNFACE));
    dc.DrawRectangle(area);

    const wxColour arrow =
        wxSystemSettings::GetColour(IsEnabled() ? wxSYS_COLOUR_BTNTEXT : wxSYS_COLOUR_GRAYTEXT);
    dc.SetPen(arrow);
    dc.SetBrush(arrow);
    const wxPoint centre(area.x + area.width / 2, area.y + area.height / 2);
    const int half = area.width / 5;
    const int tip = direction * half / 2;
    const std::array<wxPoint, 3> triangle = {wxPoint(centre.x - half, centre.y + tip),
                                             wxPoint(centre.x + half, centre.y + tip),
                                             wxPoint(centre.x, centre.y - tip)};
    dc.DrawPolygon(static_cast<int>(triangle.size()), triangle.data());
  }

  StepHandler onStep_;
  wxTimer repeat_;
  int direction_ = 0;  // of the button held down
};

}  // namespace

wxWindow* MakeStepButtons(wxWindow& parent, StepHandler onStep) {
  return new ArrowButtons(parent, std::move(onStep));
}

#else

wxWindow* MakeStepButtons(wxWindow& parent, StepHandler onStep) {
  auto* const buttons = new wxSpinButton(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSP_VERTICAL);
  // As high as the edit beside it: by itself the control wants to be half as high again.
  buttons->SetMinSize(wxSize(Scaled(parent, 17), LineHeight(parent)));
  buttons->DisableFocusFromKeyboard();
  // The position is kept elsewhere: this one stays in the middle of its range, so that both arrows work.
  buttons->SetRange(-1, 1);
  buttons->SetValue(0);
  const auto step = [onStep = std::move(onStep)](int direction) {
    return [onStep, direction](wxSpinEvent& event) {
      event.Veto();
      onStep(direction);
    };
  };
  buttons->Bind(wxEVT_SPIN_UP, step(1));
  buttons->Bind(wxEVT_SPIN_DOWN, step(-1));
  return buttons;
}

#endif

}  // namespace shorttest
