#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "plugin/check/ResultRecords.h"

// Records go to a window that knows nothing of this project, through the system's own call.

namespace {

constexpr wchar_t ClassName[] = L"ForeignHost";
constexpr UINT RecordMessage = 1133;

struct Received {
  UINT message;
  WPARAM wParam;
  std::wstring text;
};

struct WindowKind {
  const char* name;
  HWND parent;
  DWORD style;
};

class ForeignWindow : public testing::TestWithParam<WindowKind> {
 protected:
  void SetUp() override {
    WNDCLASSW description{};
    description.lpfnWndProc = &ForeignWindow::Take;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = ClassName;
    ASSERT_NE(RegisterClassW(&description), 0);
    window_ = CreateWindowExW(0, ClassName, L"host", GetParam().style, 0, 0, 10, 10, GetParam().parent,
                              nullptr, description.hInstance, nullptr);
    ASSERT_NE(window_, nullptr);
    shorttest::SetMessageWindowHandle(static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(window_)));
  }

  void TearDown() override {
    if (window_ != nullptr) DestroyWindow(window_);
    UnregisterClassW(ClassName, GetModuleHandleW(nullptr));
    shorttest::SetMessageWindowHandle(0);
    received_.clear();
  }

  void Close() {
    DestroyWindow(window_);
    window_ = nullptr;
  }

  static const std::vector<Received>& Records() { return received_; }

 private:
  static LRESULT CALLBACK Take(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != RecordMessage) return DefWindowProcW(window, message, wParam, lParam);
    received_.push_back({message, wParam, reinterpret_cast<const wchar_t*>(lParam)});
    return 1;
  }

  static inline std::vector<Received> received_;
  HWND window_ = nullptr;
};

TEST_P(ForeignWindow, HasTheRecordWhenTheCallReturns) {
  HostMessage = u"Kurzschluß 17 Ω|4711|";
  SendHostMessage();
  ASSERT_EQ(Records().size(), 1U);
  EXPECT_EQ(Records().front().wParam, 0U);
  EXPECT_EQ(Records().front().text, L"Kurzschluß 17 Ω|4711|");
}

TEST_P(ForeignWindow, HasTheRecordsInOrder) {
  for (const char16_t* record : {u"first|", u"second|", u"|"}) {
    HostMessage = record;
    SendHostMessage();
  }
  ASSERT_EQ(Records().size(), 3U);
  EXPECT_EQ(Records()[0].text, L"first|");
  EXPECT_EQ(Records()[1].text, L"second|");
  EXPECT_EQ(Records()[2].text, L"|");
}

TEST_P(ForeignWindow, MakesNoTroubleWhenItIsGone) {
  Close();
  HostMessage = u"nobody reads this|";
  SendHostMessage();
  EXPECT_TRUE(Records().empty());
}

INSTANTIATE_TEST_SUITE_P(Kinds, ForeignWindow,
                         testing::Values(WindowKind{"MessageOnly", HWND_MESSAGE, 0},
                                         WindowKind{"Hidden", nullptr, WS_OVERLAPPEDWINDOW},
                                         WindowKind{"Visible", nullptr, WS_OVERLAPPEDWINDOW | WS_VISIBLE}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
