#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "contracts/Export.h"

namespace kx {

enum class TokenKind { Name, String, Integer, Plus, Open, Close, Comma, Colon, Semicolon, End };

struct Token {
  TokenKind kind = TokenKind::End;
  std::string text;          ///< the name as written, or the string that a literal stands for
  std::int64_t integer = 0;  ///< value of an integer literal
  std::size_t begin = 0;     ///< byte offset of the token in the text
  std::size_t end = 0;       ///< byte offset of what follows it
};

enum class Comments { Refused, AtEndOfLine };

/// Splits one line of the script language into tokens. Strings stand in double quotes, in which a doubled
/// quote stands for one; a backslash is a character like any other, because Windows paths are full of them.
class KX_API ScriptLexer {
 public:
  /// `text` must outlive the lexer. Throws TKXScriptError when the text begins with no token.
  explicit ScriptLexer(std::string_view text, Comments comments = Comments::Refused);

  const Token& Current() const { return current_; }

  /// Goes on to the next token; stays at End. Throws TKXScriptError at a character that begins no token.
  void Advance();

  /// The current token, which must be of `kind`, and goes on. Throws TKXScriptError "expected `what`"
  /// otherwise.
  Token Take(TokenKind kind, const std::string& what);

  /// Throws TKXScriptError at the current token: "expected `what`, found ...".
  [[noreturn]] void FailExpected(const std::string& what) const;

  /// Throws TKXScriptError with the column of byte `offset`.
  [[noreturn]] void FailAt(std::size_t offset, const std::string& message) const;

  /// Column of the current token, from 1, in characters.
  std::size_t CurrentColumn() const;

  /// The text between two byte offsets.
  std::string_view Slice(std::size_t begin, std::size_t end) const {
    return text_.substr(begin, end - begin);
  }

 private:
  void ReadString();
  void ReadInteger();
  void ReadName();

  std::string_view text_;
  Comments comments_;
  std::size_t position_ = 0;
  Token current_;
};

/// Column (from 1, in characters) of byte `offset` in the UTF-8 text `text`.
KX_API std::size_t ColumnOf(std::string_view text, std::size_t offset);

/// The literal that stands for `text`: in double quotes, quotes in it doubled.
KX_API std::string QuoteLiteral(std::string_view text);

}  // namespace kx
