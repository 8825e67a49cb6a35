#include "simulator/DescriptionReader.h"

#include <set>

#include "simulator/DescriptionBuilder.h"
#include "simulator/DescriptionLimits.h"
#include "text/FileAccess.h"
#include "text/Lines.h"
#include "text/Paths.h"
#include "text/Utf8.h"

namespace simulator {
namespace {

constexpr std::string_view Include = "include";

const char* CauseOf(const shorttest::FileError& error) {
  if (error.code() == std::errc::no_such_file_or_directory) return "there is no such file";
  if (error.code() == std::errc::is_a_directory) return "it is a directory";
  if (error.code() == std::errc::file_too_large) return "it is too large";
  return error.FailedStep() == shorttest::FileError::Step::Open ? "it cannot be opened" : "reading failed";
}

/// The whole file; `position` is where it is asked for.
std::string FileText(const std::filesystem::path& path, const Position& position) {
  try {
    return shorttest::ReadWholeFile(path, MaxFileBytes, shorttest::ReadFrom::Anything);
  } catch (const shorttest::FileError& error) {
    const std::string what = position.line > 0 ? "'" + shorttest::Utf8FromPath(path) + "' " : std::string();
    ThrowMistake(position, what + "cannot be read: " + CauseOf(error));
  }
}

class Reader {
 public:
  /// Reads one text; `folder` is where the files that it includes are looked for.
  void ReadText(std::string_view text, const std::string& name, const std::filesystem::path& folder) {
    shorttest::TakeByteOrderMark(text);
    std::set<std::string_view> settings;
    for (int lineNumber = 1; !text.empty(); ++lineNumber) {
      const std::string_view line = shorttest::TakeLine(text, shorttest::LineEnds::LineFeed).text;
      if (!shorttest::IsUtf8(line)) ThrowMistake({name, lineNumber, 1}, "the line is not UTF-8");
      const Words words = SplitLine(line, name, lineNumber);
      if (!words.empty()) CarryOut(words, folder, settings);
    }
  }

  DeviceDescription Finish() { return builder_.Finish(); }

 private:
  void CarryOut(const Words& words, const std::filesystem::path& folder,
                std::set<std::string_view>& settings) {
    const Word& keyword = words.front();
    if (++statements_ > MaxStatements) {
      ThrowMistake(keyword.position, "more than " + std::to_string(MaxStatements) + " statements");
    }
    if (keyword.text == Include && !keyword.quoted) {
      ReadIncluded(words, folder);
      return;
    }
    const Statement* statement = keyword.quoted ? nullptr : DescriptionBuilder::FindStatement(keyword.text);
    if (statement == nullptr) ThrowMistake(keyword.position, "unknown keyword '" + keyword.text + "'");
    const bool tooMany = statement->maxWords != 0 && words.size() > statement->maxWords;
    if (words.size() < statement->minWords || tooMany) {
      ThrowMistake(tooMany ? words[statement->maxWords].position : keyword.position,
                   "expected: " + std::string(statement->usage));
    }
    if (statement->oncePerFile && !settings.insert(statement->keyword).second) {
      ThrowMistake(keyword.position, "'" + keyword.text + "' is given twice in this file");
    }
    (builder_.*statement->carryOut)(words);
  }

  void ReadIncluded(const Words& words, const std::filesystem::path& folder) {
    if (words.size() != 2) ThrowMistake(words.front().position, "expected: include FILE");
    if (depth_ == MaxIncludeDepth) {
      ThrowMistake(words.front().position,
                   "files include each other more than " + std::to_string(MaxIncludeDepth) + " deep");
    }
    if (++includes_ > MaxIncludes) {
      ThrowMistake(words.front().position,
                   "more than " + std::to_string(MaxIncludes) + " files are included");
    }
    const std::filesystem::path path = folder / shorttest::PathFromUtf8(words[1].text);
    const std::string text = FileText(path, words[1].position);
    includedBytes_ += text.size();
    if (includedBytes_ > MaxTextBytes) {
      ThrowMistake(words.front().position,
                   "the included files hold more than " + std::to_string(MaxTextBytes) + " bytes");
    }
    ++depth_;
    ReadText(text, shorttest::Utf8FromPath(path), path.parent_path());
    --depth_;
  }

  DescriptionBuilder builder_;
  int depth_ = 0;
  int includes_ = 0;
  std::size_t includedBytes_ = 0;
  int statements_ = 0;
};

}  // namespace

DeviceDescription ReadDeviceDescription(const std::filesystem::path& path) {
  const std::string name = shorttest::Utf8FromPath(path);
  const std::string text = FileText(path, {name, 0, 0});
  Reader reader;
  reader.ReadText(text, name, path.parent_path());
  return reader.Finish();
}

DeviceDescription ParseDeviceDescription(std::string_view text, const std::string& name) {
  Reader reader;
  reader.ReadText(text, name, {});
  return reader.Finish();
}

}  // namespace simulator
