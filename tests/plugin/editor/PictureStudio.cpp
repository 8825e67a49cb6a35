#include "tests/plugin/editor/PictureStudio.h"

#include <wx/app.h>
#include <wx/gauge.h>
#include <wx/notebook.h>
#include <wx/utils.h>
#ifndef __WXGTK__
#include <wx/dcmemory.h>
#include <wx/dcscreen.h>
#endif

#include <array>
#include <cstdio>
#include <stdexcept>
#include <utility>

#include "plugin/editor/EditorDialog.h"
#include "tests/support/WidgetTest.h"
#include "text/NumberText.h"

namespace shorttest::testkit {
namespace {

namespace fs = std::filesystem;

constexpr int LastChannel = 240;
constexpr double WireOhm = 0.12;

#ifdef __WXGTK__

const char* const SystemName = "linux";
const char* const Ending = ".png";

// An outside program takes the picture: the toolkit's own view of the screen does not follow its changes.
bool TakePicture(const wxRect& area, const std::string& file) {
  const wxString part = wxString::Format("%dx%d+%d+%d", area.width, area.height, area.x, area.y);
  const wxString target = wxString::FromUTF8(file);
  const std::array<const wchar_t*, 8> command = {L"import",     L"-window", L"root",         L"-crop",
                                                 part.wc_str(), L"+repage", target.wc_str(), nullptr};
  return wxExecute(command.data(), wxEXEC_BLOCK) == 0;
}

#else

const char* const SystemName = "windows";
const char* const Ending = ".bmp";

bool TakePicture(const wxRect& area, const std::string& file) {
  wxBitmap bitmap(area.GetSize(), 24);  // the screen has no transparency
  wxScreenDC screen;
  wxMemoryDC picture(bitmap);
  picture.Blit(wxPoint(0, 0), area.GetSize(), &screen, area.GetPosition());
  picture.SelectObject(wxNullBitmap);
  return bitmap.SaveFile(wxString::FromUTF8(file), wxBITMAP_TYPE_BMP);  // what the toolkit writes by itself
}

#endif

wxWindow& WindowNamed(const std::string& title) {
  wxWindow* const window = widget_test::FindTopLevel(title);
  if (window == nullptr) throw std::runtime_error("no window " + title);
  return *window;
}

const wxGauge* FindBar(const wxWindow& window) {
  for (const wxWindow* const child : window.GetChildren()) {
    if (const auto* const bar = dynamic_cast<const wxGauge*>(child)) return bar;
    if (const wxGauge* const bar = FindBar(*child)) return bar;
  }
  return nullptr;
}

}  // namespace

PictureStudio::PictureStudio(fs::path folder) : folder_(std::move(folder)) {
  fs::create_directories(folder_);
  SetVarAccess(&variables_);
  SetDecimalSeparator(",");
  form_.SetParser(&parser_);
}

PictureStudio::~PictureStudio() { SetVarAccess(nullptr); }

void PictureStudio::UseExample(const std::string& harness) {
  const fs::path project = fs::path(EXAMPLES_FOLDER) / harness;
  parser_.GetEnvironment().SetVariable("PROJEKTPFAD", (project / "").string());
  parser_.GetEnvironment().SetVariable("PROJECTNAME", harness);
  expectationFile_ = (project / (harness + ".dat")).string();
  form_.KXEdit_Datafile.SetText("PROJEKTPFAD + \"" + harness + ".dat\"");

  const TShortTestData expectation = Expectation();
  for (int a = 1; a < LastChannel; ++a) {
    for (int b = a + 1; b <= LastChannel; ++b) driver_.Unwire(a, b);
  }
  for (int i = 0; i <= expectation.Highconnections(); ++i) {
    for (int j = 0; j < i; ++j) {
      const bool connected = expectation.Get(i, j) == CellState::Connected;
      if (connected) driver_.Wire(expectation.von + j, expectation.von + i, WireOhm);
    }
  }
}

void PictureStudio::UseNewFile() { form_.KXEdit_Datafile.SetText(""); }

TShortTestData PictureStudio::Expectation() const { return TShortTestData(expectationFile_); }

void PictureStudio::Edit(const std::function<void()>& script) {
  std::string failure;
  wxTheApp->CallAfter([this, &script, &failure] {
    try {
      widget_test::WaitFor([this] { return form_.Window()->IsActive(); });
      widget_test::Settle();
      script();
    } catch (const std::exception& error) {
      failure = error.what();
    }
    widget_test::Settle();
    form_.Window()->Close();
  });
  form_.ShowModal();
  if (!failure.empty()) throw std::runtime_error(failure);
}

void PictureStudio::Page(int page) const {
  form_.PageControl1->SetSelection(static_cast<std::size_t>(page));
  widget_test::Settle();
}

void PictureStudio::PictureAt(int percent, const std::string& title, const std::string& name,
                              const std::function<void()>& measure) {
  bool taken = false;
  driver_.BeforeReading([&] {
    if (taken || FindBar(WindowNamed(title))->GetValue() < percent) return;
    taken = true;
    Picture(title, name);
  });
  measure();
  driver_.BeforeReading(nullptr);
  if (!taken) throw std::runtime_error("the measurement never came to " + name);
}

void PictureStudio::Picture(const std::string& title, const std::string& name) const {
  widget_test::Settle();
  const std::string file = (folder_ / (SystemName + ("-" + name) + Ending)).string();
  if (!TakePicture(WindowNamed(title).GetScreenRect(), file)) throw std::runtime_error("cannot take " + file);
  std::puts(file.c_str());
}

}  // namespace shorttest::testkit
