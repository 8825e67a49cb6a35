#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "contracts/Export.h"

/// What the procedures ask of a user interface, and no more. The host chooses the implementation: real
/// windows (`ui/wx/`), a terminal (`ui/terminal/`), or a scripted one in tests. Texts are UTF-8.
///
/// Everything is called on the host's user-interface thread.

/// Modal results, with the numbers of the host's user-interface framework.
enum ModalResult : int {
  mrNone = 0,
  mrOk = 1,
  mrCancel = 2,
  mrAbort = 3,
  mrIgnore = 5,
};

/// A native window, or 0. Only the implementation that gave it out knows what it is.
using WindowHandle = std::uintptr_t;

/// The windows that DisableTaskWindows disabled.
using TaskWindowList = std::vector<WindowHandle>;

/// Position and size in pixels at 96 pixels per inch, relative to the client area.
struct ControlBounds {
  int left;
  int top;
  int width;
  int height;
};

/// What the progress dialog looks like; a terminal takes the texts and leaves the rest.
struct ProgressDialogLayout {
  std::string caption;
  int clientWidth;   ///< pixels at 96 per inch
  int clientHeight;  ///< pixels at 96 per inch
  std::string fontName;
  int fontHeight;  ///< pixels, negative: character height without the leading
  ControlBounds bar;
  int barMinimum;
  int barMaximum;
  ControlBounds button;
  std::string buttonCaption;
  int buttonResult;  ///< modal result that the button, or Escape, gives the dialog
};

/// A modeless dialog with a progress bar and one cancel button. Pressing the button, or Escape, sets the
/// modal result and leaves the dialog open; the close box hides it and leaves the modal result alone.
/// Destroying the object closes the dialog.
class ProgressDialog {
 public:
  virtual ~ProgressDialog() = default;

  /// Shows the dialog, modeless and centred on the screen. It stays responsive only through ProcessMessages.
  virtual void Show() = 0;

  /// False before Show and after the user closed the dialog.
  virtual bool Visible() const = 0;

  /// 0 until the button was pressed.
  virtual int GetModalResult() const = 0;

  /// Upper end of the bar's range.
  virtual int BarMaximum() const = 0;

  /// Moves the bar; positions outside its range are clipped to it.
  virtual void SetBarPosition(int position) = 0;

  /// The dialog's native window, for DisableTaskWindows; 0 where there are no windows.
  virtual WindowHandle Handle() const = 0;
};

enum class MessageKind { Information, Warning, Error };

/// A modal message box. `buttons` lists the modal results offered, in order; closing the box any other way
/// answers mrCancel where it is offered, else the last button.
struct MessageBoxRequest {
  std::string text;
  MessageKind kind = MessageKind::Information;
  std::vector<int> buttons = {mrOk};
  int helpContext = 0;
};

class UserInterface {
 public:
  virtual ~UserInterface() = default;

  /// Handles what the user did and what must be painted, then returns. May call back into the program.
  virtual void ProcessMessages() = 0;

  /// Shows a message box and returns the modal result of the button pressed.
  virtual int ShowMessage(const MessageBoxRequest& request) = 0;

  /// Makes a progress dialog, not yet shown. The caller owns it.
  virtual std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout& layout) = 0;

  /// Disables every enabled window of this thread but `except`, and returns those it disabled.
  virtual TaskWindowList DisableTaskWindows(WindowHandle except) = 0;

  /// Enables the windows that DisableTaskWindows returned; windows gone since are passed over.
  virtual void EnableTaskWindows(const TaskWindowList& windows) = 0;
};

/// The user interface that the host chose. Throws std::logic_error when the host chose none.
KX_API UserInterface& Application();

/// For the host alone, before extensions are loaded; the host keeps ownership. Null takes it back.
KX_API void SetApplication(UserInterface* userInterface);
