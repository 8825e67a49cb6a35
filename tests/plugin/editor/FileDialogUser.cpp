#include "tests/plugin/editor/FileDialogUser.h"

#include <gtest/gtest.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <utility>

#ifdef _WIN32
#include <windows.h>
#endif

#include "plugin/editor/EditorDialog.h"
#include "plugin/editor/GUI_ShortTest.h"
#include "tests/support/NativeKeyboard.h"
#include "tests/support/WidgetTest.h"

namespace shorttest::testkit {
namespace {

using widget_test::Press;
using widget_test::Settle;
using widget_test::TextOfFocusedEntry;
using widget_test::Type;
using widget_test::WaitFor;

constexpr int Tries = 10;
constexpr long PatienceMs = 1000;

#ifdef __WXGTK__

class ShownDialog {
 public:
  explicit ShownDialog(wxFileDialog& dialog) : dialog_(dialog) {}
  bool HasClosed() const { return !dialog_.IsModal(); }
  void Close() { dialog_.EndModal(wxID_CANCEL); }

 private:
  wxFileDialog& dialog_;
};

#else

// The toolkit knows no state of the system's own dialog, which has the keyboard when this is made.
class ShownDialog {
 public:
  explicit ShownDialog(wxFileDialog&) {}
  bool HasClosed() const { return IsWindowVisible(window_) == FALSE; }
  void Close() { PostMessageW(window_, WM_CLOSE, 0, 0); }

 private:
  HWND window_ = GetActiveWindow();
};

#endif

// Types until the name stands in the entry: keys get lost on a busy machine, and the dialog completes what is
// typed with the names of files.
bool TypeName(const std::string& name) {
  for (int tries = 0; tries < Tries; ++tries) {
    widget_test::SelectAll();
    Type(name);
    Press(WXK_DELETE);  // what the dialog has added after the caret
    if (WaitFor([&name] { return TextOfFocusedEntry() == name; }, PatienceMs)) return true;
  }
  return false;
}

// The first Enter may only close the list of names that the dialog proposes.
bool Confirm(const ShownDialog& dialog) {
  for (int tries = 0; tries < Tries && !dialog.HasClosed(); ++tries) {
    Press(WXK_RETURN);
    WaitFor([&dialog] { return dialog.HasClosed(); }, PatienceMs);
  }
  return dialog.HasClosed();
}

// Escape may first close a list of names or a question of the dialog's own.
void Cancel(ShownDialog& dialog) {
  for (int tries = 0; tries < Tries && !dialog.HasClosed(); ++tries) {
    Press(WXK_ESCAPE);
    WaitFor([&dialog] { return dialog.HasClosed(); }, PatienceMs);
  }
  if (!dialog.HasClosed()) dialog.Close();
}

// Presses a key once something else than the entry with the name has the keyboard. The dialog's own question
// keeps whoever pressed Enter waiting until it is answered; only a timer comes through.
class AnswerToTheQuestion : public wxTimer {
 public:
  AnswerToTheQuestion(const std::string& name, int key) : name_(name), key_(key) { Start(IntervalMs); }

  bool Given() const { return given_; }

 private:
  static constexpr int IntervalMs = 300;

  void Notify() override {
    if (given_ || !widget_test::HasKeyboard() || TextOfFocusedEntry() == name_) return;
    given_ = true;
    wxUIActionSimulator().Char(key_);
  }

  std::string name_;
  int key_;
  bool given_ = false;
};

bool Answer(const std::string& name, int key) {
  const AnswerToTheQuestion answer(name, key);
  for (int tries = 0; tries < Tries && !answer.Given(); ++tries) {
    Press(WXK_RETURN);
    WaitFor([&answer] { return answer.Given(); }, PatienceMs);
  }
  return answer.Given();
}

// The file dialog stays after the answer.
bool SayNo(const ShownDialog& dialog, const std::string& name) {
  return Answer(name, WXK_ESCAPE) && !dialog.HasClosed();
}

bool SayYes(const ShownDialog& dialog, const std::string& name) {
  return Answer(name, WXK_RETURN) && WaitFor([&dialog] { return dialog.HasClosed(); });
}

}  // namespace

int FileDialogUser::Enter(wxDialog* dialog) {
  auto* const files = dynamic_cast<wxFileDialog*>(dialog);
  if (files == nullptr) return wxID_NONE;
#ifdef __WXGTK__
  if (std::exchange(entered_, !entered_)) return wxID_NONE;  // every file dialog is announced twice
#endif
  Look(*files);
  const std::string name = names_.empty() ? "" : names_.front();
  if (!names_.empty()) names_.erase(names_.begin());
  widget_test::OnceModal([this, files, name] {
    // The native dialog does not tell when it is active: the window behind it does.
    EXPECT_TRUE(WaitFor([] { return !ActiveShortTestForm->Window()->IsActive(); }));
    Settle();
    shownNames.push_back(TextOfFocusedEntry().value_or(""));
    Use(*files, name);
  });
  return wxID_NONE;  // go on and show it
}

void FileDialogUser::Use(wxFileDialog& files, const std::string& name) const {
  ShownDialog dialog(files);
  if (!name.empty()) {
    if (TypeName(name) && (saysNo_    ? SayNo(dialog, name)
                           : saysYes_ ? SayYes(dialog, name)
                                      : Confirm(dialog))) {
      if (saysNo_) Cancel(dialog);
      return;
    }
    ADD_FAILURE() << "the file dialog does not take " << name << "; its entry holds "
                  << TextOfFocusedEntry().value_or("nothing");
  }
  Cancel(dialog);
}

void FileDialogUser::Look(const wxFileDialog& dialog) {
  ++dialogs;
  style = dialog.GetWindowStyleFlag();
  directory = dialog.GetDirectory().utf8_string();
  fileName = dialog.GetFilename().utf8_string();
  wildcard = dialog.GetWildcard().utf8_string();
}

}  // namespace shorttest::testkit
