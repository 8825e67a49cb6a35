#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "data/UserLocale.h"
#include "hardware/DriverText.h"

// The user's decimal separator and the system's 8-bit encoding, as Windows has them.

namespace {

// Another decimal separator in the user's settings, until the object goes.
class UserSetsDecimalSeparator {
 public:
  explicit UserSetsDecimalSeparator(const wchar_t* separator) {
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, before_, static_cast<int>(std::size(before_)));
    SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator);
  }
  ~UserSetsDecimalSeparator() { SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, before_); }
  UserSetsDecimalSeparator(const UserSetsDecimalSeparator&) = delete;
  UserSetsDecimalSeparator& operator=(const UserSetsDecimalSeparator&) = delete;

 private:
  wchar_t before_[8] = {};
};

struct Separator {
  const char* name;
  const wchar_t* set;
  const char* utf8;
};

class UserDecimalSeparator : public testing::TestWithParam<Separator> {};

TEST_P(UserDecimalSeparator, IsTheOneInTheUsersSettings) {
  const UserSetsDecimalSeparator setting(GetParam().set);
  EXPECT_EQ(shorttest::UserDecimalSeparator(), GetParam().utf8);
}

INSTANTIATE_TEST_SUITE_P(Settings, UserDecimalSeparator,
                         testing::Values(Separator{"Comma", L",", ","}, Separator{"Point", L".", "."},
                                         Separator{"ArabicComma", L"٫", "٫"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(DriverTextOnWindows, IsInTheSystemsAnsiCodePage) {
  const std::wstring text = L"Gerät antwortet nicht";
  char ansi[64] = {};
  BOOL lossy = FALSE;
  BOOL* const lossyIfKnown = GetACP() == CP_UTF8 ? nullptr : &lossy;
  ASSERT_GT(WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, ansi, sizeof ansi, nullptr, lossyIfKnown), 0);
  ASSERT_FALSE(lossy) << "this system's code page " << GetACP() << " has no umlauts";
  EXPECT_EQ(shorttest::SystemTextToUtf8(ansi), "Gerät antwortet nicht");
}

}  // namespace
