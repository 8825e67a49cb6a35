#pragma once

#include <wx/filedlg.h>
#include <wx/modalhook.h>

#include <string>
#include <vector>

namespace shorttest::testkit {

/// Sits in front of the file dialogs that the editor opens: looks at each, types the next name and presses
/// Enter, or presses Escape where the name is empty or there is none left. A dialog that does not take its
/// name fails the test and is closed.
class FileDialogUser : public wxModalDialogHook {
 public:
  explicit FileDialogUser(std::vector<std::string> names) : names_(std::move(names)) { Register(); }

  /// Answers the question that follows the next name, and that the dialog itself asks, with Escape.
  void SaysNo() { saysNo_ = true; }
  /// The same with Enter.
  void SaysYes() { saysYes_ = true; }

  /// The name for the next dialog after those given before.
  void Next(const std::string& name) { names_.push_back(name); }

  int dialogs = 0;  ///< that were opened
  // What the last one was opened with.
  long style = 0;
  std::string directory;
  std::string fileName;
  std::string wildcard;
  /// What stood in the entry of each at first; empty where none has the keyboard.
  std::vector<std::string> shownNames;

 protected:
  int Enter(wxDialog* dialog) override;

 private:
  void Look(const wxFileDialog& dialog);
  void Use(wxFileDialog& dialog, const std::string& name) const;

  std::vector<std::string> names_;
  [[maybe_unused]] bool entered_ = false;
  [[maybe_unused]] bool saysNo_ = false;
  [[maybe_unused]] bool saysYes_ = false;
};

}  // namespace shorttest::testkit
