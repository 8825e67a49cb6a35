#include <gtest/gtest.h>

#include "text/SystemText.h"

namespace shorttest {
namespace {

TEST(Windows1252, IsAsciiLatinAndTheSpecialsBetween) {
  EXPECT_EQ(Windows1252ToUtf8("az\x7F\xA0\xE4\xFF"), "az\x7F\u00A0äÿ");
  EXPECT_EQ(Windows1252ToUtf8("\x80 \x84quoted\x93 \x9F"), "€ „quoted“ Ÿ");
}

TEST(Windows1252, KeepsBytesWithoutACharacter) {
  EXPECT_EQ(Windows1252ToUtf8("\x81\x8D\x8F\x90\x9D"), "\u0081\u008D\u008F\u0090\u009D");
}

TEST(Windows1252, MayBeEmpty) { EXPECT_EQ(Windows1252ToUtf8(""), ""); }

}  // namespace
}  // namespace shorttest
