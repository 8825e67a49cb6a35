#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shorttest {

/// The text of an ini file: key=value lines in bracketed sections, read and changed in place. Everything that
/// is not asked for stays as it is: other sections and keys, comments, blank lines, order, line ends. Names
/// of sections and keys are not case-sensitive; of two equal ones the first counts. Lines that begin with ';'
/// are comments. Blanks around a value, and one pair of quotes enclosing it, do not belong to it.
class IniText {
 public:
  /// Takes the file's content; lines end with CRLF, LF or CR. A UTF-8 byte order mark at the start is kept
  /// and skipped.
  explicit IniText(std::string_view content);

  /// The value, or no value when the section or the key is missing.
  std::optional<std::string> Find(std::string_view section, std::string_view key) const;

  /// The value as text, number or integer; `fallback` when it is missing or cannot be read as its type.
  std::string ReadString(std::string_view section, std::string_view key, const std::string& fallback) const;
  std::int32_t ReadInteger(std::string_view section, std::string_view key, std::int32_t fallback) const;
  double ReadFloat(std::string_view section, std::string_view key, double fallback) const;

  /// Replaces the value in its line, or adds the key at the end of its section, or the section at the end of
  /// the file. Lines written end with CRLF.
  void WriteString(std::string_view section, std::string_view key, const std::string& value);
  void WriteInteger(std::string_view section, std::string_view key, std::int32_t value);
  void WriteFloat(std::string_view section, std::string_view key, double value);

  /// Removes every section of that name: its header and all lines up to the next header.
  void EraseSection(std::string_view section);

  /// Adds a line, ended with CRLF, at the end of the file.
  void AppendLine(const std::string& line);

  /// The whole content as it stands now.
  std::string Content() const;

 private:
  struct Line {
    std::string text;
    std::string end;  // line break as found; empty only for a last line without one
  };

  std::optional<std::size_t> FindSection(std::string_view section) const;
  std::size_t SectionEnd(std::size_t header) const;
  std::optional<std::size_t> FindKey(std::string_view section, std::string_view key) const;

  std::string byteOrderMark_;
  std::vector<Line> lines_;
};

}  // namespace shorttest
