#include "tests/support/WidgetTest.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/eventfilter.h>
#include <wx/stopwatch.h>
#include <wx/toplevel.h>
#include <wx/uiaction.h>
#include <wx/utils.h>

#include <cstdlib>
#include <exception>
#include <utility>

#include "tests/support/NativeKeyboard.h"
#include "tests/support/NativeWidgets.h"

namespace widget_test {
namespace {

UserInterface* windows = nullptr;

// Sees the left mouse button go down on a window of the program at a point of the screen, and come up again.
class ClickWatcher : public wxEventFilter {
 public:
  explicit ClickWatcher(const wxPoint& point) : point_(point) { wxEvtHandler::AddFilter(this); }
  ~ClickWatcher() override { wxEvtHandler::RemoveFilter(this); }
  ClickWatcher(const ClickWatcher&) = delete;
  ClickWatcher& operator=(const ClickWatcher&) = delete;

  int FilterEvent(wxEvent& event) override {
    const wxEventType type = event.GetEventType();
    if (type == wxEVT_LEFT_DOWN || type == wxEVT_LEFT_DCLICK) {
      const auto* const window = static_cast<wxWindow*>(event.GetEventObject());
      const wxPoint distance =
          window->ClientToScreen(static_cast<wxMouseEvent&>(event).GetPosition()) - point_;
      down_ = down_ || (std::abs(distance.x) <= Tolerance && std::abs(distance.y) <= Tolerance);
    }
    up_ = up_ || (down_ && type == wxEVT_LEFT_UP);
    return Event_Skip;
  }

  bool SawDown() const { return down_; }
  bool SawUp() const { return up_; }

 private:
  static constexpr int Tolerance = 2;

  wxPoint point_;
  bool down_ = false;
  bool up_ = false;
};

// Sees the mouse wheel turn over any window of the program.
class WheelWatcher : public wxEventFilter {
 public:
  WheelWatcher() { wxEvtHandler::AddFilter(this); }
  ~WheelWatcher() override { wxEvtHandler::RemoveFilter(this); }
  WheelWatcher(const WheelWatcher&) = delete;
  WheelWatcher& operator=(const WheelWatcher&) = delete;

  int FilterEvent(wxEvent& event) override {
    turned_ = turned_ || event.GetEventType() == wxEVT_MOUSEWHEEL;
    return Event_Skip;
  }

  bool HasTurned() const { return turned_; }

 private:
  bool turned_ = false;
};

// A window that appears may bring the mouse back to where it was before, and so may Windows when it hurries.
bool TryToMoveMouseTo(const wxPoint& point) {
  for (int tries = 0; tries < 3; ++tries) {
    wxUIActionSimulator().MouseMove(point);
    Settle();
    if (wxGetMousePosition() == point) return true;
  }
  return false;
}

wxPoint MiddleOf(const wxWindow& window) {
  const wxSize size = window.GetSize();
  return window.ClientToScreen(wxPoint(size.x / 2, size.y / 2));
}

// Has the simulator press keys, once a window has the keyboard and until the program has seen them: on a busy
// machine that takes its time.
template <typename Presses>
void PressSeen(const Presses& presses) {
  EXPECT_TRUE(WaitFor(HasKeyboard)) << "no window has the keyboard";
  const KeyWatcher watcher;
  wxUIActionSimulator keyboard;
  presses(keyboard);
  EXPECT_TRUE(WaitFor([&watcher] { return watcher.SawKey(); })) << "no window saw the key";
}

}  // namespace

UserInterface& Windows() { return *windows; }

void SetWindows(UserInterface* userInterface) { windows = userInterface; }

bool WaitFor(const std::function<bool()>& condition, long patienceMs) {
  const wxStopWatch watch;
  for (;;) {
    windows->ProcessMessages();
    if (condition()) return true;
    if (watch.Time() > patienceMs) return false;
    wxMilliSleep(1);
  }
}

void Settle() {
  // What was sent to the display server comes back through it: one round is not enough.
  for (int round = 0; round < 20; ++round) {
    if (round % 5 == 0) SynchroniseScreen();
    windows->ProcessMessages();
    wxMilliSleep(1);
  }
}

void MoveMouseTo(const wxPoint& point) {
  if (TryToMoveMouseTo(point)) return;
  const wxPoint pointer = wxGetMousePosition();
  ADD_FAILURE() << "the mouse is at " << pointer.x << ", " << pointer.y << ", not at " << point.x << ", "
                << point.y;
}

void Click(wxWindow& window) { ClickAt(MiddleOf(window)); }

void ClickAt(const wxPoint& point) {
  const ClickWatcher click(point);
  // On a busy machine clicks get lost.
  for (int tries = 0; tries < 3 && !click.SawDown(); ++tries) {
    if (!TryToMoveMouseTo(point)) continue;
    wxUIActionSimulator().MouseClick();
    Settle();
    WaitFor([&click] { return click.SawDown(); }, 1000);
  }
  const wxPoint pointer = wxGetMousePosition();
  EXPECT_TRUE(click.SawDown()) << "no window saw the click at " << point.x << ", " << point.y
                               << "; the mouse is at " << pointer.x << ", " << pointer.y;
  // Not where a box that the press has opened takes the mouse away.
  WaitFor([&click] { return click.SawUp(); }, 200);
  Settle();
}

void TurnWheelOver(wxWindow& window) {
  const WheelWatcher wheel;
  for (int tries = 0; tries < 3 && !wheel.HasTurned(); ++tries) {
    if (!TryToMoveMouseTo(MiddleOf(window))) continue;
    TurnWheel();
    WaitFor([&wheel] { return wheel.HasTurned(); }, 1000);
  }
  EXPECT_TRUE(wheel.HasTurned()) << "no window saw the mouse wheel";
  Settle();
}

void Press(int key, int modifiers) {
  PressSeen([key, modifiers](wxUIActionSimulator& keyboard) {
    if (!PressUnknownToSimulator(key)) keyboard.Char(key, modifiers);
  });
  Settle();
}

bool PressCloseBox(const std::function<bool()>& closed) {
  for (int tries = 0; tries < 10; ++tries) {
    wxUIActionSimulator().Char(WXK_F4, wxMOD_ALT);  // the window manager's: no window sees it
    if (WaitFor(closed, 2000)) return true;
  }
  return false;
}

void SelectAll() {
#ifdef _WIN32
  // Not every version of the system's own edit takes Ctrl-A.
  Press(WXK_HOME, wxMOD_CONTROL);
  Press(WXK_END, wxMOD_CONTROL | wxMOD_SHIFT);
#else
  Press('A', wxMOD_CONTROL);
#endif
}

void Type(const std::string& text) {
  for (std::size_t start = 0;;) {
    const std::size_t end = text.find('\n', start);
    for (const wxUniChar character : wxString::FromUTF8(text.substr(start, end - start)))
      PressSeen([character](wxUIActionSimulator& keyboard) { keyboard.Text(wxString(character)); });
    Settle();
    if (end == std::string::npos) return;
    Press(WXK_RETURN);
    start = end + 1;
  }
}

wxWindow* FindTopLevel(const std::string& title) {
  for (wxWindow* const window : wxTopLevelWindows) {
    if (window->IsShown() && window->GetLabel() == wxString::FromUTF8(title)) return window;
  }
  return nullptr;
}

void OnceModal(std::function<void()> script) {
  wxTheApp->CallAfter([script = std::move(script)] {
    try {
      script();
    } catch (const std::exception& error) {
      ADD_FAILURE() << "the script failed: " << error.what();
    }
  });
}

}  // namespace widget_test
