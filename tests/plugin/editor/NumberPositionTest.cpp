#include <gtest/gtest.h>

#include "plugin/editor/NumberPosition.h"

namespace shorttest {
namespace {

constexpr NumberLimits Tens{0, 100, 10};

TEST(NumberPosition, IsClippedToTheLimits) {
  EXPECT_EQ(NumberPosition(Tens, 1000).Value(), 100);
  NumberPosition position(Tens, 50);
  position.Set(-5);
  EXPECT_EQ(position.Value(), 0);
}

struct FollowRow {
  const char* name;
  const char* typed;
  int expected;
};

TEST(NumberPosition, FollowsNumbersWithinTheLimits) {
  const FollowRow rows[] = {
      {"a number", "42", 42},   {"the lowest", "0", 0},      {"the highest", "100", 100},
      {"too large", "101", 50}, {"too small", "-1", 50},     {"empty", "", 50},
      {"no number", "4x", 50},  {"no whole one", "2,5", 50}, {"with blanks", " 7 ", 7},
  };
  for (const FollowRow& row : rows) {
    NumberPosition position(Tens, 50);
    position.Follow(row.typed);
    EXPECT_EQ(position.Value(), row.expected) << row.name;
  }
}

TEST(NumberPosition, StepsEndAtTheLimits) {
  NumberPosition position(Tens, 95);
  position.Step(1);
  EXPECT_EQ(position.Value(), 100);
  position.Step(1);
  EXPECT_EQ(position.Value(), 100);
  position.Set(5);
  position.Step(-1);
  EXPECT_EQ(position.Value(), 0);
}

TEST(NumberPosition, KeptOutsideTheLimitsItMovesBackInto) {
  NumberPosition position(Tens, 50);
  position.Keep(1000);
  position.Follow("2,5");
  EXPECT_EQ(position.Value(), 1000);
  position.Step(1);
  EXPECT_EQ(position.Value(), 100);
}

TEST(NumberPosition, NewLimitsHoldForTheNextMove) {
  NumberPosition position(Tens, 50);
  position.SetMaximum(40);
  EXPECT_EQ(position.Value(), 50);
  position.Step(1);
  EXPECT_EQ(position.Value(), 40);
  position.SetMinimum(45);
  EXPECT_EQ(position.Value(), 40);
  position.Step(-1);
  EXPECT_EQ(position.Value(), 45);
}

TEST(NumberPosition, MinimumAboveTheMaximumDoesNotFail) {
  NumberPosition position(Tens, 50);
  position.SetMinimum(200);
  position.Step(1);
  EXPECT_EQ(position.Value(), 200);
}

TEST(NumberPosition, StepAtTheEndOfTheNumbersDoesNotOverflow) {
  NumberPosition position({0, 2147483647, 10}, 2147483640);
  position.Step(1);
  EXPECT_EQ(position.Value(), 2147483647);
}

}  // namespace
}  // namespace shorttest
