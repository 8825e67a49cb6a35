// What only Unix can arrange: links, permissions, devices and a file that cannot be read to its end.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <system_error>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"
#include "text/FileAccess.h"

namespace data_test {
namespace {

namespace fs = std::filesystem;
using shorttest::ReadWholeFile;
using shorttest::ReplaceWholeFile;
using testing::ElementsAre;
using testing::HasSubstr;

class FileAccessPosix : public FileTest {
 protected:
  fs::perms Permissions(const std::string& name) const { return fs::status(Path(name)).permissions(); }
};

TEST_F(FileAccessPosix, AReplacedFileKeepsItsPermissions) {
  for (const auto mode : {0600, 0640, 0666, 0755}) {
    Write("old.exp", "old");
    fs::permissions(Path("old.exp"), static_cast<fs::perms>(mode));
    ReplaceWholeFile(Path("old.exp"), "new");
    EXPECT_EQ(Permissions("old.exp"), static_cast<fs::perms>(mode));
    EXPECT_EQ(Content("old.exp"), "new");
  }
}

TEST_F(FileAccessPosix, ALinkIsFollowedAndStaysALink) {
  fs::create_directory(Path("real"));
  Write("real/target.exp", "old");
  fs::create_symlink("real/target.exp", Path("link.exp"));
  ReplaceWholeFile(Path("link.exp"), "new");
  EXPECT_TRUE(fs::is_symlink(Path("link.exp")));
  EXPECT_EQ(Content("real/target.exp"), "new");
  EXPECT_THAT(FolderContent(), ElementsAre("link.exp", "real"));
}

TEST_F(FileAccessPosix, AChainOfLinksIsFollowedToItsEnd) {
  Write("target.exp", "old");
  fs::create_symlink("target.exp", Path("second.exp"));
  fs::create_symlink(Path("second.exp"), Path("first.exp"));
  ReplaceWholeFile(Path("first.exp"), "new");
  EXPECT_TRUE(fs::is_symlink(Path("first.exp")));
  EXPECT_TRUE(fs::is_symlink(Path("second.exp")));
  EXPECT_EQ(Content("target.exp"), "new");
}

TEST_F(FileAccessPosix, ALinkToAFileThatDoesNotExistYetCreatesIt) {
  fs::create_directory(Path("real"));
  fs::create_symlink("real/target.exp", Path("link.exp"));
  ReplaceWholeFile(Path("link.exp"), "new");
  EXPECT_TRUE(fs::is_symlink(Path("link.exp")));
  EXPECT_EQ(Content("real/target.exp"), "new");
}

TEST_F(FileAccessPosix, ALinkToItselfFailsAndStays) {
  fs::create_symlink("loop.exp", Path("loop.exp"));
  EXPECT_THROW(ReplaceWholeFile(Path("loop.exp"), "new"), std::system_error);
  EXPECT_THROW(ReadWholeFile(Path("loop.exp")), std::system_error);
  EXPECT_TRUE(fs::is_symlink(Path("loop.exp")));
  EXPECT_THAT(FolderContent(), ElementsAre("loop.exp"));
}

// A link in the copy's place, put there by whoever may write into the folder, is not written through.
TEST_F(FileAccessPosix, ALinkInTheCopysPlaceIsNotFollowed) {
  Write("old.exp", "old");
  Write("innocent", "untouched");
  fs::create_symlink("innocent", Path("old.exp.new~"));
  ReplaceWholeFile(Path("old.exp"), "new");
  EXPECT_EQ(Content("innocent"), "untouched");
  fs::create_symlink("nothing yet", Path("old.exp.new~"));
  ReplaceWholeFile(Path("old.exp"), "newer");
  EXPECT_FALSE(fs::is_symlink(Path("old.exp")));
  EXPECT_EQ(Content("old.exp"), "newer");
  EXPECT_THAT(FolderContent(), ElementsAre("innocent", "old.exp"));
}

// The copy has a longer name than the file; where no such name is possible, the file can be read and not
// saved.
TEST_F(FileAccessPosix, ANameTooLongForItsCopyFailsAndLeavesTheFile) {
  const std::string longest(255, 'x');
  Write(longest, "old");
  const auto error = Thrown<std::system_error>([&] { ReplaceWholeFile(Path(longest), "new"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::filename_too_long);
  EXPECT_THAT(error->message, HasSubstr(longest));
  EXPECT_EQ(Content(longest), "old");

  const std::string longestSaved(250, 'y');
  ReplaceWholeFile(Path(longestSaved), "new");
  EXPECT_EQ(Content(longestSaved), "new");
  EXPECT_THAT(FolderContent(), ElementsAre(longest, longestSaved));
}

// Endless devices and pipes that nobody writes to: refused, never read.
TEST_F(FileAccessPosix, OnlyFilesAreRead) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  for (const std::string& name : {std::string("/dev/zero"), std::string("/dev/full"), Name("pipe")}) {
    const auto error = Thrown<std::system_error>([&name] { TShortTestData data(name); });
    ASSERT_TRUE(error) << name;
    EXPECT_THAT(error->message, HasSubstr(name));
  }
}

TEST_F(FileAccessPosix, OnlyFilesAreReplaced) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  for (const std::string& name : {std::string("/dev/full"), Name("pipe")}) {
    const auto error = Thrown<std::system_error>([&name] { TShortTestData(1, 4).SaveExpectationFile(name); });
    ASSERT_TRUE(error) << name;
    EXPECT_THAT(error->message, HasSubstr(name));
  }
  EXPECT_TRUE(fs::is_fifo(Path("pipe")));
  EXPECT_THAT(FolderContent(), ElementsAre("pipe"));
}

// The memory of this process: a file as far as the system says, with nothing to read at its start.
TEST_F(FileAccessPosix, AReadErrorNamesTheFileAndTheCause) {
  const std::string name = "/proc/self/mem";
  ASSERT_TRUE(fs::is_regular_file(name));
  const auto error = Thrown<std::system_error>([&name] { ReadWholeFile(name); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::io_error);
  EXPECT_THAT(error->message, HasSubstr(name));
}

}  // namespace
}  // namespace data_test
