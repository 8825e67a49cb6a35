// The system's 8-bit encoding where the locale names it.
#include "tests/text/EnvironmentFixture.h"
#include "text/SystemText.h"

namespace text_test {
namespace {

using shorttest::SystemTextToUtf8;

class SystemText : public EnvironmentTest {};

TEST_F(SystemText, IsUtf8WhereNoOtherLocaleIsThere) {
  for (const char* const locale : {"C", "POSIX", "C.UTF-8", "xx_XX.ISO-8859-15"}) {
    Set("LC_ALL", locale);
    EXPECT_EQ(SystemTextToUtf8("Kan\xC3\xA4le \xE2\x82\xAC"), "Kanäle €") << locale;
  }
}

TEST_F(SystemText, ThatIsNoUtf8IsWindows1252) {
  Set("LC_ALL", "C.UTF-8");
  EXPECT_EQ(SystemTextToUtf8("Kan\xE4le \x80 \xA4"), "Kanäle € ¤");
}

TEST_F(SystemText, MayBeEmpty) {
  Set("LC_ALL", "C.UTF-8");
  EXPECT_EQ(SystemTextToUtf8(""), "");
}

#ifdef LATIN9_LOCALES
TEST_F(SystemText, FollowsTheEncodingOfTheLocale) {
  Set("LOCPATH", LATIN9_LOCALES);
  Set("LC_ALL", "de_DE.ISO-8859-15");
  EXPECT_EQ(SystemTextToUtf8("Kan\xE4le \xA4"), "Kanäle €");
  // What reads as UTF-8 is Latin text here.
  EXPECT_EQ(SystemTextToUtf8("\xC3\xA4"), "Ã€");
}
#endif

}  // namespace
}  // namespace text_test
