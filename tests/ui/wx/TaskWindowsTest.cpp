#include <gtest/gtest.h>
#include <wx/frame.h>

#include "tests/support/WidgetTest.h"
#include "tests/ui/wx/ProgressLayout.h"

namespace {

using widget_test::Settle;
using widget_test::Windows;

class TaskWindows : public ::testing::Test {
 protected:
  TaskWindows()
      : first(new wxFrame(nullptr, wxID_ANY, "first")),
        second(new wxFrame(nullptr, wxID_ANY, "second")),
        dialog(Windows().CreateProgressDialog(ProgressLayout("Lauf"))) {
    first->Show();
    second->Show();
    dialog->Show();
    Settle();
  }
  ~TaskWindows() override {
    dialog.reset();
    first->Destroy();
    if (second != nullptr) second->Destroy();
    Settle();
  }

  wxFrame* first;
  wxFrame* second;
  std::unique_ptr<ProgressDialog> dialog;
};

TEST_F(TaskWindows, AreDisabledAllButOne) {
  const TaskWindowList disabled = Windows().DisableTaskWindows(dialog->Handle());
  EXPECT_FALSE(first->IsEnabled());
  EXPECT_FALSE(second->IsEnabled());
  EXPECT_TRUE(widget_test::FindTopLevel("Lauf")->IsEnabled());
  EXPECT_EQ(disabled.size(), 2U);
  Windows().EnableTaskWindows(disabled);
  EXPECT_TRUE(first->IsEnabled());
  EXPECT_TRUE(second->IsEnabled());
}

TEST_F(TaskWindows, DisabledBeforeStayDisabled) {
  second->Disable();
  const TaskWindowList disabled = Windows().DisableTaskWindows(dialog->Handle());
  Windows().EnableTaskWindows(disabled);
  EXPECT_TRUE(first->IsEnabled());
  EXPECT_FALSE(second->IsEnabled());
}

TEST_F(TaskWindows, ClosedMeanwhileArePassedOver) {
  const TaskWindowList disabled = Windows().DisableTaskWindows(dialog->Handle());
  second->Destroy();
  second = nullptr;
  Settle();
  Windows().EnableTaskWindows(disabled);
  EXPECT_TRUE(first->IsEnabled());
}

TEST_F(TaskWindows, OpenedMeanwhileAreLeftAlone) {
  const TaskWindowList disabled = Windows().DisableTaskWindows(dialog->Handle());
  auto* const third = new wxFrame(nullptr, wxID_ANY, "third");
  third->Disable();
  Windows().EnableTaskWindows(disabled);
  EXPECT_FALSE(third->IsEnabled());
  third->Destroy();
}

TEST_F(TaskWindows, HandleOfADialogStaysTheSame) {
  EXPECT_NE(dialog->Handle(), 0U);
  EXPECT_EQ(dialog->Handle(), dialog->Handle());
}

}  // namespace
