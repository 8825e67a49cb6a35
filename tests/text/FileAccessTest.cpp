#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <system_error>

#include "tests/text/FileFixture.h"
#include "text/FileAccess.h"

namespace text_test {
namespace {

using namespace std::string_literals;

using shorttest::AbsolutePath;
using shorttest::ReadWholeFile;
using shorttest::ReplaceWholeFile;
using shorttest::Utf8FromPath;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using FileAccess = FileTest;

const std::string AnyBytes = "\0\r\n\n\r\x1A\xFF\xEF\xBB\xBF text"s;

TEST_F(FileAccess, AbsolutePathStandsInTheCurrentDirectory) {
  EXPECT_EQ(AbsolutePath("a.exp"), std::filesystem::current_path() / "a.exp");
}

TEST_F(FileAccess, AbsolutePathKeepsAnAbsoluteName) { EXPECT_EQ(AbsolutePath(Name("a.exp")), Path("a.exp")); }

TEST_F(FileAccess, NamesAreUtf8BothWays) {
  EXPECT_EQ(AbsolutePath(Name("Prüfling Ω.exp")).filename(), std::filesystem::path(u8"Prüfling Ω.exp"));
  EXPECT_EQ(Utf8FromPath(std::filesystem::path(u8"Prüfling Ω.exp")), "Prüfling Ω.exp");
}

TEST_F(FileAccess, ReadsEveryByte) {
  Write("any.exp", AnyBytes);
  EXPECT_EQ(ReadWholeFile(Path("any.exp")), AnyBytes);
}

TEST_F(FileAccess, ReadsAnEmptyFile) {
  Write("empty.exp", "");
  EXPECT_EQ(ReadWholeFile(Path("empty.exp")), "");
}

TEST_F(FileAccess, ReadingAMissingFileNamesIt) {
  const auto error = Thrown<std::system_error>([this] { ReadWholeFile(Path("missing.exp")); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::no_such_file_or_directory);
  EXPECT_THAT(error->message, HasSubstr(Name("missing.exp")));
}

TEST_F(FileAccess, ReadingAFolderNamesIt) {
  const auto error = Thrown<std::system_error>([this] { ReadWholeFile(Folder()); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::is_a_directory);
  EXPECT_THAT(error->message, HasSubstr(Utf8FromPath(Folder())));
}

TEST_F(FileAccess, CreatesANewFile) {
  ReplaceWholeFile(Path("new.exp"), AnyBytes);
  EXPECT_EQ(Content("new.exp"), AnyBytes);
  EXPECT_THAT(FolderContent(), ElementsAre("new.exp"));
}

TEST_F(FileAccess, ReplacesTheWholeContent) {
  Write("old.exp", std::string(10000, 'x'));
  ReplaceWholeFile(Path("old.exp"), AnyBytes);
  EXPECT_EQ(Content("old.exp"), AnyBytes);
  ReplaceWholeFile(Path("old.exp"), "");
  EXPECT_EQ(Content("old.exp"), "");
  EXPECT_THAT(FolderContent(), ElementsAre("old.exp"));
}

TEST_F(FileAccess, LeavesOtherFilesAlone) {
  Write("old.exp", "old");
  Write("old", "other");
  Write("old.exp.bak", "backup");
  ReplaceWholeFile(Path("old.exp"), "new");
  EXPECT_THAT(FolderContent(), ElementsAre("old", "old.exp", "old.exp.bak"));
  EXPECT_EQ(Content("old"), "other");
  EXPECT_EQ(Content("old.exp.bak"), "backup");
}

TEST_F(FileAccess, InAMissingFolderFails) {
  const auto error = Thrown<std::system_error>([this] { ReplaceWholeFile(Path("missing/a.exp"), "new"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::no_such_file_or_directory);
  EXPECT_THAT(error->message, HasSubstr("a.exp"));
  EXPECT_THAT(FolderContent(), IsEmpty());
}

TEST_F(FileAccess, OverAFolderFails) {
  std::filesystem::create_directory(Path("folder"));
  const auto error = Thrown<std::system_error>([this] { ReplaceWholeFile(Path("folder"), "new"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::is_a_directory);
  EXPECT_THAT(error->message, HasSubstr(Name("folder")));
  EXPECT_TRUE(std::filesystem::is_directory(Path("folder")));
  EXPECT_THAT(FolderContent(), ElementsAre("folder"));
}

}  // namespace
}  // namespace text_test
