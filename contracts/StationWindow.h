#pragma once

#include <optional>
#include <string>
#include <vector>

#include "contracts/UserInterface.h"
#include "contracts/UserInterfaceModule.h"

/// A station's window: verdict, faults, drawing, and a field that always has the keyboard. Made by the
/// library that makes the other windows. Texts are UTF-8; everything is called on the user-interface thread.

/// What the window says of the device that was checked last, or is.
struct StationSheet {
  enum class Colour { None, Good, Bad, Doubtful };
  std::string word;  ///< shown as large as there is room for: "PASS"
  Colour colour = Colour::None;
  std::string head;                ///< one line: "PASS  SN-1"
  std::vector<std::string> lines;  ///< the faults in words
  std::string drawing;             ///< SVG; empty: none
};

/// A text that was entered.
struct StationScan {
  std::string text;
  bool ahead = false;    ///< during a check
  std::string replaced;  ///< the offered text in whose place it was entered; empty: none
};

class StationWindow {
 public:
  virtual ~StationWindow() = default;

  /// The user interface for extensions while the window is there: the progress of a check is shown in the
  /// window, which stays enabled. "Cancel check", Ctrl-C and the close box press its cancel button.
  virtual UserInterface& Embedded() = 0;

  virtual void ShowSheet(const StationSheet& sheet) = 0;

  /// What stands beside the field.
  virtual void SetPrompt(const std::string& prompt) = 0;

  /// Counters of the shift, and a line on what was not accepted.
  virtual void SetCounters(const std::string& text) = 0;
  virtual void Say(const std::string& line) = 0;

  /// Puts a text into the field, selected: typing replaces it.
  virtual void Offer(const std::string& text) = 0;

  /// A check begins, or has ended.
  virtual void SetChecking(bool checking) = 0;

  /// Waits for what is entered next. None: Escape, Ctrl-D or the close box, or `interrupted`, which is asked
  /// several times a second. What was entered during a check comes first.
  virtual std::optional<StationScan> Next(bool (*interrupted)()) = 0;
};

extern "C" {

/// Shows a station's window. Null when it cannot be shown; never throws. The caller gives the result back to
/// kxDestroyStationWindow, before `userInterface` ends.
KX_UI_MODULE_API StationWindow* kxCreateStationWindow(UserInterface* userInterface, const char* title);
KX_UI_MODULE_API void kxDestroyStationWindow(StationWindow* window);

}  // extern "C"

using KxCreateStationWindow = StationWindow* (*)(UserInterface*, const char* title);
using KxDestroyStationWindow = void (*)(StationWindow*);
inline constexpr char KxCreateStationWindowName[] = "kxCreateStationWindow";
inline constexpr char KxDestroyStationWindowName[] = "kxDestroyStationWindow";
