#include <gtest/gtest.h>

#include "framework/PathRules.h"

namespace kx {
namespace {

TEST(PathBelow, GivesTheRestAsWritten) {
  EXPECT_EQ(PathBelow("C:\\P\\", "c:/p/Sub/A.dat", {true, true}), "Sub/A.dat");
}

TEST(PathBelow, NeedsSomethingBelow) { EXPECT_EQ(PathBelow("/p/", "/p/", {false, false}), std::nullopt); }

TEST(PathBelow, NeedsAFolderThatEndsInASeparator) {
  EXPECT_EQ(PathBelow("/p", "/px", {false, false}), std::nullopt);
}

TEST(PathBelow, RefusesToClimbOutAtTheEnd) {
  EXPECT_EQ(PathBelow("/p/", "/p/x/..", {false, false}), std::nullopt);
}

}  // namespace
}  // namespace kx
