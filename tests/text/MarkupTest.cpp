#include <gtest/gtest.h>

#include <string_view>

#include "text/Markup.h"

namespace shorttest {
namespace {

TEST(MarkupText, EscapesMarkupAndDropsWhatXmlForbids) {
  EXPECT_EQ(MarkupText("a<b>&\"'"), "a&lt;b&gt;&amp;&quot;&#39;");
  EXPECT_EQ(MarkupText("\t\r\n"), "&#9;&#13;&#10;");
  EXPECT_EQ(MarkupText(std::string_view("\0\x1b", 2)), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(MarkupText("\xff\xEF\xBF\xBE"), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(MarkupText("Prüfling \xF0\x9F\x94\x8C"), "Prüfling \xF0\x9F\x94\x8C");
}

}  // namespace
}  // namespace shorttest
