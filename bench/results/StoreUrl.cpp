#include "bench/results/StoreUrl.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <vector>

#include "text/Paths.h"

namespace kxbench::results {

namespace {

constexpr std::string_view Hidden = "***";
constexpr std::string_view Expected =
    "--results: expected sqlite:FILE or postgresql://[USER@]HOST[:PORT]/DATABASE";

/// A part of a URL.
struct Span {
  std::size_t begin;
  std::size_t end;
};

/// Where passwords stand in a URL: after the user's name, and as parameters. Everything up to the last '@' of
/// the host part is taken for the user's part: a password in which somebody forgot to write %40 is not shown.
std::vector<Span> PasswordsIn(const std::string& url) {
  std::vector<Span> found;
  const std::size_t host = std::min(url.find("://") + 3, url.size());
  // A password may hold '/' or '?' that should have been written as %2F or %3F.
  const std::size_t at = url.rfind('@');
  const std::size_t colon = url.find(':', host);
  if (at != std::string::npos && at > host && colon < at) found.push_back({colon + 1, at});

  const std::size_t query = url.find('?', at == std::string::npos ? host : at);
  for (std::size_t begin = query; begin < url.size();) {
    const std::size_t end = std::min(url.find('&', begin + 1), url.size());
    const std::size_t equals = std::min(url.find('=', begin), end);
    const std::string name = url.substr(begin + 1, equals - begin - 1);
    if ((name == "password" || name == "sslpassword") && equals < end) found.push_back({equals + 1, end});
    begin = end;
  }
  return found;
}

/// What a part of a URL stands for: %41 is A.
std::string Decoded(const std::string& text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escape = text[i] == '%' && i + 2 < text.size() &&
                        std::isxdigit(static_cast<unsigned char>(text[i + 1])) != 0 &&
                        std::isxdigit(static_cast<unsigned char>(text[i + 2])) != 0;
    if (!escape) {
      decoded += text[i];
      continue;
    }
    decoded += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
    i += 2;
  }
  return decoded;
}

void HideAll(std::string& text, const std::string& secret) {
  if (secret.empty()) return;
  for (std::size_t at = 0; (at = text.find(secret, at)) != std::string::npos; at += Hidden.size()) {
    text.replace(at, secret.size(), Hidden);
  }
}

}  // namespace

StoreUrl ReadStoreUrl(const std::string& url) {
  StoreUrl read;
  if (url.find('\0') != std::string::npos) throw std::runtime_error(std::string(Expected));
  if (url.starts_with("sqlite:")) {
    const std::string file = url.substr(7);
    if (file.empty()) throw std::runtime_error(std::string(Expected));
    read.kind = StoreUrl::Kind::Sqlite;
    read.file = shorttest::AbsolutePath(file);
    read.shown = "sqlite:" + shorttest::Utf8FromPath(read.file);
    return read;
  }
  if (!url.starts_with("postgresql://") && !url.starts_with("postgres://")) {
    throw std::runtime_error(std::string(Expected));
  }
  read.kind = StoreUrl::Kind::Postgresql;
  read.connection = url;
  read.shown = url;
  const std::vector<Span> passwords = PasswordsIn(url);
  for (auto span = passwords.rbegin(); span != passwords.rend(); ++span) {
    read.shown.replace(span->begin, span->end - span->begin, Hidden);
  }
  return read;
}

std::string WithoutSecrets(const std::string& text, const StoreUrl& url) {
  std::string shown = text;
  HideAll(shown, url.connection.empty() ? std::string() : url.connection);
  for (const Span& span : PasswordsIn(url.connection)) {
    const std::string secret = url.connection.substr(span.begin, span.end - span.begin);
    HideAll(shown, secret);
    HideAll(shown, Decoded(secret));
  }
  std::string line;
  for (const char c : shown) {
    const bool blank = c == '\n' || c == '\r' || c == '\t' || c == ' ';
    if (!blank) line += c;
    if (blank && !line.empty() && line.back() != ' ') line += ' ';
  }
  while (line.ends_with(' ')) line.pop_back();
  return line;
}

}  // namespace kxbench::results
