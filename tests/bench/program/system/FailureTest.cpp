#include <gtest/gtest.h>

#include <system_error>

#include "bench/program/system/Failure.h"
#include "framework/kxscript.h"

namespace kxbench {
namespace {

TEST(OneLine, JoinsLines) {
  EXPECT_EQ(OneLine("no relay\r\n  card 2\n"), "no relay card 2");
  EXPECT_EQ(OneLine("a \n b"), "a b");
  EXPECT_EQ(OneLine("\n\na"), "a");
  EXPECT_EQ(OneLine("a  b"), "a  b");
  EXPECT_EQ(OneLine(""), "");
  EXPECT_EQ(OneLine("card\x1b[2J 2"), "card?[2J 2") << "a driver's text must not command the terminal";
}

std::string TextOf(const std::function<void()>& call) {
  try {
    CallExtension(call);
  } catch (const Failure& failure) {
    return failure.what();
  }
  return "nothing thrown";
}

TEST(CallExtension, TurnsEveryExceptionIntoAFailure) {
  EXPECT_EQ(TextOf([] { throw std::runtime_error("bus\nerror"); }), "bus error");
  EXPECT_EQ(TextOf([] { throw 42; }), "an exception of an unknown kind");
  EXPECT_EQ(TextOf([] {}), "nothing thrown");
}

TEST(CallExtension, KeepsTheColumnOfAScriptError) {
  try {
    CallExtension([] { throw TKXScriptError("unknown", 7); });
    FAIL() << "nothing thrown";
  } catch (const TKXScriptError& error) {
    EXPECT_EQ(error.Column(), 7U);
    EXPECT_STREQ(error.what(), "unknown");
  }
}

}  // namespace
}  // namespace kxbench
