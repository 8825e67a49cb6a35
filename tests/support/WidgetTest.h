#pragma once

#include <wx/window.h>

#include <functional>
#include <string>

#include "contracts/UserInterface.h"

/// A user in front of real windows. The test program runs on a screen with a window manager; its main is that
/// of WidgetTestMain.cpp, which makes the user interface before the first test and fails a test whenever the
/// toolkit asserts.
namespace widget_test {

/// The user interface with real windows; one for the whole program.
UserInterface& Windows();

/// For main alone: the user interface that the functions below work with.
void SetWindows(UserInterface* userInterface);

/// Lets the windows work until `condition` holds; false when it does not within `patienceMs`.
bool WaitFor(const std::function<bool()>& condition, long patienceMs = 20000);

/// Lets the windows work off all that is pending.
void Settle();

/// Moves the mouse to a point of the screen, again when something takes it back, and lets the windows work. A
/// mouse that does not stay there fails the test.
void MoveMouseTo(const wxPoint& point);

/// Clicks the middle of the window with the mouse, as ClickAt.
void Click(wxWindow& window);

/// Clicks a point of the screen, again when the click gets lost. A click that no window of the program sees
/// fails the test.
void ClickAt(const wxPoint& point);

/// Turns the mouse wheel over the middle of the window, by one notch towards the user. A wheel that no window
/// of the program sees fails the test.
void TurnWheelOver(wxWindow& window);

/// Presses and releases a key, with modifiers (wxMOD_...), in whatever window of the program has the
/// keyboard. A key that no window sees fails the test.
void Press(int key, int modifiers = 0);

/// Presses the window manager's key for the close box until `closed` holds: a manager that has just started
/// may miss it. False when it never holds.
bool PressCloseBox(const std::function<bool()>& closed);

/// Selects the whole text of the control that has the keyboard.
void SelectAll();

/// Types a text; a line feed is the Enter key.
void Type(const std::string& text);

/// The dialog or frame with this title, null when there is none on the screen.
wxWindow* FindTopLevel(const std::string& title);

/// Runs `script` once the event loop of the modal dialog that the caller is about to show is running. The
/// script may let the windows work itself. A script that throws fails the test.
void OnceModal(std::function<void()> script);

}  // namespace widget_test
