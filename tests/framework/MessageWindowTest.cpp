#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "framework/MessageWindow.h"

namespace kx {
namespace {

constexpr UINT RecordMessage = 1133;

struct Received {
  UINT message;
  WPARAM wParam;
  LPARAM lParam;
  bool operator==(const Received&) const = default;
};

TEST(MessageWindow, ReceivesDuringTheCall) {
  std::vector<Received> received;
  MessageWindow window([&](UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
    received.push_back({message, wParam, lParam});
    return 7;
  });
  EXPECT_EQ(SendMessageW(window.Handle(), RecordMessage, 3, -5), 7);
  EXPECT_EQ(received, (std::vector<Received>{{RecordMessage, 3, -5}}));
}

TEST(MessageWindow, HandleSurvivesTheCutTo32Bits) {
  int calls = 0;
  MessageWindow window([&](UINT, WPARAM, LPARAM) -> LRESULT { return ++calls; });
  const auto whole = reinterpret_cast<std::uintptr_t>(window.Handle());
  const auto cut = static_cast<std::uint32_t>(whole);
  EXPECT_NE(cut, 0U);
  SendMessageW(reinterpret_cast<HWND>(static_cast<std::uintptr_t>(cut)), RecordMessage, 0, 0);
  EXPECT_EQ(calls, 1);
}

TEST(MessageWindow, EachWindowGetsItsOwn) {
  int first = 0;
  int second = 0;
  MessageWindow a([&](UINT, WPARAM, LPARAM) -> LRESULT { return ++first; });
  MessageWindow b([&](UINT, WPARAM, LPARAM) -> LRESULT { return ++second; });
  SendMessageW(b.Handle(), RecordMessage, 0, 0);
  EXPECT_EQ(first, 0);
  EXPECT_EQ(second, 1);
}

TEST(MessageWindow, GoneWindowGetsNothing) {
  int calls = 0;
  HWND handle = nullptr;
  {
    MessageWindow window([&](UINT, WPARAM, LPARAM) -> LRESULT { return ++calls; });
    handle = window.Handle();
  }
  EXPECT_EQ(SendMessageW(handle, RecordMessage, 0, 0), 0);
  EXPECT_EQ(calls, 0);
}

TEST(MessageWindow, KeepsAnExceptionFromTheSender) {
  MessageWindow window([](UINT, WPARAM, LPARAM) -> LRESULT { throw std::runtime_error("disk full"); });
  EXPECT_EQ(SendMessageW(window.Handle(), RecordMessage, 0, 0), 0);
  EXPECT_THROW(window.RethrowKept(), std::runtime_error);
  EXPECT_NO_THROW(window.RethrowKept()) << "it is handed over once";
}

}  // namespace
}  // namespace kx
