// Makes PNG pictures of the dialogs in their main states, for the documentation and for looking at them.
// usage: dialog_screenshots FOLDER; needs a screen (tests/support/xvfb gives one).

#include <wx/choice.h>
#include <wx/textctrl.h>

#include <array>
#include <cstdio>
#include <exception>

#include "contracts/UserInterfaceModule.h"
#include "plugin/check/ShorttestCheck.h"
#include "tests/plugin/editor/PictureStudio.h"
#include "tests/support/WidgetTest.h"

namespace {

using shorttest::testkit::PictureStudio;

const char* const Title = "Kurzschlusstest";  // of both dialogs
constexpr int TextPage = 0;
constexpr int GridPage = 1;

void NewExpectation(PictureStudio& studio, const char* name) {
  studio.UseNewFile();
  studio.Edit([&] { studio.Picture(Title, name); });
}

// Groups with names, a blocked point and a skipped pair.
void Groups(PictureStudio& studio, const char* name) {
  studio.UseExample("trailer-adapter");
  studio.Edit([&] {
    TShortTestForm& form = studio.Form();
    form.Ed_Skip->SetValue("12");
    form.Mm_SkipCon->SetValue("9 10");
    form.Ed_Exit();
    studio.Picture(Title, name);
  });
}

void VoltageWarning(PictureStudio& studio, const char* name) {
  studio.UseExample("trailer-adapter");
  studio.Edit([&] {
    studio.Form().CB_U->SetSelection(0);
    studio.Form().CB_UChange();
    studio.Picture(Title, name);
  });
}

void Grid(PictureStudio& studio, const char* harness, const char* name) {
  studio.UseExample(harness);
  studio.Edit([&] {
    studio.Page(GridPage);
    studio.Picture(Title, name);
    studio.Page(TextPage);
  });
}

void Grid48(PictureStudio& studio, const char* name) { Grid(studio, "atx-extension", name); }

void Grid240(PictureStudio& studio, const char* name) { Grid(studio, "generated-240", name); }

void Learning(PictureStudio& studio, const char* harness, int page, int percent, const char* name) {
  studio.UseExample(harness);
  studio.Edit([&] {
    studio.Page(page);
    studio.PictureAt(percent, Title, name, [&] { studio.Form().BT_LearnClick(); });
    studio.Page(TextPage);
  });
}

void LearningTexts(PictureStudio& studio, const char* name) {
  Learning(studio, "trailer-adapter", TextPage, 70, name);
}

void LearningGrid(PictureStudio& studio, const char* name) {
  Learning(studio, "atx-extension", GridPage, 65, name);
}

void CheckProgress(PictureStudio& studio, const char* name) {
  studio.UseExample("atx-extension");
  studio.PictureAt(40, Title, name, [&] { RunShortTest(studio.Expectation()); });
}

struct State {
  const char* name;
  void (*picture)(PictureStudio& studio, const char* name);
};

constexpr std::array States = {
    State{"editor-new", NewExpectation},         State{"editor-text", Groups},
    State{"editor-warning", VoltageWarning},     State{"editor-grid-48", Grid48},
    State{"editor-grid-240", Grid240},           State{"editor-learning-text", LearningTexts},
    State{"editor-learning-grid", LearningGrid}, State{"check-progress", CheckProgress},
};

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
    PictureStudio studio(argv[1]);
    for (const State& state : States) state.picture(studio, state.name);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    status = 1;
  }
  SetApplication(nullptr);
  kxDestroyUserInterface(windows);
  return status;
}
