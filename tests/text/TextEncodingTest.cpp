#include <gtest/gtest.h>

#include "text/TextEncoding.h"

namespace shorttest {
namespace {

struct EncodingCase {
  const char* name;
  std::string bytes;
  const char* text;
};

// Adjacent literals keep an escape from swallowing the letters after it.
class Encoding : public ::testing::TestWithParam<EncodingCase> {};

TEST_P(Encoding, IsRecognised) { EXPECT_EQ(FileTextToUtf8(GetParam().bytes), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(
    Files, Encoding,
    ::testing::Values(EncodingCase{"Empty", "", ""}, EncodingCase{"Ascii", "a=1\r\n", "a=1\r\n"},
                      EncodingCase{"Utf8", "Tür 1 €", "Tür 1 €"},
                      EncodingCase{"Utf8WithMark", "\xEF\xBB\xBFTür", "Tür"},
                      EncodingCase{"MarkedUtf8WithABadByte",
                                   "\xEF\xBB\xBF"
                                   "a\xFC"
                                   "b",
                                   "a\uFFFDb"},
                      EncodingCase{"Windows1252", "T\xFCr", "Tür"},
                      EncodingCase{"Windows1252Euro", "\x80 \x84gut\x93", "€ „gut“"},
                      EncodingCase{"Windows1252LooksLikeCutUtf8", "\xC3", "Ã"},
                      EncodingCase{"OverlongIsNoUtf8", "\xC0\xAF", "À¯"},
                      EncodingCase{"SurrogateIsNoUtf8", "\xED\xA0\x80", "í\u00A0€"},
                      EncodingCase{"Utf16LittleEndian", std::string("\xFF\xFET\0\xFC\0r\0", 8), "Tür"},
                      EncodingCase{"Utf16BigEndian", std::string("\xFE\xFF\0T\0\xFC\0r", 8), "Tür"},
                      EncodingCase{"Utf16Pair", std::string("\xFF\xFE\x3D\xD8\x0A\xDC", 6), "\U0001F40A"},
                      EncodingCase{"Utf16LoneSurrogate", std::string("\xFF\xFE\x3D\xD8\x41\0", 6),
                                   "\uFFFD"
                                   "A"},
                      EncodingCase{"Utf16CutInHalf",
                                   std::string("\xFF\xFE"
                                               "A\0B",
                                               5),
                                   "A"}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace shorttest
