// What only Unix can arrange: links, permissions, devices and a file that cannot be read to its end.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <system_error>

#include "data/FileAccess.h"
#include "data/ShorttestData.h"
#include "tests/data/DataFixture.h"

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

TEST_F(FileAccessPosix, ALinkToItselfFailsAndStays) {
  fs::create_symlink("loop.exp", Path("loop.exp"));
  EXPECT_THROW(ReplaceWholeFile(Path("loop.exp"), "new"), std::system_error);
  EXPECT_THROW(ReadWholeFile(Path("loop.exp")), std::system_error);
  EXPECT_TRUE(fs::is_symlink(Path("loop.exp")));
  EXPECT_THAT(FolderContent(), ElementsAre("loop.exp"));
}

}  // namespace
}  // namespace data_test
