#include <gtest/gtest.h>

#include "contracts/WindowMessages.h"

namespace {

// What the message carries is an address, and the window's handle must survive the way through 32 bits.
static_assert(sizeof(LPARAM) == sizeof(void*));
static_assert(sizeof(HWND) == sizeof(void*));

TEST(SendMessageW, ToNoWindowGoesNowhere) { EXPECT_EQ(SendMessageW(nullptr, 1133, 0, 0), 0); }

TEST(SendMessageW, ToAnUnknownHandleGoesNowhere) {
  EXPECT_EQ(SendMessageW(reinterpret_cast<HWND>(0x7FFFFFF1), 1133, 0, 0), 0);
}

}  // namespace
