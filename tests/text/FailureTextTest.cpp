#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

#include "text/FailureText.h"

namespace shorttest {
namespace {

TEST(FailureText, IsEmptyWhenNothingFailed) {
  bool done = false;
  EXPECT_EQ(FailureText([&] { done = true; }), "");
  EXPECT_TRUE(done);
}

TEST(FailureText, IsWhatAnExceptionSays) {
  EXPECT_EQ(FailureText([] { throw std::runtime_error("no driver"); }), "no driver");
}

TEST(FailureText, NamesTheLackOfMemoryInWords) {
  EXPECT_EQ(FailureText([] { throw std::bad_alloc(); }), "out of memory");
}

TEST(FailureText, LetsNothingElseThrough) {
  EXPECT_EQ(FailureText([] { throw 7; }), "an exception of an unknown kind");
}

}  // namespace
}  // namespace shorttest
