#include "framework/ScriptLexer.h"

#include <charconv>
#include <system_error>

#include "framework/kxscript.h"

namespace kx {

namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsNameStart(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool IsNamePart(char c) { return IsNameStart(c) || IsDigit(c); }

/// The character at `offset` with the bytes that continue it in UTF-8.
std::string CharacterAt(std::string_view text, std::size_t offset) {
  std::size_t end = offset + 1;
  while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) ++end;
  return std::string(text.substr(offset, end - offset));
}

}  // namespace

std::size_t ColumnOf(std::string_view text, std::size_t offset) {
  std::size_t column = 1;
  for (std::size_t i = 0; i < offset && i < text.size(); ++i) {
    const bool continues = (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
    if (!continues) ++column;
  }
  return column;
}

std::string QuoteLiteral(std::string_view text) {
  std::string literal = "\"";
  for (const char c : text) {
    if (c == '"') literal += '"';
    literal += c;
  }
  literal += '"';
  return literal;
}

ScriptLexer::ScriptLexer(std::string_view text, Comments comments) : text_(text), comments_(comments) {
  Advance();
}

void ScriptLexer::Advance() {
  while (position_ < text_.size() && IsBlank(text_[position_])) ++position_;
  current_ = Token{};
  current_.begin = position_;
  current_.end = position_;
  const bool comment = comments_ == Comments::AtEndOfLine && text_.substr(position_).starts_with("//");
  if (comment || position_ == text_.size()) return;

  const char c = text_[position_];
  if (c == '"') return ReadString();
  if (IsDigit(c)) return ReadInteger();
  if (IsNameStart(c)) return ReadName();

  switch (c) {
    case '+':
      current_.kind = TokenKind::Plus;
      break;
    case '(':
      current_.kind = TokenKind::Open;
      break;
    case ')':
      current_.kind = TokenKind::Close;
      break;
    case ',':
      current_.kind = TokenKind::Comma;
      break;
    case ':':
      current_.kind = TokenKind::Colon;
      break;
    case ';':
      current_.kind = TokenKind::Semicolon;
      break;
    default:
      FailAt(position_, "unexpected character '" + CharacterAt(text_, position_) + "'");
  }
  current_.end = ++position_;
}

void ScriptLexer::ReadString() {
  const std::size_t begin = position_++;
  current_.kind = TokenKind::String;
  for (;; ++position_) {
    if (position_ == text_.size()) FailAt(begin, "the string is not closed");
    if (text_[position_] == '"') {
      const bool doubled = position_ + 1 < text_.size() && text_[position_ + 1] == '"';
      if (!doubled) break;
      ++position_;
    }
    current_.text += text_[position_];
  }
  current_.end = ++position_;
}

void ScriptLexer::ReadInteger() {
  const std::size_t begin = position_;
  while (position_ < text_.size() && IsDigit(text_[position_])) ++position_;
  // "12abc" is neither a number nor a name, and must not become two tokens side by side.
  if (position_ < text_.size() && IsNamePart(text_[position_])) {
    FailAt(position_, "unexpected character '" + CharacterAt(text_, position_) + "' in a number");
  }
  current_.kind = TokenKind::Integer;
  current_.end = position_;
  const auto [end, error] = std::from_chars(text_.data() + begin, text_.data() + position_, current_.integer);
  if (error != std::errc()) FailAt(begin, "the number is too large");
}

void ScriptLexer::ReadName() {
  const std::size_t begin = position_;
  while (position_ < text_.size() && IsNamePart(text_[position_])) ++position_;
  current_.kind = TokenKind::Name;
  current_.text = std::string(text_.substr(begin, position_ - begin));
  current_.end = position_;
}

Token ScriptLexer::Take(TokenKind kind, const std::string& what) {
  if (current_.kind != kind) FailExpected(what);
  Token taken = current_;
  Advance();
  return taken;
}

std::size_t ScriptLexer::CurrentColumn() const { return ColumnOf(text_, current_.begin); }

void ScriptLexer::FailExpected(const std::string& what) const {
  const std::string found = current_.kind == TokenKind::End
                                ? "the end of the line"
                                : "'" + std::string(Slice(current_.begin, current_.end)) + "'";
  FailAt(current_.begin, "expected " + what + ", found " + found);
}

void ScriptLexer::FailAt(std::size_t offset, const std::string& message) const {
  throw TKXScriptError(message, ColumnOf(text_, offset));
}

}  // namespace kx
