#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "text/SystemText.h"
#include "text/TextEncoding.h"
#include "text/UserLocale.h"

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

// A text as a program of this system writes it that knows nothing of Unicode.
std::string Ansi(const std::wstring& text) {
  char ansi[64] = {};
  BOOL lossy = FALSE;
  BOOL* const lossyIfKnown = GetACP() == CP_UTF8 ? nullptr : &lossy;
  EXPECT_GT(WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, ansi, sizeof ansi, nullptr, lossyIfKnown), 0);
  EXPECT_FALSE(lossy) << "this system's code page " << GetACP() << " has no umlauts";
  return ansi;
}

TEST(SystemTextOnWindows, IsInTheSystemsAnsiCodePage) {
  EXPECT_EQ(shorttest::SystemTextToUtf8(Ansi(L"Gerät antwortet nicht")), "Gerät antwortet nicht");
}

TEST(IniTextOnWindows, IsInTheSystemsAnsiCodePage) {
  EXPECT_EQ(shorttest::FileTextToUtf8(Ansi(L"[Scanner]\r\nRelais1=Tür groß")),
            "[Scanner]\r\nRelais1=Tür groß");
}

}  // namespace
