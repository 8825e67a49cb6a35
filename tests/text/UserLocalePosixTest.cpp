#include <clocale>

#include "tests/text/EnvironmentFixture.h"
#include "text/UserLocale.h"

namespace text_test {
namespace {

class UserLocale : public EnvironmentTest {
 protected:
  std::string SeparatorUnder(const char* locale) {
    Set("LC_ALL", locale);
    return shorttest::UserDecimalSeparator();
  }
};

TEST_F(UserLocale, WithoutALocaleItIsAPoint) {
  EXPECT_EQ(SeparatorUnder("C"), ".");
  EXPECT_EQ(SeparatorUnder("POSIX"), ".");
}

#ifdef LATIN9_LOCALES
TEST_F(UserLocale, UnderAGermanLocaleItIsAComma) {
  Set("LOCPATH", LATIN9_LOCALES);
  EXPECT_EQ(SeparatorUnder("de_DE.ISO-8859-15"), ",");
}
#endif

TEST_F(UserLocale, UnderALocaleThatIsNotInstalledItIsAPoint) {
  EXPECT_EQ(SeparatorUnder("xx_XX.UTF-8"), ".");
}

TEST_F(UserLocale, TheProcessKeepsItsOwnLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  SeparatorUnder("C.UTF-8");
  EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

}  // namespace
}  // namespace text_test
