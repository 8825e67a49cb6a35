#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

#include "text/NumberText.h"

namespace text_test {

/// Lines as files of this system hold them: every one ended with carriage return and line feed.
inline std::string Lines(std::initializer_list<std::string_view> lines) {
  std::string text;
  for (const std::string_view line : lines) text.append(line).append("\r\n");
  return text;
}

inline std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with) {
  std::string replaced;
  for (std::size_t at = text.find(what); at != std::string_view::npos; at = text.find(what)) {
    replaced.append(text.substr(0, at)).append(with);
    text.remove_prefix(at + what.size());
  }
  return replaced.append(text);
}

/// How often `what` stands in `text`.
inline int Count(std::string_view text, std::string_view what) {
  int count = 0;
  for (std::size_t at = text.find(what); at != std::string_view::npos;
       at = text.find(what, at + what.size())) {
    ++count;
  }
  return count;
}

/// A folder for the files of one test, gone with it. Decimal separator is the point unless the test says
/// otherwise, whatever the locale of whoever runs it.
class FileTest : public testing::Test {
 protected:
  FileTest() {
    std::random_device random;
    folder_ = std::filesystem::path(testing::TempDir()) / ("shorttest-" + std::to_string(random()));
    std::filesystem::create_directories(folder_);
    UseDecimalSeparator(".");
  }
  ~FileTest() override {
    shorttest::SetDecimalSeparator(std::nullopt);
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  static void UseDecimalSeparator(const std::string& separator) { shorttest::SetDecimalSeparator(separator); }

  const std::filesystem::path& Folder() const { return folder_; }

  std::filesystem::path Path(const std::string& name) const {
    return folder_ / std::filesystem::path(std::u8string(name.begin(), name.end()));
  }

  /// The file's full name in UTF-8, as the data's operations take it.
  std::string Name(const std::string& name) const {
    const std::u8string text = Path(name).u8string();
    return {text.begin(), text.end()};
  }

  /// A file of its own, not the old one overwritten: some file systems flush those to the disk at once, which
  /// takes milliseconds that tests with thousands of files do not have.
  void Write(const std::string& name, std::string_view content) const {
    std::filesystem::remove(Path(name));
    std::ofstream file(Path(name), std::ios::binary | std::ios::trunc);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    ASSERT_TRUE(file.flush()) << name;
  }

  std::string Content(const std::string& name) const {
    std::ifstream file(Path(name), std::ios::binary);
    EXPECT_TRUE(file.is_open()) << name;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  }

  /// Names of everything in the folder, sorted.
  std::vector<std::string> FolderContent() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
      const std::u8string name = entry.path().filename().u8string();
      names.emplace_back(name.begin(), name.end());
    }
    std::sort(names.begin(), names.end());
    return names;
  }

 private:
  std::filesystem::path folder_;
};

/// What an exception said.
struct Failure {
  std::string message;
  std::error_code code;  // of a system error
};

/// The failure of `action` that is an Error; any other outcome fails the test and yields no value.
template <typename Error, typename Action>
std::optional<Failure> Thrown(Action&& action) {
  try {
    std::forward<Action>(action)();
  } catch (const Error& error) {
    Failure failure{error.what(), {}};
    if constexpr (std::is_base_of_v<std::system_error, Error>) failure.code = error.code();
    return failure;
  } catch (const std::exception& other) {
    ADD_FAILURE() << "another exception: " << other.what();
    return std::nullopt;
  }
  ADD_FAILURE() << "no exception";
  return std::nullopt;
}

/// Name of a table test's case.
struct CaseName {
  template <typename Case>
  std::string operator()(const testing::TestParamInfo<Case>& info) const {
    return info.param.name;
  }
};

}  // namespace text_test
