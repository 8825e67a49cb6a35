#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kxbench {

/// One result record of a command, "Finding|lower|value|unit|upper|extra|": seven fields, the last one empty.
struct Record {
  std::string line;  ///< as received, UTF-8

  bool readable = false;  ///< seven fields, and numbers where numbers must be; else only `line` holds
  std::string text;
  std::string lowerText;
  std::string valueText;
  std::string unit;
  std::string upperText;
  std::optional<double> lower;  ///< none: no lower limit
  std::optional<double> value;
  std::optional<double> upper;  ///< none: no upper limit
};

/// Splits a record. Numbers may have a decimal comma or a decimal point. A limit that is neither empty nor a
/// number, and a value that is none although there is a limit, make the record unreadable.
Record ParseRecord(const std::string& line);

/// Reads a number with a decimal comma or point; no value when the text is anything else.
std::optional<double> NumberOf(const std::string& text);

/// True when a record's text reports a defect: it begins with "Spannung an Kanal ", "fehlende Verbindung
/// zwischen " or "Kurzschluss zwischen ".
bool TellsOfADefect(const std::string& text);

/// True when the record reports a defect, its value lies outside its limits, or it cannot be read, because
/// what cannot be read cannot be good.
bool IsFinding(const Record& record);

/// True for a count that is compared with its one allowed value, such as the two at the end of a check.
bool IsSummary(const Record& record);

}  // namespace kxbench
