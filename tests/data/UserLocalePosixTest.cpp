#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <optional>
#include <string>

#include "data/UserLocale.h"

namespace data_test {
namespace {

// The locale of the test's environment, put back at the end.
class UserLocale : public testing::Test {
 protected:
  UserLocale() {
    if (const char* value = std::getenv("LC_ALL")) old_ = value;
  }
  ~UserLocale() override {
    if (old_) {
      setenv("LC_ALL", old_->c_str(), 1);
    } else {
      unsetenv("LC_ALL");
    }
  }

  static std::string SeparatorUnder(const char* locale) {
    setenv("LC_ALL", locale, 1);
    return shorttest::UserDecimalSeparator();
  }

 private:
  std::optional<std::string> old_;
};

TEST_F(UserLocale, WithoutALocaleItIsAPoint) {
  EXPECT_EQ(SeparatorUnder("C"), ".");
  EXPECT_EQ(SeparatorUnder("POSIX"), ".");
}

TEST_F(UserLocale, UnderALocaleThatIsNotInstalledItIsAPoint) {
  EXPECT_EQ(SeparatorUnder("xx_XX.UTF-8"), ".");
}

TEST_F(UserLocale, TheProcessKeepsItsOwnLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  SeparatorUnder("C.UTF-8");
  EXPECT_EQ(std::setlocale(LC_ALL, nullptr), before);
}

}  // namespace
}  // namespace data_test
