#include "bench/program/host/Interaction.h"

#include <algorithm>

#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"
#include "framework/kxcomponents.h"
#include "ui/terminal/Interrupt.h"
#include "ui/terminal/Printable.h"

namespace kxbench {

namespace {

template <typename Function>
Function Exported(const DynamicLibrary& library, const char* name) {
  const auto function = library.Find<Function>(name);
  if (function == nullptr)
    throw Failure(Utf8FromPath(library.File()) + " is no user interface: it does not export " + name);
  return function;
}

}  // namespace

WindowUserInterface::WindowUserInterface()
    : library_("the window user interface", ProgramFolder() / LibraryFileName("kxui_wx", LibraryPrefix::Lib),
               DynamicLibrary::Unload::Never) {
  const auto create = Exported<KxCreateUserInterface>(library_, KxCreateUserInterfaceName);
  const auto closeOnInterrupt = Exported<KxCloseOnInterrupt>(library_, KxCloseOnInterruptName);
  destroy_ = Exported<KxDestroyUserInterface>(library_, KxDestroyUserInterfaceName);
  userInterface_ = create();
  if (userInterface_ == nullptr) throw Failure("cannot show windows: no display can be reached");
  closeOnInterrupt(userInterface_, InterruptWatch::Interrupted);
}

WindowUserInterface::~WindowUserInterface() {
  if (station_ != nullptr) destroyStation_(station_);
  destroy_(userInterface_);
}

StationWindow& WindowUserInterface::OpenStationWindow(const std::string& title) {
  const auto create = Exported<KxCreateStationWindow>(library_, KxCreateStationWindowName);
  destroyStation_ = Exported<KxDestroyStationWindow>(library_, KxDestroyStationWindowName);
  station_ = create(userInterface_, title.c_str());
  if (station_ == nullptr) throw Failure("the station's window cannot be shown");
  return *station_;
}

Surface SurfaceOf(ProgressChoice choice) {
  switch (choice) {
    case ProgressChoice::Window:
      return Surface::Windows;
    case ProgressChoice::None:
      return Surface::Silent;
    case ProgressChoice::Auto:
    case ProgressChoice::Terminal:
      break;
  }
  return Surface::Terminal;
}

Interaction::Interaction(Surface surface, std::optional<int> answer) : terminal_(OpenTerminal()) {
  UserInterface* inner = nullptr;
  if (surface == Surface::Windows) {
    windows_ = std::make_unique<WindowUserInterface>();
    inner = &windows_->Get();
  } else {
    const ProgressStyle style = surface == Surface::Silent ? ProgressStyle::Silent : ProgressStyle::Shown;
    terminalUserInterface_ = std::make_unique<TerminalUserInterface>(*terminal_, style);
    inner = terminalUserInterface_.get();
  }
  Supervise(*inner, answer);
}

void Interaction::Supervise(UserInterface& inner, std::optional<int> answer) {
  supervised_ = std::make_unique<SupervisedUserInterface>(
      inner, Supervision{InterruptWatch::Interrupted, answer,
                         [this](const std::string& text) { Tell("warning: " + text); }});
  SetApplication(supervised_.get());
}

StationWindow& Interaction::OpenStationWindow(const std::string& title) {
  StationWindow& window = windows_->OpenStationWindow(title);
  Supervise(window.Embedded(), std::nullopt);
  return window;
}

Interaction::~Interaction() { SetApplication(nullptr); }

void Interaction::Tell(const std::string& line) {
  HideProgress();
  terminal_->Write("kxbench: " + Printable(line) + "\n");
  terminal_->Settle();
}

void Interaction::HideProgress() {
  if (terminalUserInterface_) terminalUserInterface_->HideProgress();
}

void TellLines(Interaction& interaction, const std::string& text) {
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    if (end > begin) interaction.Tell(text.substr(begin, end - begin));
    begin = end + 1;
  }
}

}  // namespace kxbench
