#pragma once

#include <gtest/gtest.h>
#include <wx/window.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "framework/ScriptEnvironment.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "plugin/editor/UpDownEdit.h"
#include "tests/plugin/editor/ProjectVariables.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeDriver.h"

namespace shorttest::testkit {

/// Real windows, but message boxes are read and answered on the spot.
class ReadMessages : public UserInterface {
 public:
  void ProcessMessages() override;
  int ShowMessage(const MessageBoxRequest& request) override;
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout& layout) override;
  TaskWindowList DisableTaskWindows(WindowHandle except) override;
  void EnableTaskWindows(const TaskWindowList& windows) override;

  std::vector<std::string> errors;
  std::vector<MessageBoxRequest> others;
  int answer = mrOk;           ///< to every message that is no error
  bool errorsInBoxes = false;  ///< shows errors in real boxes, and closes them
};

/// An expectation over channels 1 to `last` with every pair open.
TShortTestData AllOpen(std::int32_t last);

/// A user at the editor dialog, on a screen, with a project of its own and a fake tester.
class EditorTest : public ::testing::Test {
 protected:
  EditorTest();
  ~EditorTest() override;

  /// Shows the dialog, lets the user do what the script says, and closes it with "Abbruch" if it is still
  /// open then. Returns the modal result.
  int Show(const std::function<void()>& script);

  /// An absolute file name (UTF-8) in the project's folder.
  std::string ProjectFile(const std::string& name) const;
  /// Writes a file into the project's folder and returns its name.
  std::string WriteFile(const std::string& name, const std::string& bytes) const;
  /// Names an existing file in the data-file edit, as a script string literal.
  void UseDataFile(const std::string& fileName);
  /// Writes an expectation file and names it in the data-file edit.
  std::string UseExpectation(const TShortTestData& data);

  const TShortTestData& Data() const { return *form.Data(); }
  /// State of a pair of channels, or of one channel.
  CellState Pair(int a, int b) const { return Data().Get(a - Data().von, b - Data().von); }
  CellState Channel(int channel) const { return Pair(channel, channel); }

  // What the user does.
  static void Replace(wxTextCtrl& control,
                      const std::string& text);  ///< clicks into it and types a new content
  static void Enter(wxWindow& control);          ///< clicks into it
  void ChoosePage(int page);
  /// A button that a key pressed acts a moment later.
  void WaitForClose();
  static std::string TextOf(const wxTextCtrl* control);

  /// The errors shown so far; a test that does not ask for them has none.
  std::vector<std::string> TakeErrors();

  CallLog log;
  FakeClock clock;
  FakeDriver driver{log};
  kx::ScriptParser parser;
  ProjectVariables variables{parser.GetEnvironment()};
  ReadMessages messages;
  int breInits = 0;
  std::filesystem::path folder;

 private:
  struct HostGlobals {
    HostGlobals(UserInterface& userInterface, IVarAccess& variables);
    ~HostGlobals();
  } globals_{messages, variables};

 protected:
  TShortTestForm form{[this] { ++breInits; }};
};

}  // namespace shorttest::testkit
