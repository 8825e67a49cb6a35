#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kxbench::results {

enum class Verdict {
  Pass,
  Fail,
  Error,      ///< the check could not run, or its result could not be stored
  Cancelled,  ///< by the user
};

/// "pass", "fail", "error", "cancelled": the words of every output and of the database.
std::string_view VerdictWord(Verdict verdict);

/// The verdict that a word stands for; none for any other word.
std::optional<Verdict> VerdictOf(std::string_view word);

/// One record of the plug-in, as it was sent. Texts are UTF-8.
struct ResultRecord {
  std::string line;  ///< all of it, byte for byte
  std::string text;  ///< its first field; the whole line when the record cannot be read
  std::optional<double> value;
  std::optional<double> lower;  ///< none: no lower limit
  std::optional<double> upper;
  std::string unit;
  bool finding = false;
};

/// One fault of the diagnosis.
struct ResultFault {
  std::string kind;                    ///< the diagnosis' word: "open", "plugs-exchanged"
  std::vector<std::int32_t> channels;  ///< ascending
  std::string text;                    ///< as a person reads it
};

/// One of the nets that the expectation wants, and whether the check found something wrong with it.
struct ExpectedNet {
  std::vector<std::int32_t> channels;  ///< ascending
  std::string label;                   ///< "1 (A1-L), 14 (B1-L)"
  std::vector<std::string> findings;   ///< the records' texts that name a channel of it
};

/// All that is known of one check. Texts are UTF-8; what is not known is empty.
struct Result {
  std::string id;  ///< UUID, version 4, lower case: see NewId
  std::chrono::sys_time<std::chrono::milliseconds> started;
  double seconds = 0;
  std::int64_t checks = 1;  ///< of a series that is one result: how many were made until this one
  Verdict verdict = Verdict::Error;
  std::string serial;
  std::string part;
  std::string operatorName;
  std::string station;
  std::string expectation;        ///< file name, without its folder
  std::string expectationSha256;  ///< of the file's bytes, lower-case hexadecimal
  std::string programVersion;
  std::string pluginVersion;
  std::string driver;  ///< the driver library's file
  std::string driverGeneration;
  std::string cards;  ///< how many the driver says it has
  std::vector<ResultRecord> records;
  std::vector<ExpectedNet> nets;
  bool diagnosed = false;  ///< whether a diagnosis was made; it may have found no fault
  std::vector<ResultFault> faults;
  std::string error;  ///< why the check could not run
};

/// A new identifier from the system's source of random numbers. Throws std::runtime_error when it fails.
std::string NewId();

/// UTC, ISO 8601 with milliseconds: "2026-11-22T08:15:30.125Z".
std::string TimeText(std::chrono::sys_time<std::chrono::milliseconds> time);

}  // namespace kxbench::results
