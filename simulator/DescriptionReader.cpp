#include "simulator/DescriptionReader.h"

#include <fstream>
#include <iterator>
#include <set>

#include "simulator/DescriptionBuilder.h"
#include "simulator/SystemText.h"

namespace simulator {
namespace {

constexpr int MaxIncludeDepth = 8;
constexpr std::size_t MaxFileSize = std::size_t{4} << 20U;
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view Include = "include";

/// The whole file; `position` is where it is asked for.
std::string FileText(const std::filesystem::path& path, const Position& position) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  const auto fail = [&](const std::string& why) {
    const std::string what = position.line > 0 ? "'" + Utf8FromPath(path) + "' " : std::string();
    ThrowMistake(position, what + "cannot be read: " + why);
  };
  if (!std::filesystem::exists(status)) fail("there is no such file");
  if (std::filesystem::is_directory(status)) fail("it is a directory");
  std::ifstream file(path, std::ios::binary);
  if (!file) fail("it cannot be opened");
  std::string text(MaxFileSize + 1, '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (file.bad()) fail("reading failed");
  text.resize(static_cast<std::size_t>(file.gcount()));
  if (text.size() > MaxFileSize) fail("it is too large");
  return text;
}

class Reader {
 public:
  /// Reads one text; `folder` is where the files that it includes are looked for.
  void ReadText(std::string_view text, const std::string& name, const std::filesystem::path& folder) {
    if (text.starts_with(ByteOrderMark)) text.remove_prefix(ByteOrderMark.size());
    std::set<std::string_view> settings;
    for (int lineNumber = 1; !text.empty(); ++lineNumber) {
      const std::size_t end = std::min(text.find('\n'), text.size());
      std::string_view line = text.substr(0, end);
      text.remove_prefix(std::min(end + 1, text.size()));
      if (line.ends_with('\r')) line.remove_suffix(1);
      if (!IsUtf8(line)) ThrowMistake({name, lineNumber, 1}, "the line is not UTF-8");
      const Words words = SplitLine(line, name, lineNumber);
      if (!words.empty()) CarryOut(words, folder, settings);
    }
  }

  DeviceDescription Finish() { return builder_.Finish(); }

 private:
  void CarryOut(const Words& words, const std::filesystem::path& folder,
                std::set<std::string_view>& settings) {
    const Word& keyword = words.front();
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
    const std::filesystem::path path = folder / PathFromUtf8(words[1].text);
    const std::string text = FileText(path, words[1].position);
    ++depth_;
    ReadText(text, Utf8FromPath(path), path.parent_path());
    --depth_;
  }

  DescriptionBuilder builder_;
  int depth_ = 0;
};

}  // namespace

DeviceDescription ReadDeviceDescription(const std::filesystem::path& path) {
  const std::string name = Utf8FromPath(path);
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
