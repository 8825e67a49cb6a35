#include "text/UserLocale.h"

#ifdef _WIN32
#include <array>

#include "text/WideText.h"
#else
#include <langinfo.h>
#include <locale.h>
#endif

namespace shorttest {

#ifdef _WIN32

std::string UserDecimalSeparator() {
  std::array<wchar_t, 8> separator{};  // at most three characters and the terminator
  if (GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, LOCALE_SDECIMAL, separator.data(),
                      static_cast<int>(separator.size())) <= 1) {
    return ".";
  }
  return NarrowText(separator.data(), CP_UTF8);
}

#else

std::string UserDecimalSeparator() {
  // A locale object of our own: the process's locale belongs to the host.
  const locale_t user = newlocale(LC_NUMERIC_MASK | LC_CTYPE_MASK, "", nullptr);
  if (user == nullptr) return ".";
  const std::string separator = nl_langinfo_l(RADIXCHAR, user);
  freelocale(user);
  return separator.empty() ? "." : separator;
}

#endif

}  // namespace shorttest
