#include <gtest/gtest.h>

#include "platform/UserInterfaceModule.h"

namespace {

TEST(WithoutADisplay, ThereIsNoUserInterfaceAndTheProgramLivesOn) {
  UserInterface* const windows = kxCreateUserInterface();
  EXPECT_EQ(windows, nullptr);
  kxDestroyUserInterface(windows);
}

}  // namespace
