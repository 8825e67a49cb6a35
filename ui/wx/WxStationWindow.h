#pragma once

#include <wx/button.h>
#include <wx/frame.h>
#include <wx/gauge.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/timer.h>

#include <deque>
#include <memory>
#include <string>

#include "contracts/StationWindow.h"

namespace kxbench {

class SheetPanel;

/// The station's window. The field has the keyboard whatever is clicked.
class WxStationWindow : public StationWindow {
 public:
  /// `userInterface` outlives the object.
  WxStationWindow(UserInterface& userInterface, const wxString& title);
  ~WxStationWindow() override;
  WxStationWindow(const WxStationWindow&) = delete;
  WxStationWindow& operator=(const WxStationWindow&) = delete;

  UserInterface& Embedded() override;
  void ShowSheet(const StationSheet& sheet) override;
  void SetPrompt(const std::string& prompt) override;
  void SetCounters(const std::string& text) override;
  void Say(const std::string& line) override;
  void Offer(const std::string& text) override;
  void SetChecking(bool checking) override;
  std::optional<StationScan> Next(bool (*interrupted)()) override;

 private:
  class EmbeddedUserInterface;
  class EmbeddedProgress;

  void Arrange();
  void BindAll();
  void OnKey(wxKeyEvent& event);
  void OnEnter();
  void Cancel() { cancelled_ = checking_; }
  void KeepKeyboard();

  wxFrame* frame_;
  SheetPanel* sheet_ = nullptr;
  wxStaticText* prompt_ = nullptr;
  wxTextCtrl* field_ = nullptr;
  wxGauge* gauge_ = nullptr;
  wxButton* cancel_ = nullptr;
  wxStaticText* said_ = nullptr;
  wxStaticText* counters_ = nullptr;
  wxTimer clock_;  ///< wakes the wait, so that an interrupt is noticed
  std::unique_ptr<EmbeddedUserInterface> embedded_;
  std::deque<StationScan> scans_;
  std::string offered_;  ///< what was put into the field, until something is entered
  bool checking_ = false;
  bool cancelled_ = false;  ///< the check that runs
  bool ended_ = false;
};

}  // namespace kxbench
