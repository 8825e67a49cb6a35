#include "bench/results/OutputFiles.h"

#include <algorithm>
#include <string_view>

#include "text/FileAccess.h"
#include "text/LineFile.h"

namespace kxbench::results {

namespace {

constexpr std::pair<std::string_view, ResultFormat> FormatWordsOfResults[] = {
    {"json", ResultFormat::Json}, {"jsonl", ResultFormat::JsonLines}, {"junit", ResultFormat::JUnit},
    {"csv", ResultFormat::Csv},   {"html", ResultFormat::Html},
};

constexpr std::string_view IdPlace = "{id}";
constexpr std::string_view SerialPlace = "{serial}";

/// Longer names are refused by most file systems.
constexpr std::size_t MostSerialBytes = 100;

std::string InFileNames(const std::string& serial) {
  std::string name = serial.substr(0, MostSerialBytes);
  for (char& c : name) {
    const bool kept = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-';
    if (!kept) c = '_';
  }
  return name.empty() ? "_" : name;
}

void ReplaceAll(std::string& text, std::string_view what, const std::string& by) {
  for (std::size_t i = text.find(what); i != std::string::npos; i = text.find(what, i + by.size())) {
    text.replace(i, what.size(), by);
  }
}

std::string TextOf(ResultFormat format, const std::vector<ResultPage>& pages) {
  switch (format) {
    case ResultFormat::Json:
      return ResultsJson(pages);
    case ResultFormat::JUnit:
      return ResultsJUnit(pages);
    case ResultFormat::Csv:
      return ResultsCsv(pages);
    case ResultFormat::Html:
      return ResultsHtml(pages);
    case ResultFormat::JsonLines:
      break;
  }
  std::string lines;
  for (const ResultPage& page : pages) lines += ResultJsonLine(page.result) + "\n";
  return lines;
}

std::string TornLine(const std::string& name) {
  return "warning: the last line of " + name + " was not whole, as a crash leaves it; it is in " + name +
         ".torn now";
}

}  // namespace

bool OutputFile::Fixed() const {
  return name.find(IdPlace) == std::string::npos && name.find(SerialPlace) == std::string::npos;
}

std::string OutputFile::NameFor(const Result& result) const {
  std::string file = name;
  ReplaceAll(file, IdPlace, result.id);
  ReplaceAll(file, SerialPlace, InFileNames(result.serial));
  return file;
}

std::optional<OutputFile> ReadOutputFile(const std::string& text) {
  const std::size_t colon = text.find(':');
  if (colon == std::string::npos || colon + 1 == text.size()) return std::nullopt;
  for (const auto& [word, format] : FormatWordsOfResults) {
    if (text.compare(0, colon, word) == 0) return OutputFile{format, text.substr(colon + 1)};
  }
  return std::nullopt;
}

bool OutputFiles::Has(ResultFormat format) const {
  return std::any_of(files_.begin(), files_.end(),
                     [format](const OutputFile& file) { return file.format == format; });
}

std::vector<std::string> OutputFiles::Add(const ResultPage& page) {
  const bool kept = std::any_of(files_.begin(), files_.end(), [](const OutputFile& file) {
    return file.Fixed() && file.format != ResultFormat::JsonLines;
  });
  if (kept) pages_.push_back(page);
  std::vector<std::string> told;
  for (const OutputFile& file : files_) {
    const std::string name = file.NameFor(page.result);
    const std::filesystem::path path = shorttest::AbsolutePath(name);
    if (file.format == ResultFormat::JsonLines) {
      const std::string torn = shorttest::AppendLine(path, ResultJsonLine(page.result), ResultJsonLineStart);
      if (!torn.empty()) {
        told.push_back(TornLine(name));
      }
    } else if (file.Fixed()) {
      shorttest::ReplaceWholeFile(path, TextOf(file.format, pages_));
    } else {
      shorttest::ReplaceWholeFile(path, TextOf(file.format, {page}));
    }
  }
  return told;
}

}  // namespace kxbench::results
