#include <gmock/gmock.h>
#include <wx/bitmap.h>
#include <wx/image.h>

#include <algorithm>
#include <string>

#include "ui/wx/SvgPicture.h"

namespace kxbench {
namespace {

using testing::IsEmpty;

TEST(SvgTexts, AreFoundWithTheirPlaceAndLook) {
  const auto texts = SvgTexts(
      "<svg width=\"10\" height=\"20\"><g><text x=\"1.5\" y=\"2\">a &lt;b&gt; &amp;</text>"
      "<text x=\"3\" y=\"4\" text-anchor=\"end\" font-size=\"15\" font-weight=\"bold\" "
      "fill=\"#b00020\">c</text></g></svg>");
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_EQ(texts[0].text, "a <b> &");
  EXPECT_EQ(texts[0].x, 1.5);
  EXPECT_EQ(texts[0].size, 11);
  EXPECT_FALSE(texts[0].bold);
  EXPECT_EQ(texts[1].anchor, SvgTextElement::Anchor::End);
  EXPECT_TRUE(texts[1].bold);
  EXPECT_EQ(texts[1].size, 15);
  EXPECT_EQ(texts[1].colour, 0xb00020U);
}

TEST(SvgTexts, OfADamagedDrawingAreNone) {
  for (const char* damaged : {"", "<text", "<text x=\"1\"", "<text x=\"1\">", "<text </text>"}) {
    EXPECT_THAT(SvgTexts(damaged), IsEmpty()) << damaged;
  }
}

TEST(SvgSize, IsThatOfTheFirstElement) {
  EXPECT_EQ(SvgSize("<svg width=\"480.5\" height=\"20\"><rect width=\"1\" height=\"1\"/>"), wxSize(481, 20));
  EXPECT_EQ(SvgSize("<svg>"), wxSize(0, 0));
}

/// Where a picture is dark, pixels; empty when it is nowhere.
wxRect Painted(const wxBitmap& bitmap) {
  const wxImage image = bitmap.ConvertToImage();
  wxRect painted;
  for (int y = 0; y < image.GetHeight(); ++y) {
    for (int x = 0; x < image.GetWidth(); ++x) {
      const int light = std::min({image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y)});
      if (light < 128) painted.Union(wxRect(x, y, 1, 1));
    }
  }
  return painted;
}

wxRect PaintedText(const std::string& attributes, const wxSize& room = {200, 100},
                   const std::string& text = "HHHH") {
  const std::string svg =
      "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"200\" height=\"100\" viewBox=\"0 0 200 100\">"
      "<rect width=\"200\" height=\"100\" fill=\"#ffffff\"/>"
      "<text x=\"100\" y=\"50\" font-size=\"20\"" +
      attributes + ">" + text + "</text></svg>";
  return Painted(SvgBitmap(svg, room));
}

TEST(SvgBitmap, ShowsTextsWhereTheyStand) {
  const wxRect start = PaintedText("");
  EXPECT_NEAR(start.GetLeft(), 100, 4);
  EXPECT_NEAR(start.GetBottom(), 50, 3);
  EXPECT_NEAR(start.height, 14, 4);
  EXPECT_GT(start.width, 30);
  const wxRect middle = PaintedText(" text-anchor=\"middle\"");
  EXPECT_NEAR(middle.GetLeft() + middle.width / 2, 100, 3);
  const wxRect end = PaintedText(" text-anchor=\"end\"");
  EXPECT_NEAR(end.GetRight(), 100, 4);
  EXPECT_NEAR(end.width, start.width, 2);
}

TEST(SvgBitmap, ScalesTexts) {
  const wxRect twice = PaintedText("", {400, 200});
  EXPECT_NEAR(twice.GetLeft(), 200, 6);
  EXPECT_NEAR(twice.GetBottom(), 100, 4);
  EXPECT_NEAR(twice.width, 2 * PaintedText("").width, 8);
}

TEST(SvgBitmap, HasNoTextsLargerThanItself) {
  const wxRect tiny = PaintedText("", {4, 2});
  EXPECT_LE(tiny.height, 1);
}

TEST(SvgBitmap, ShowsBoldTextsInTheirColour) {
  const auto widthOf = [](const std::string& attributes) {
    return PaintedText(attributes, {200, 100}, "llllllll").width;
  };
  EXPECT_GT(widthOf(" font-weight=\"bold\""), widthOf(""));
  EXPECT_EQ(PaintedText(" fill=\"#ffffff\"").width, 0);
}

}  // namespace
}  // namespace kxbench
