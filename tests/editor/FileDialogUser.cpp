#include "tests/editor/FileDialogUser.h"

#include <gtest/gtest.h>

#include <utility>

#include "editor/EditorDialog.h"
#include "editor/GUI_ShortTest.h"
#include "tests/support/NativeEntry.h"
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

bool HasClosed([[maybe_unused]] const wxFileDialog& dialog) {
#ifdef __WXGTK__
  return !dialog.IsModal();
#else
  return ActiveShortTestForm->Window()->IsActive();  // the toolkit knows no state of the system's own dialog
#endif
}

// Types until the name stands in the entry: keys get lost on a busy machine, and the dialog completes what is
// typed with the names of files.
bool TypeName(const std::string& name) {
  for (int tries = 0; tries < Tries; ++tries) {
    widget_test::SelectAll();
    Type(name);
    Press(WXK_DELETE);  // what the dialog has added behind the caret
    if (WaitFor([&name] { return TextOfFocusedEntry() == name; }, PatienceMs)) return true;
  }
  return false;
}

// The first Enter may only close the list of names that the dialog proposes.
bool Confirm(const wxFileDialog& dialog) {
  for (int tries = 0; tries < Tries && !HasClosed(dialog); ++tries) {
    Press(WXK_RETURN);
    WaitFor([&dialog] { return HasClosed(dialog); }, PatienceMs);
  }
  return HasClosed(dialog);
}

// Escape may first close a list of names or a question of the dialog's own.
void Cancel(wxFileDialog& dialog) {
  for (int tries = 0; tries < Tries && !HasClosed(dialog); ++tries) {
    Press(WXK_ESCAPE);
    WaitFor([&dialog] { return HasClosed(dialog); }, PatienceMs);
  }
  if (!HasClosed(dialog)) dialog.EndModal(wxID_CANCEL);
}

void Use(wxFileDialog& dialog, const std::string& name) {
  if (!name.empty()) {
    if (TypeName(name) && Confirm(dialog)) return;
    ADD_FAILURE() << "the file dialog does not take " << name << "; its entry holds "
                  << TextOfFocusedEntry().value_or("nothing");
  }
  Cancel(dialog);
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

void FileDialogUser::Look(const wxFileDialog& dialog) {
  ++dialogs;
  style = dialog.GetWindowStyleFlag();
  directory = dialog.GetDirectory().utf8_string();
  fileName = dialog.GetFilename().utf8_string();
  wildcard = dialog.GetWildcard().utf8_string();
}

}  // namespace shorttest::testkit
