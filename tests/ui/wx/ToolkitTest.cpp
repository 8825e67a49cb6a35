#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/frame.h>

#include <clocale>
#include <memory>
#include <string>

#include "tests/support/WidgetTest.h"

namespace {

using widget_test::WaitFor;
using widget_test::Windows;

TEST(Toolkit, LeavesTheNumericLocaleToTheHost) { EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C"); }

TEST(Toolkit, HasAnApplicationForTheDialogsOfExtensions) { EXPECT_NE(wxTheApp, nullptr); }

TEST(Toolkit, ModelessWindowsPaintWhileMessagesAreProcessed) {
  auto* const frame = new wxFrame(nullptr, wxID_ANY, "paints");
  int painted = 0;
  frame->Bind(wxEVT_PAINT, [&painted](wxPaintEvent& event) {
    ++painted;
    event.Skip();
  });
  frame->Show();
  EXPECT_TRUE(WaitFor([&painted] { return painted > 0; }));
  const int before = painted;
  frame->Refresh();
  EXPECT_TRUE(WaitFor([&] { return painted > before; }));
  frame->Destroy();
}

TEST(Toolkit, ProcessesMessagesWithinAMessage) {
  bool inner = false;
  bool outer = false;
  wxTheApp->CallAfter([&] {
    wxTheApp->CallAfter([&inner] { inner = true; });
    Windows().ProcessMessages();
    outer = inner;
  });
  EXPECT_TRUE(WaitFor([&outer] { return outer; }));
}

}  // namespace
