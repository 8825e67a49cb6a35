#include <gtest/gtest.h>

#include "text/SystemText.h"

namespace shorttest {
namespace {

struct CodePoint {
  const char* name;
  char32_t value;
  const char* utf8;
};

class Utf8 : public ::testing::TestWithParam<CodePoint> {};

TEST_P(Utf8, IsAppended) {
  std::string text = ".";
  AppendUtf8(text, GetParam().value);
  EXPECT_EQ(text, std::string(".") + GetParam().utf8);
}

// The first and the last of each length.
INSTANTIATE_TEST_SUITE_P(Lengths, Utf8,
                         ::testing::Values(CodePoint{"FirstOfOne", 0x01, "\x01"},
                                           CodePoint{"LastOfOne", 0x7F, "\x7F"},
                                           CodePoint{"FirstOfTwo", 0x80, "\xC2\x80"},
                                           CodePoint{"LastOfTwo", 0x7FF, "\xDF\xBF"},
                                           CodePoint{"FirstOfThree", 0x800, "\xE0\xA0\x80"},
                                           CodePoint{"LastOfThree", 0xFFFF, "\xEF\xBF\xBF"},
                                           CodePoint{"FirstOfFour", 0x10000, "\xF0\x90\x80\x80"},
                                           CodePoint{"Last", 0x10FFFF, "\xF4\x8F\xBF\xBF"}),
                         [](const auto& row) { return row.param.name; });

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
