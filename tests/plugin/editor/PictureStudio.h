#pragma once

#include <wx/window.h>

#include <filesystem>
#include <functional>
#include <string>

#include "framework/ScriptEnvironment.h"
#include "plugin/data/ShorttestData.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "tests/plugin/editor/ProjectVariables.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeDriver.h"

namespace shorttest::testkit {

/// Takes pictures of the dialogs while they work on the example harnesses. The dialogs are the real ones; the
/// tester answers at once.
class PictureStudio {
 public:
  /// Pictures go to `folder`, which is made.
  explicit PictureStudio(std::filesystem::path folder);
  ~PictureStudio();
  PictureStudio(const PictureStudio&) = delete;
  PictureStudio& operator=(const PictureStudio&) = delete;

  /// Makes the example harness the project, names its expectation file in the editor and plugs a good device
  /// into the tester.
  void UseExample(const std::string& harness);
  /// Names no file: a new expectation.
  void UseNewFile();
  /// The expectation of the example in use.
  TShortTestData Expectation() const;

  /// Shows the editor, runs `script` on it and closes it; nothing is written.
  void Edit(const std::function<void()>& script);
  /// Chooses a page of the editor that is shown: 0 "Text", 1 "Grafik".
  void Page(int page) const;

  /// Runs a measurement and takes a picture as soon as the bar of the window with this title has come to
  /// `percent`. Throws std::runtime_error when it never does.
  void PictureAt(int percent, const std::string& title, const std::string& name,
                 const std::function<void()>& measure);
  /// Takes a picture of the window with this title: FOLDER/SYSTEM-NAME.png.
  void Picture(const std::string& title, const std::string& name) const;

  FakeDriver& Driver() { return driver_; }
  TShortTestForm& Form() { return form_; }

 private:
  std::filesystem::path folder_;
  std::string expectationFile_;
  CallLog log_;
  FakeClock clock_;
  FakeDriver driver_{log_};
  kx::ScriptParser parser_;
  ProjectVariables variables_{parser_.GetEnvironment()};
  TShortTestForm form_{nullptr};
};

}  // namespace shorttest::testkit
