// The rules of UTF-8, and texts in UTF-16.

#include <gtest/gtest.h>

#include "tests/text/FileFixture.h"
#include "text/Utf8.h"

namespace text_test {
namespace {

using namespace std::string_literals;

using shorttest::AppendUtf8;
using shorttest::IsUtf8;
using shorttest::TakeByteOrderMark;
using shorttest::ToWellFormedUtf8;
using shorttest::Utf8CharacterSize;
using shorttest::Utf8FromUtf16;

struct CodePoint {
  const char* name;
  char32_t value;
  const char* utf8;
};

class AppendedCodePoint : public testing::TestWithParam<CodePoint> {};

TEST_P(AppendedCodePoint, IsUtf8) {
  std::string text = ".";
  AppendUtf8(text, GetParam().value);
  EXPECT_EQ(text, std::string(".") + GetParam().utf8);
}

// The first and the last of each length.
INSTANTIATE_TEST_SUITE_P(Lengths, AppendedCodePoint,
                         testing::Values(CodePoint{"FirstOfOne", 0x01, "\x01"},
                                         CodePoint{"LastOfOne", 0x7F, "\x7F"},
                                         CodePoint{"FirstOfTwo", 0x80, "\xC2\x80"},
                                         CodePoint{"LastOfTwo", 0x7FF, "\xDF\xBF"},
                                         CodePoint{"FirstOfThree", 0x800, "\xE0\xA0\x80"},
                                         CodePoint{"LastOfThree", 0xFFFF, "\xEF\xBF\xBF"},
                                         CodePoint{"FirstOfFour", 0x10000, "\xF0\x90\x80\x80"},
                                         CodePoint{"Last", 0x10FFFF, "\xF4\x8F\xBF\xBF"}),
                         CaseName());

struct UnicodeRow {
  const char* name;
  std::u16string utf16;
  std::string utf8;
};

class Utf8FromUtf16Row : public testing::TestWithParam<UnicodeRow> {};
TEST_P(Utf8FromUtf16Row, IsConverted) { EXPECT_EQ(Utf8FromUtf16(GetParam().utf16), GetParam().utf8); }

INSTANTIATE_TEST_SUITE_P(
    Characters, Utf8FromUtf16Row,
    testing::Values(UnicodeRow{"Empty", u"", ""}, UnicodeRow{"Ascii", u"Kanal 12|0,7|", "Kanal 12|0,7|"},
                    UnicodeRow{"TwoBytes", u"\u00FCber \u07FF",
                               "\xC3\xBC"
                               "ber \xDF\xBF"},
                    UnicodeRow{"ThreeBytes", u"\u2126 \uFFFD", "\xE2\x84\xA6 \xEF\xBF\xBD"},
                    UnicodeRow{"Pair", u"\U0001F50C", "\xF0\x9F\x94\x8C"},
                    UnicodeRow{"HighHalfAlone", u"a\xD83D"s, "a\xEF\xBF\xBD"},
                    UnicodeRow{"LowHalfAlone",
                               u"\xDD0C"
                               u"b"s,
                               "\xEF\xBF\xBD"
                               "b"},
                    UnicodeRow{"HighHalfTwice", u"\xD83D\xD83D\xDD0C"s, "\xEF\xBF\xBD\xF0\x9F\x94\x8C"}),
    CaseName());

struct Sequence {
  const char* name;
  std::string bytes;
  std::size_t size;  // of the character at the start; 0: none
};

class Utf8Sequence : public testing::TestWithParam<Sequence> {};

TEST_P(Utf8Sequence, HasItsSize) {
  EXPECT_EQ(Utf8CharacterSize(GetParam().bytes), GetParam().size);
  EXPECT_EQ(Utf8CharacterSize(GetParam().bytes + "x"), GetParam().size);
}

TEST_P(Utf8Sequence, MakesATextWellFormedOrNot) {
  EXPECT_EQ(IsUtf8("a" + GetParam().bytes + "b"), GetParam().size != 0);
}

TEST_P(Utf8Sequence, IsKeptOrReplaced) {
  const std::string kept = ToWellFormedUtf8("a" + GetParam().bytes + "b");
  EXPECT_TRUE(IsUtf8(kept));
  EXPECT_EQ(kept == "a" + GetParam().bytes + "b", GetParam().size != 0);
}

INSTANTIATE_TEST_SUITE_P(
    WellFormed, Utf8Sequence,
    testing::Values(Sequence{"Ascii", "~", 1}, Sequence{"FirstOfTwo", "\xC2\x80", 2},
                    Sequence{"Umlaut", "\xC3\xBC", 2}, Sequence{"LastOfTwo", "\xDF\xBF", 2},
                    Sequence{"FirstOfThree", "\xE0\xA0\x80", 3}, Sequence{"Euro", "\xE2\x82\xAC", 3},
                    Sequence{"BeforeTheSurrogates", "\xED\x9F\xBF", 3},
                    Sequence{"AfterTheSurrogates", "\xEE\x80\x80", 3},
                    Sequence{"FirstOfFour", "\xF0\x90\x80\x80", 4},
                    Sequence{"FourBytes", "\xF0\x9F\x94\x8C", 4}, Sequence{"Last", "\xF4\x8F\xBF\xBF", 4}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    IllFormed, Utf8Sequence,
    testing::Values(Sequence{"Latin1", "\xFC", 0}, Sequence{"ContinuationAlone", "\x80", 0},
                    Sequence{"CutAfterOne", "\xE2", 0}, Sequence{"CutAfterTwo", "\xE2\x82", 0},
                    Sequence{"CutAfterThree", "\xF0\x9F\x94", 0}, Sequence{"OverlongTwo", "\xC0\xAF", 0},
                    Sequence{"LargestOverlongTwo", "\xC1\xBF", 0},
                    Sequence{"OverlongThree", "\xE0\x9F\xBF", 0},
                    Sequence{"OverlongFour", "\xF0\x8F\xBF\xBF", 0}, Sequence{"Surrogate", "\xED\xA0\x80", 0},
                    Sequence{"TooLarge", "\xF4\x90\x80\x80", 0},
                    Sequence{"FarTooLarge", "\xF5\x80\x80\x80", 0}, Sequence{"NoLead", "\xFF", 0}),
    CaseName());

TEST(Utf8, AnEmptyTextHasNoCharacterAndIsWellFormed) {
  EXPECT_EQ(Utf8CharacterSize(""), 0U);
  EXPECT_TRUE(IsUtf8(""));
  EXPECT_EQ(ToWellFormedUtf8(""), "");
}

TEST(Utf8, EveryByteThatMeansNothingIsReplaced) {
  EXPECT_EQ(ToWellFormedUtf8("\xE2\x82z\xC3\xBC"), "\uFFFD\uFFFDz\u00FC");
}

TEST(Utf8, TheByteOrderMarkIsTakenFromTheFrontOnce) {
  std::string_view text = "\xEF\xBB\xBF\xEF\xBB\xBFx";
  EXPECT_TRUE(TakeByteOrderMark(text));
  EXPECT_EQ(text, "\xEF\xBB\xBFx");
  text = "\xEF\xBB";
  EXPECT_FALSE(TakeByteOrderMark(text));
  EXPECT_EQ(text, "\xEF\xBB");
}

}  // namespace
}  // namespace text_test
