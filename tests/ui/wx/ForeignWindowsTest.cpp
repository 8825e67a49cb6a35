#include <gtest/gtest.h>
#include <wx/msw/wrapwin.h>

#include <algorithm>
#include <future>
#include <thread>

#include "tests/support/WidgetTest.h"
#include "tests/ui/wx/ProgressLayout.h"

// The windows of the thread that the toolkit knows nothing of: those of a host written without it.

namespace {

using widget_test::Settle;
using widget_test::Windows;

constexpr wchar_t ClassName[] = L"ForeignHostWindow";

class ForeignWindow {
 public:
  explicit ForeignWindow(DWORD style) {
    WNDCLASSW description{};
    description.lpfnWndProc = DefWindowProcW;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = ClassName;
    RegisterClassW(&description);
    window_ = CreateWindowExW(0, ClassName, L"host", style, 0, 0, 200, 100, nullptr, nullptr,
                              description.hInstance, nullptr);
  }
  ~ForeignWindow() { Close(); }
  ForeignWindow(const ForeignWindow&) = delete;
  ForeignWindow& operator=(const ForeignWindow&) = delete;

  void Close() {
    if (window_ != nullptr) DestroyWindow(window_);
    window_ = nullptr;
  }
  void Disable() const { EnableWindow(window_, FALSE); }
  bool IsEnabled() const { return IsWindowEnabled(window_) != FALSE; }
  WindowHandle Handle() const { return reinterpret_cast<WindowHandle>(window_); }

 private:
  HWND window_ = nullptr;
};

constexpr DWORD Shown = WS_OVERLAPPEDWINDOW | WS_VISIBLE;

class ForeignWindows : public ::testing::Test {
 protected:
  ForeignWindows() : dialog(Windows().CreateProgressDialog(ProgressLayout("Lauf"))) {
    dialog->Show();
    Settle();
  }
  // Otherwise it would still have the keyboard when the next test shows a window.
  ~ForeignWindows() override {
    dialog.reset();
    Settle();
  }

  TaskWindowList Disable() { return Windows().DisableTaskWindows(dialog->Handle()); }

  static bool Holds(const TaskWindowList& list, const ForeignWindow& window) {
    return std::find(list.begin(), list.end(), window.Handle()) != list.end();
  }

  std::unique_ptr<ProgressDialog> dialog;
};

TEST_F(ForeignWindows, AreDisabledAndEnabledAgain) {
  const ForeignWindow host(Shown);
  const TaskWindowList disabled = Disable();
  EXPECT_FALSE(host.IsEnabled());
  EXPECT_TRUE(Holds(disabled, host));
  Windows().EnableTaskWindows(disabled);
  EXPECT_TRUE(host.IsEnabled());
}

TEST_F(ForeignWindows, LeaveTheDialogItselfEnabled) {
  const ForeignWindow host(Shown);
  const TaskWindowList disabled = Disable();
  EXPECT_TRUE(IsWindowEnabled(reinterpret_cast<HWND>(dialog->Handle())));
  Windows().EnableTaskWindows(disabled);
}

TEST_F(ForeignWindows, DisabledBeforeStayDisabled) {
  const ForeignWindow host(Shown);
  host.Disable();
  const TaskWindowList disabled = Disable();
  EXPECT_FALSE(Holds(disabled, host));
  Windows().EnableTaskWindows(disabled);
  EXPECT_FALSE(host.IsEnabled());
}

TEST_F(ForeignWindows, HiddenOnesAreLeftAlone) {
  const ForeignWindow records(WS_OVERLAPPEDWINDOW);
  const TaskWindowList disabled = Disable();
  EXPECT_TRUE(records.IsEnabled());
  EXPECT_FALSE(Holds(disabled, records));
  Windows().EnableTaskWindows(disabled);
}

TEST_F(ForeignWindows, ClosedMeanwhileArePassedOver) {
  ForeignWindow host(Shown);
  const ForeignWindow other(Shown);
  const TaskWindowList disabled = Disable();
  host.Close();
  Windows().EnableTaskWindows(disabled);
  EXPECT_TRUE(other.IsEnabled());
}

TEST_F(ForeignWindows, OfOtherThreadsAreLeftAlone) {
  std::promise<const ForeignWindow*> made;
  std::promise<void> seen;
  std::thread otherThread([&] {
    const ForeignWindow elsewhere(Shown);
    made.set_value(&elsewhere);
    seen.get_future().wait();
  });
  const ForeignWindow& elsewhere = *made.get_future().get();
  const TaskWindowList disabled = Disable();
  EXPECT_TRUE(elsewhere.IsEnabled());
  EXPECT_FALSE(Holds(disabled, elsewhere));
  Windows().EnableTaskWindows(disabled);
  seen.set_value();
  otherThread.join();
}

}  // namespace
