#include <gtest/gtest.h>

#include "tests/bench/RowName.h"
#include "ui/terminal/Printable.h"

namespace kxbench {
namespace {

struct Shown {
  const char* name;
  const char* text;
  const char* shown;
};

class PrintableText : public testing::TestWithParam<Shown> {};

TEST_P(PrintableText, DoesNothingToATerminal) { EXPECT_EQ(Printable(GetParam().text), GetParam().shown); }

INSTANTIATE_TEST_SUITE_P(
    Texts, PrintableText,
    testing::Values(Shown{"Plain", "Karte 2: Überlast, 5 €, \U0001F50C",
                          "Karte 2: Überlast, 5 €, \U0001F50C"},
                    Shown{"EscapeSequence", "\x1b[2Jgone", "?[2Jgone"}, Shown{"Bell", "a\ab", "a?b"},
                    Shown{"CarriageReturn", "FAIL\rPASS", "FAIL?PASS"}, Shown{"Delete", "a\x7f", "a?"},
                    Shown{"ControlBeyondAscii",
                          "a\xC2\x9B"
                          "2J",
                          "a?2J"},
                    Shown{"LastControlBeyondAscii", "\xC2\x9F\xC2\xA0", "?\xC2\xA0"},
                    Shown{"ByteThatIsNoUtf8",
                          "a\x9B"
                          "2J",
                          "a?2J"},
                    Shown{"CutCharacter", "a\xE2\x82", "a??"}, Shown{"OverlongSlash", "\xC0\xAF", "??"},
                    Shown{"Tab", "a\tb", "a b"}, Shown{"LineFeedStays", "a\nb\n", "a\nb\n"},
                    Shown{"Empty", "", ""}),
    RowName<Shown>);

TEST(PrintableText, NulIsAControlToo) { EXPECT_EQ(Printable(std::string_view("a\0b", 3)), "a?b"); }

}  // namespace
}  // namespace kxbench
