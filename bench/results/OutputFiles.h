#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "bench/results/Outputs.h"

namespace kxbench::results {

enum class ResultFormat {
  Json,
  JsonLines,
  JUnit,
  Csv,
  Html,
};

/// A file that results are written to. In its name (UTF-8) {id} and {serial} stand for those of the result;
/// each result then has a file of its own, else the file holds all of them. JSON lines are appended to what
/// the file holds already; any other file is replaced, whole or not at all.
struct OutputFile {
  ResultFormat format;
  std::string name;

  /// The name is the same for every result.
  bool Fixed() const;

  /// The file of one result. What a file name cannot hold in every system has become an underscore in
  /// {serial}.
  std::string NameFor(const Result& result) const;
};

/// "FORMAT:FILE", with one of the words json, jsonl, junit, csv and html; nothing for anything else.
std::optional<OutputFile> ReadOutputFile(const std::string& text);

/// Writes results to files as they come.
class OutputFiles {
 public:
  explicit OutputFiles(std::vector<OutputFile> files) : files_(std::move(files)) {}

  bool Empty() const { return files_.empty(); }
  bool Has(ResultFormat format) const;

  /// Writes the result to every file and returns what to tell the user, a line each. Throws
  /// shorttest::FileError when one cannot be written; those before it hold the result then.
  std::vector<std::string> Add(const ResultPage& page);

 private:
  std::vector<OutputFile> files_;
  std::vector<ResultPage> pages_;  // for the files that hold all of them
};

}  // namespace kxbench::results
