#include <gmock/gmock.h>

#include "plugin/hardware/Bus.h"
#include "plugin/hardware/DriverText.h"
#include "tests/support/Bench.h"

namespace shorttest::testkit {
namespace {

using ::testing::HasSubstr;

struct Text {
  const char* name;
  const char* bytes;
  const char* utf8;
};

class DriverText : public Bench, public ::testing::WithParamInterface<Text> {};

TEST_P(DriverText, ReachesTheMessageAndIsFreed) {
  driver.PendingError(GetParam().bytes);
  EXPECT_EQ(HardwareErrorOf([] { CheckHWError(); }), GetParam().utf8);
  EXPECT_EQ(log.Text(), "error?\ntext\nfree\n");
}

#ifndef _WIN32
// The 8-bit encoding of a system that is not Windows is UTF-8, unless the locale names another.
INSTANTIATE_TEST_SUITE_P(Utf8, DriverText,
                         ::testing::Values(Text{"UpToFourBytes",
                                                "Kan\xC3\xA4le \xE2\x82\xAC \xF0\x9F\x94\x8C", "Kanäle € 🔌"}),
                         [](const auto& row) { return row.param.name; });
#endif

INSTANTIATE_TEST_SUITE_P(
    Encodings, DriverText,
    ::testing::Values(Text{"Ascii", "Bus error 12", "Bus error 12"},
                      Text{"Windows1252Umlauts",
                           "Kan\xE4le \xFC"
                           "berlastet, \xDF",
                           "Kanäle überlastet, ß"},
                      Text{"Windows1252Specials", "\x80 \x84quoted\x93 \x96 \x99", "€ „quoted“ – ™"},
                      Text{"Windows1252Last", "\x9E\x9F\xA0\xFF", "žŸ\u00A0ÿ"},
                      Text{"Windows1252Unassigned", "\x81\x8D\x8F\x90\x9D", "\u0081\u008D\u008F\u0090\u009D"},
                      Text{"CutInTheMiddleOfACharacter", "Kan\xC3", "KanÃ"}),
    [](const auto& row) { return row.param.name; });

class DriverTextTest : public Bench {};

TEST_F(DriverTextTest, AnEmptyTextIsAnEmptyMessageAndFreed) {
  driver.PendingError("");
  try {
    CheckHWError();
    ADD_FAILURE() << "the pending error was not raised";
  } catch (const TShortTestHWException& error) {
    EXPECT_STREQ(error.what(), "");
  }
  EXPECT_EQ(log.Text(), "error?\ntext\nfree\n");
}

TEST_F(DriverTextTest, ADriverWithoutATextStillRaises) {
  driver.PendingError("never seen");
  driver.NullText();
  EXPECT_THAT(HardwareErrorOf([] { CheckHWError(); }), HasSubstr("ohne Text"));
  EXPECT_EQ(log.Text(), "error?\ntext\n");  // there is nothing to give back
}

TEST_F(DriverTextTest, ALongTextIsKeptWhole) {
  const std::string text(100'000, '\xE4');
  driver.PendingError(text);
  EXPECT_EQ(HardwareErrorOf([] { CheckHWError(); }).size(), 200'000U);
}

}  // namespace
}  // namespace shorttest::testkit
