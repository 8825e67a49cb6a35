// Makes PNG pictures of the dialogs in their main states, for the documentation and for looking at them.
// usage: dialog_screenshots FOLDER; needs a screen (tests/support/xvfb gives one).

#include <wx/app.h>
#include <wx/choice.h>
#include <wx/gauge.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <array>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

#include "check/CheckForm.h"
#include "data/NumberText.h"
#include "editor/EditorDialog.h"
#include "editor/GUI_ShortTest.h"
#include "host/framework/ScriptEnvironment.h"
#include "platform/Kxcommandinterfaces.h"
#include "platform/UserInterfaceModule.h"
#include "tests/support/CallLog.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeDriver.h"
#include "tests/support/WidgetTest.h"

namespace {

namespace fs = std::filesystem;
using shorttest::testkit::CallLog;
using shorttest::testkit::FakeClock;
using shorttest::testkit::FakeDriver;

constexpr int TextPage = 0;
constexpr int GridPage = 1;

class Variables : public IVarAccess {
 public:
  explicit Variables(const TKXEnvironment& environment) : environment_(environment) {}
  virtual ~Variables() = default;

  int QueryInterface(const char*, void**) override { return -1; }
  int AddRef() override { return 1; }
  int Release() override { return 1; }
  const TKXValue* GetVariable(const std::string& name) override { return environment_.FindVariable(name); }
  void AttachEdit(TKXEdit&) override {}

 private:
  const TKXEnvironment& environment_;
};

// A harness with names for some of its channels, and a tester to learn it on.
class Studio {
 public:
  explicit Studio(fs::path folder) : folder_(std::move(folder)) {
    fs::create_directories(folder_);
    project_ = fs::temp_directory_path() / "dialog_screenshots";
    fs::create_directories(project_);
    std::ofstream(project_ / "Projekt.ini") << "[Scanner]\r\nRelais1=Kl30\r\nRelais2=Motor links\r\n"
                                               "Relais3=Motor rechts\r\nRelais7=Masse\r\n";
    parser_.GetEnvironment().SetVariable("PROJEKTPFAD", (project_ / "").string());
    parser_.GetEnvironment().SetVariable("PROJECTNAME", "Projekt");
    SetVarAccess(&variables_);
    shorttest::SetDecimalSeparator(",");
    for (int channel = 1; channel + 24 <= 48; channel += 2) driver_.Wire(channel, channel + 24);
    driver_.Wire(2, 3);
    driver_.Wire(3, 20);
  }
  ~Studio() {
    SetVarAccess(nullptr);
    fs::remove_all(project_);
  }
  Studio(const Studio&) = delete;
  Studio& operator=(const Studio&) = delete;

  // A wiring harness over channels 1 to `last`: groups, excluded pairs, blocked points.
  void UseHarness(int last) {
    TShortTestData data(1, last);
    for (int i = 0; i + last / 2 < last; i += 3) data.Put(i, i + last / 2, CellState::Connected, 0.4);
    data.Put(1, 2, CellState::Connected, 0.4);
    data.Put(2, 6, CellState::Connected, 0.4);
    data.SetC(4, 10, CellState::ExcludedPair, NoResistance);
    data.SetC(5, 11, CellState::ExcludedPair, NoResistance);
    data.SuspendChannel(13, 12.0);
    for (int i = 0; i < last; ++i) {
      for (int j = 0; j < i; ++j) data.Put(i, j, CellState::NotConnected, 1e9);
    }
    data.Schwelle = 2.5;
    data.Schwelle2 = 15000.0;
    data.LastRelaisKarte = 1;
    data.LastRelais = 17;
    data.SaveExpectationFile((project_ / "kabel.dat").string());
    form.KXEdit_Datafile.SetText("PROJEKTPFAD + \"kabel.dat\"");
  }

  // Shows the editor, runs the script on it and closes it.
  void Show(const std::function<void()>& script) {
    wxTheApp->CallAfter([this, script] {
      widget_test::WaitFor([this] { return form.Window()->IsActive(); });
      widget_test::Settle();
      script();
      widget_test::Settle();
      form.Window()->Close();
    });
    form.ShowModal();
  }

