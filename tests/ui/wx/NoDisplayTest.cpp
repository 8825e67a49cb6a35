#include <gtest/gtest.h>

#include "contracts/UserInterfaceModule.h"

namespace {

TEST(WithoutADisplay, ThereIsNoUserInterfaceAndTheProgramLivesOn) {
  UserInterface* const windows = kxCreateUserInterface();
  EXPECT_EQ(windows, nullptr);
  kxDestroyUserInterface(windows);
}

}  // namespace
