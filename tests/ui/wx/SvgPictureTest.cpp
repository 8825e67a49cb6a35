#include <gmock/gmock.h>

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

}  // namespace
}  // namespace kxbench
