#include <gmock/gmock.h>

#include "bench/drawing/DrawingText.h"

namespace kxbench::drawing {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(DrawingText, ShortTextsStayAndLongOnesEndInDots) {
  EXPECT_EQ(Shortened("X1", 10), "X1");
  EXPECT_EQ(Shortened("WWWWWWWWWW", 4.1), "WWW…");
  EXPECT_LE(TextWidth(Shortened("Rückfahrscheinwerfer", 6)), 6);
  EXPECT_EQ(Shortened("", 0), "");
}

TEST(DrawingText, NamesThatBeginAlikeAreShortenedApart) {
  const std::string left = "Kombiinstrument, Sitz links vorne";
  const std::string right = "Kombiinstrument, Sitz rechts vorne";
  EXPECT_EQ(ShortenedApart(left, {left, "Heckleuchte"}, 8), Shortened(left, 8));
  const std::string a = ShortenedApart(left, {left, right}, 8);
  const std::string b = ShortenedApart(right, {left, right}, 8);
  EXPECT_NE(a, b);
  for (const std::string& text : {a, b}) EXPECT_THAT(text, testing::HasSubstr("…"));
  EXPECT_EQ(ShortenedInside("WWWWWWWWW1", 4.8), "W…WW1");
  EXPECT_EQ(ShortenedInside("X1", 4), "X1");
  for (double ems = 0; ems < 20; ems += 0.5)
    EXPECT_LE(TextWidth(ShortenedInside(left, ems)), std::max(ems, 1.1));
}

TEST(DrawingText, AMarkStaysOnItsLetter) {
  // u with a combining diaeresis fits as a whole or not at all.
  const std::string letter = "u\xCC\x88";
  for (double room = 1.1; room < 4; room += 0.1) {
    const std::string text = Shortened(letter + letter + letter + letter + letter + letter, room);
    const std::string kept = text.substr(0, text.size() - 3);
    EXPECT_EQ(kept.size() % letter.size(), 0U) << room;
  }
}

TEST(DrawingText, LinesAreBrokenAtBlanks) {
  EXPECT_THAT(Wrapped("one two three", 5), ElementsAre("one two", "three"));
  EXPECT_THAT(Wrapped("WWWWWWWWWW a", 4.1), ElementsAre("WWW…", "a"));
  EXPECT_THAT(Wrapped("  ", 4), IsEmpty());
}

TEST(DrawingText, XmlHasNoForeignCharacters) {
  EXPECT_EQ(XmlText("a<b>&\"'"), "a&lt;b&gt;&amp;&quot;&#39;");
  EXPECT_EQ(XmlText(std::string("a\0\x1b\x7f", 4)), "a   ");
  EXPECT_EQ(XmlText("\xC2\x85"), " ");
  EXPECT_EQ(XmlText("\xEF\xBF\xBF\xFF"), "\uFFFD\uFFFD");
  EXPECT_EQ(XmlText("\u202Eabc"), "\uFFFDabc");
  EXPECT_EQ(XmlText("Öl 接地 😀"), "Öl 接地 😀");
}

TEST(DrawingText, NumbersHaveTwoDecimalsAtMost) {
  EXPECT_EQ(Coordinate(0), "0");
  EXPECT_EQ(Coordinate(12.5), "12.5");
  EXPECT_EQ(Coordinate(12.05), "12.05");
  EXPECT_EQ(Coordinate(-0.254), "-0.25");
  EXPECT_EQ(Coordinate(1999.999), "2000");
  EXPECT_EQ(Coordinate(-0.001), "0");
}

}  // namespace
}  // namespace kxbench::drawing
