// What only Unix can arrange: links, permissions, devices and a file that cannot be read to its end.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <system_error>

#include "tests/text/FileFixture.h"
#include "text/FileAccess.h"

namespace text_test {
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

// Endless devices and pipes that nobody writes to: refused, never read.
TEST_F(FileAccessPosix, OnlyFilesAreRead) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  for (const std::string& name : {std::string("/dev/zero"), std::string("/dev/full"), Name("pipe")}) {
    const auto error = Thrown<std::system_error>([&name] { ReadWholeFile(name); });
    ASSERT_TRUE(error) << name;
    EXPECT_THAT(error->message, HasSubstr(name));
  }
}

TEST_F(FileAccessPosix, OnlyFilesAreReplaced) {
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  for (const std::string& name : {std::string("/dev/full"), Name("pipe")}) {
    const auto error = Thrown<std::system_error>([&name] { ReplaceWholeFile(name, "new"); });
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
}  // namespace text_test
