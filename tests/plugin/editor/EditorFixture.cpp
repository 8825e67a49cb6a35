#include "tests/plugin/editor/EditorFixture.h"

#include <wx/dialog.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>
#include <wx/timer.h>
#include <wx/uiaction.h>
#include <wx/utils.h>

#include <cstdint>
#include <fstream>
#include <system_error>
#include <utility>

#include "plugin/editor/EditorDialog.h"
#include "tests/support/WidgetTest.h"
#include "text/NumberText.h"

namespace shorttest::testkit {
namespace {

// Windows does not remove files that are read-only.
void RemoveFolder(const std::filesystem::path& folder) {
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
    std::filesystem::permissions(entry, std::filesystem::perms::owner_all);
  }
  std::filesystem::remove_all(folder);
}

// Short, because tests type it into file dialogs.
std::filesystem::path MakeFolder() {
  auto folder = std::filesystem::path(::testing::TempDir()) / ("e" + std::to_string(wxGetProcessId()));
  RemoveFolder(folder);
  std::filesystem::create_directories(folder);
  return folder;
}

// Closes what a test has left open, so that it fails instead of waiting for a user for ever: Escape closes
// one window after the other, also those that the system has opened.
class Watchdog : public wxTimer {
 public:
  Watchdog() { Start(PatienceMs); }

 private:
  static constexpr int PatienceMs = 60000;
  static constexpr int EscapeMs = 500;
  static constexpr int Escapes = 10;

  void Notify() override {
    if (GetInterval() == PatienceMs) {
      ADD_FAILURE() << "the dialog is still open";
      Start(EscapeMs);
    }
    wxUIActionSimulator().Char(WXK_ESCAPE);
    if (++escapes_ > Escapes) EndInnermost();
  }

  static void EndInnermost() {
    wxDialog* innermost = nullptr;
    for (wxWindow* const window : wxTopLevelWindows) {
      auto* const dialog = dynamic_cast<wxDialog*>(window);
      if (dialog != nullptr && dialog->IsModal()) innermost = dialog;
    }
    if (innermost != nullptr) innermost->EndModal(wxID_CANCEL);
  }

  int escapes_ = 0;
};

// Closes the box that is about to be shown. Slow, because a key that comes too late closes the dialog below.
class EscapePresser : public wxTimer {
 public:
  EscapePresser() { Start(1000); }
  void Notify() override { wxUIActionSimulator().Char(WXK_ESCAPE); }
};

// The keyboard may have stayed with a window that has just gone: then the user turns to the dialog.
bool BecomesActive(wxDialog& dialog) {
  const auto isActive = [&dialog] { return dialog.IsActive(); };
  if (widget_test::WaitFor(isActive, 3000)) return true;
  dialog.Raise();
  return widget_test::WaitFor(isActive);
}

}  // namespace

void ReadMessages::ProcessMessages() { widget_test::Windows().ProcessMessages(); }

int ReadMessages::ShowMessage(const MessageBoxRequest& request) {
  if (request.kind == MessageKind::Error) {
    errors.push_back(request.text);
    if (!errorsInBoxes) return mrOk;
    const EscapePresser user;
    return widget_test::Windows().ShowMessage(request);
  }
  others.push_back(request);
  return answer;
}

std::unique_ptr<ProgressDialog> ReadMessages::CreateProgressDialog(const ProgressDialogLayout& layout) {
  return widget_test::Windows().CreateProgressDialog(layout);
}

TaskWindowList ReadMessages::DisableTaskWindows(WindowHandle except) {
  return widget_test::Windows().DisableTaskWindows(except);
}

void ReadMessages::EnableTaskWindows(const TaskWindowList& windows) {
  widget_test::Windows().EnableTaskWindows(windows);
}

TShortTestData AllOpen(std::int32_t last) {
  TShortTestData data(1, last);
  for (std::int32_t i = 0; i < last; ++i) {
    for (std::int32_t j = 0; j < i; ++j) data.SetC(i, j, CellState::NotConnected, NoResistance);
  }
  return data;
}

EditorTest::HostGlobals::HostGlobals(UserInterface& userInterface, IVarAccess& variables) {
  SetApplication(&userInterface);
  SetVarAccess(&variables);
}

EditorTest::HostGlobals::~HostGlobals() {
  SetVarAccess(nullptr);
  SetApplication(nullptr);
}

EditorTest::EditorTest() : folder(MakeFolder()) {
  SetDecimalSeparator(",");
  form.SetParser(&parser);
  parser.GetEnvironment().SetVariable("PROJEKTPFAD", ProjectFile(""));
  parser.GetEnvironment().SetVariable("PROJECTNAME", "Projekt");
}

EditorTest::~EditorTest() {
  EXPECT_EQ(TakeErrors(), std::vector<std::string>{}) << "errors that the test did not ask for";
  SetDecimalSeparator(std::nullopt);
  EXPECT_NO_THROW(RemoveFolder(folder));
}

int EditorTest::Show(const std::function<void()>& script) {
  widget_test::OnceModal([this, &script] {
    const bool active = BecomesActive(*form.Window());
    EXPECT_TRUE(active) << "no keyboard focus";
    widget_test::Settle();
    if (active) script();
    widget_test::Settle();
    if (form.ModalResult() == mrNone) form.Window()->Close();
  });
  const Watchdog watchdog;
  return form.ShowModal();
}

std::string EditorTest::ProjectFile(const std::string& name) const { return (folder / name).string(); }

std::string EditorTest::WriteFile(const std::string& name, const std::string& bytes) const {
  std::ofstream(folder / name, std::ios::binary) << bytes;
  return ProjectFile(name);
}

void EditorTest::UseDataFile(const std::string& fileName) {
  form.KXEdit_Datafile.SetText("\"" + fileName + "\"");
}

std::string EditorTest::UseExpectation(const TShortTestData& data) {
  const std::string name = ProjectFile("kabel.dat");
  data.SaveExpectationFile(name);
  UseDataFile(name);
  return name;
}

// On a busy machine clicks get lost now and then, and what is typed next would go elsewhere.
void EditorTest::Enter(wxWindow& control) {
  for (int tries = 0; tries < 3; ++tries) {
    widget_test::Click(control);
    if (widget_test::WaitFor([&control] { return control.HasFocus(); }, 1000)) return;
  }
}

void EditorTest::Replace(wxTextCtrl& control, const std::string& text) {
  Enter(control);
  // On a busy machine keys get lost now and then.
  for (int tries = 0; tries < 3 && (tries == 0 || TextOf(&control) != text); ++tries) {
    widget_test::SelectAll();
    if (text.empty()) {
      widget_test::Press(WXK_DELETE);
    } else {
      widget_test::Type(text);
    }
    widget_test::WaitFor([&] { return TextOf(&control) == text; }, 1000);
  }
}

void EditorTest::ChoosePage(int page) {
  const wxNotebook& pages = *form.PageControl1;
  // The tabs stand in a row; which one is where is asked of the control itself.
  for (int x = 5; x < pages.GetSize().x; x += 5) {
    const wxPoint point(x, 12);
    if (pages.HitTest(point) != page) continue;
    widget_test::ClickAt(pages.ClientToScreen(point));
    return;
  }
  FAIL() << "no tab for page " << page;
}

void EditorTest::WaitForClose() {
  EXPECT_TRUE(widget_test::WaitFor([this] { return form.ModalResult() != mrNone; }));
}

std::string EditorTest::TextOf(const wxTextCtrl* control) { return control->GetValue().utf8_string(); }

std::vector<std::string> EditorTest::TakeErrors() { return std::exchange(messages.errors, {}); }

}  // namespace shorttest::testkit