  void Page(int page) const {
    form.PageControl1->SetSelection(static_cast<std::size_t>(page));
    widget_test::Settle();
  }

  void Picture(const wxWindow& window, const std::string& name) const {
    widget_test::Settle();
    // An outside program takes the picture: the toolkit's own view of the screen does not follow its changes.
    const wxRect area = window.GetScreenRect();
    const std::string file = (folder_ / (name + ".png")).string();
    const wxString part = wxString::Format("%dx%d+%d+%d", area.width, area.height, area.x, area.y);
    const wxString target = wxString::FromUTF8(file);
    const std::array<const wchar_t*, 8> command = {L"import",     L"-window", L"root",         L"-crop",
                                                   part.wc_str(), L"+repage", target.wc_str(), nullptr};
    if (wxExecute(command.data(), wxEXEC_BLOCK) != 0) throw std::runtime_error("cannot take " + file);
    std::puts(file.c_str());
  }

  void Editor(const std::string& name) const { Picture(*form.Window(), name); }

  FakeDriver& Driver() { return driver_; }

 private:
  fs::path folder_;
  fs::path project_;
  CallLog log_;
  FakeClock clock_;
  FakeDriver driver_{log_};
  kxbench::ScriptParser parser_;
  Variables variables_{parser_.GetEnvironment()};

 public:
  TShortTestForm form{nullptr};

 private:
  struct ParserSetter {
    ParserSetter(TShortTestForm& form, TKXParser& parser) { form.SetParser(&parser); }
  } parserSetter_{form, parser_};
};

void PictureNewExpectation(Studio& studio) {
  studio.Driver().Generation(1);
  studio.Show([&] { studio.Editor("editor-new"); });
}

void PictureHarness(Studio& studio) {
  studio.UseHarness(48);
  studio.Show([&] {
    studio.Page(TextPage);
    studio.Editor("editor-text");
    studio.Page(GridPage);
    studio.Editor("editor-grid-48");
    studio.Page(TextPage);
    studio.form.CB_U->SetSelection(0);
    studio.form.CB_UChange();
    studio.Editor("editor-warning");
  });
  studio.UseHarness(240);
  studio.Show([&] {
    studio.Page(GridPage);
    studio.Editor("editor-grid-240");
  });
}

void PictureLearning(Studio& studio, int page, double atPosition, const std::string& name) {
  studio.form.KXEdit_Datafile.SetText("");
  studio.Show([&] {
    studio.Page(page);
    int reading = 0;
    bool taken = false;
    studio.Driver().BeforeReading([&] {
      ++reading;
      if (taken || studio.form.ProgressBar1->GetValue() < atPosition * 100) return;
      taken = true;
      studio.Editor(name);
    });
    studio.form.BT_LearnClick();
    studio.Driver().BeforeReading(nullptr);
    if (!taken) throw std::runtime_error("learning never came to " + name);
  });
}

void PictureProgress(Studio& studio) {
  CheckForm = std::make_unique<TShortTestCheckForm>();
  CheckForm->Show();
  widget_test::WaitFor([] { return widget_test::FindTopLevel("Kurzschlusstest") != nullptr; });
  UpdateProgress(0.4);
  studio.Picture(*widget_test::FindTopLevel("Kurzschlusstest"), "check-progress");
  CheckForm.reset();
}

void MakePictures(const char* folder) {
  Studio studio(folder);
  PictureNewExpectation(studio);
  PictureHarness(studio);
  PictureLearning(studio, GridPage, 0.4, "editor-learning-grid");
  PictureLearning(studio, TextPage, 0.7, "editor-learning-text");
  PictureProgress(studio);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fputs("usage: dialog_screenshots FOLDER\n", stderr);
    return 2;
  }
  UserInterface* const windows = kxCreateUserInterface();
  if (windows == nullptr) {
    std::fputs("no display can be reached\n", stderr);
    return 2;
  }
  int status = 0;
  try {
    SetApplication(windows);
    widget_test::SetWindows(windows);
    MakePictures(argv[1]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    status = 1;
  }
  SetApplication(nullptr);
  kxDestroyUserInterface(windows);
  return status;
}
