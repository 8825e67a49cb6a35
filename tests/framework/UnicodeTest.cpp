#include <gtest/gtest.h>

#include "framework/Unicode.h"
#include "tests/bench/RowName.h"

namespace kx {
namespace {

using namespace std::string_literals;

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
    RowName<UnicodeRow>);

struct Bytes {
  const char* name;
  std::string bytes;
  bool valid;
};

class IsUtf8Row : public testing::TestWithParam<Bytes> {};
TEST_P(IsUtf8Row, IsJudged) { EXPECT_EQ(IsUtf8(GetParam().bytes), GetParam().valid); }

INSTANTIATE_TEST_SUITE_P(
    Sequences, IsUtf8Row,
    testing::Values(Bytes{"Empty", "", true}, Bytes{"Ascii", "abc", true}, Bytes{"Umlaut", "\xC3\xBC", true},
                    Bytes{"ThreeBytes", "\xE2\x82\xAC", true}, Bytes{"FourBytes", "\xF0\x9F\x94\x8C", true},
                    Bytes{"Largest", "\xF4\x8F\xBF\xBF", true}, Bytes{"TooLarge", "\xF4\x90\x80\x80", false},
                    Bytes{"Latin1",
                          "\xFC"
                          "ber",
                          false},
                    Bytes{"ContinuationAlone", "\x80", false}, Bytes{"CutOff", "\xE2\x82", false},
                    Bytes{"OverlongSlash", "\xC0\xAF", false}, Bytes{"OverlongThree", "\xE0\x80\xAF", false},
                    Bytes{"OverlongFour", "\xF0\x80\x80\xAF", false},
                    Bytes{"Surrogate", "\xED\xA0\x80", false}, Bytes{"NoLead", "\xFF", false}),
    RowName<Bytes>);

}  // namespace
}  // namespace kx
