#pragma once

#include <memory>
#include <optional>
#include <string>

#include "bench/program/host/CommonOptions.h"
#include "bench/program/system/DynamicLibrary.h"
#include "contracts/StationWindow.h"
#include "contracts/UserInterfaceModule.h"
#include "ui/terminal/SupervisedUserInterface.h"
#include "ui/terminal/TerminalUserInterface.h"

namespace kxbench {

/// The user interface from a library of its own, with windows.
class WindowUserInterface {
 public:
  /// Loads it from the program's folder. Throws Failure when it is missing or finds no display.
  WindowUserInterface();
  ~WindowUserInterface();
  WindowUserInterface(const WindowUserInterface&) = delete;
  WindowUserInterface& operator=(const WindowUserInterface&) = delete;

  UserInterface& Get() { return *userInterface_; }

  /// Shows a station's window, which lasts as long as the object. Throws Failure.
  StationWindow& OpenStationWindow(const std::string& title);

 private:
  DynamicLibrary library_;
  KxDestroyUserInterface destroy_ = nullptr;
  UserInterface* userInterface_ = nullptr;
  StationWindow* station_ = nullptr;
  KxDestroyStationWindow destroyStation_ = nullptr;
};

enum class Surface { Terminal, Silent, Windows };

/// Where --progress has the progress of a script or a learning shown.
Surface SurfaceOf(ProgressChoice choice);

/// How the program talks to its user: the user interface that extensions get, and lines on standard error.
class Interaction {
 public:
  /// Sets up the user interface and makes it the one that extensions get. `answer` is given to every question
  /// that offers it. Throws Failure when there are no windows.
  Interaction(Surface surface, std::optional<int> answer);
  ~Interaction();
  Interaction(const Interaction&) = delete;
  Interaction& operator=(const Interaction&) = delete;

  /// Shows "kxbench: `line`" on standard error.
  void Tell(const std::string& line);

  /// Clears the terminal of a progress bar, before something else is written there.
  void HideProgress();

  /// Takes an interrupt back that pressed the buttons of progress dialogs, for those that follow.
  void ForgetCancel() { supervised_->ForgetInterrupt(); }

  UserInterface& Get() { return *supervised_; }

  /// Shows a station's window, in which extensions show their progress from now on. REQUIRES:
  /// Surface::Windows. Throws Failure.
  StationWindow& OpenStationWindow(const std::string& title);

 private:
  void Supervise(UserInterface& inner, std::optional<int> answer);

  std::unique_ptr<Terminal> terminal_;
  std::unique_ptr<TerminalUserInterface> terminalUserInterface_;
  std::unique_ptr<WindowUserInterface> windows_;
  std::unique_ptr<SupervisedUserInterface> supervised_;
};

/// Tells the lines of a text that hold anything.
void TellLines(Interaction& interaction, const std::string& text);

}  // namespace kxbench
