// How a file is saved: by a new file in its place, or in place.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <system_error>

#include "tests/text/EnvironmentFixture.h"
#include "tests/text/FileFixture.h"
#include "tests/text/Restrictions.h"
#include "tests/text/SteppedProcess.h"
#include "text/FileAccess.h"

namespace text_test {
namespace {

namespace fs = std::filesystem;
using shorttest::ReplaceWholeFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

class Replacement : public FileTest {
 protected:
  Replacement() { fs::permissions(Folder(), fs::perms::all); }

  // In a folder of its own, so that the folder's rights are not those of the temporary files.
  std::filesystem::path Closed(const std::string& name) const { return Path("closed") / name; }

  void MakeClosedFolder() const {
    fs::create_directory(Path("closed"));
    Write("closed/old.exp", "old");
    fs::permissions(Closed("old.exp"), static_cast<fs::perms>(0666));
    fs::permissions(Path("closed"), static_cast<fs::perms>(0555));
  }

  static ino_t Number(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_ino;
  }

  void MakeOld(const std::string& name) const {
    fs::last_write_time(Path(name), fs::last_write_time(Path(name)) - std::chrono::hours(2));
  }
};

// ---- a new file in the old one's place

TEST_F(Replacement, IsANewFile) {
  Write("old.exp", "old");
  const ino_t before = Number(Path("old.exp"));
  ReplaceWholeFile(Path("old.exp"), "new");
  EXPECT_NE(Number(Path("old.exp")), before);
}

TEST_F(Replacement, WhatAKilledSaverLeftGoesOnceItIsOld) {
  Write("old.exp", "old");
  Write("old.exp.01234567.new~", "half of the ne");
  Write("old.exp.89abcdef.new~", "another is still writing th");
  MakeOld("old.exp.01234567.new~");
  ReplaceWholeFile(Path("old.exp"), "new");
  EXPECT_THAT(FolderContent(), ElementsAre("old.exp", "old.exp.89abcdef.new~"));
}

// Whatever else is old there is not ours.
TEST_F(Replacement, LeavesFoldersLinksAndOtherFiles) {
  Write("old.exp", "old");
  Write("other.exp.01234567.new~", "another file's");
  Write("old.exp.new~", "no number");
  Write("old.exp.01234567.old~", "an old content");
  Write("target", "linked");
  fs::create_directory(Path("old.exp.00000000.new~"));
  fs::create_symlink("target", Path("old.exp.11111111.new~"));
  for (const std::string& name : FolderContent()) MakeOld(name);
  const auto before = FolderContent();
  ReplaceWholeFile(Path("old.exp"), "new");
  EXPECT_EQ(FolderContent(), before);
  EXPECT_EQ(Content("target"), "linked");
}

TEST_F(Replacement, OfTheLongestName) {
  const std::string longest(255, 'x');
  Write(longest, "old");
  ReplaceWholeFile(Path(longest), "new");
  EXPECT_EQ(Content(longest), "new");
  EXPECT_THAT(FolderContent(), ElementsAre(longest));
}

TEST_F(Replacement, OfATooLongNameFailsAndNamesIt) {
  const std::string tooLong(256, 'x');
  const auto error = Thrown<std::system_error>([&] { ReplaceWholeFile(Path(tooLong), "new"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::filename_too_long);
  EXPECT_THAT(error->message, HasSubstr(tooLong));
}

// ---- in place

TEST_F(Replacement, OfAFileWithSeveralNamesChangesAllOfThem) {
  Write("old.exp", "old, and longer than what comes");
  fs::permissions(Path("old.exp"), static_cast<fs::perms>(0640));
  fs::create_hard_link(Path("old.exp"), Path("second.exp"));
  ReplaceWholeFile(Path("old.exp"), "new");
  EXPECT_EQ(Content("old.exp"), "new");
  EXPECT_EQ(Content("second.exp"), "new");
  EXPECT_EQ(fs::hard_link_count(Path("old.exp")), 2U);
  EXPECT_EQ(fs::status(Path("old.exp")).permissions(), static_cast<fs::perms>(0640));
  EXPECT_THAT(FolderContent(), ElementsAre("old.exp", "second.exp"));
}

TEST_F(Replacement, InAFolderThatAllowsNoSecondFileIsInPlace) {
  MakeClosedFolder();
  const ino_t before = Number(Closed("old.exp"));
  {
    const AsNobody nobody;
    ReplaceWholeFile(Closed("old.exp"), "new and longer");
  }
  EXPECT_EQ(Content("closed/old.exp"), "new and longer");
  EXPECT_EQ(Number(Closed("old.exp")), before);
}

// A folder such as /tmp, where only its owner may put another file in a file's place.
TEST_F(Replacement, OfAnothersFileInASharedFolderIsInPlace) {
  Write("old.exp", "old");
  fs::permissions(Path("old.exp"), static_cast<fs::perms>(0666));
  fs::permissions(Folder(), static_cast<fs::perms>(01777));
  {
    const AsNobody nobody;
    ReplaceWholeFile(Path("old.exp"), "new");
  }
  EXPECT_EQ(Content("old.exp"), "new");
  EXPECT_EQ(fs::status(Path("old.exp")).permissions(), static_cast<fs::perms>(0666));
  EXPECT_THAT(FolderContent(), ElementsAre("old.exp"));
}

class InPlace : public Replacement {
 protected:
  InPlace() {
    Write("old.exp", Old());
    fs::create_hard_link(Path("old.exp"), Path("second.exp"));
  }

  static std::string Old() { return std::string(500, 'o'); }
  static std::string New() { return std::string(2000, 'n'); }

  // Of the copy that a killed saver kept; nothing when there is none.
  std::optional<std::string> KeptContent() const {
    for (const std::string& name : FolderContent()) {
      if (name.ends_with(".old~")) return Content(name);
    }
    return std::nullopt;
  }
};

TEST_F(InPlace, WithTheDiskFullAtAnyByteTheOldContentIsPutBack) {
  for (std::size_t bytes = 0; bytes < New().size(); bytes += 50) {
    std::optional<Failure> error;
    {
      const FileSizeLimit full(bytes);
      error = Thrown<std::system_error>([this] { ReplaceWholeFile(Path("old.exp"), New()); });
    }
    ASSERT_TRUE(error) << bytes;
    ASSERT_EQ(error->code, std::errc::file_too_large) << bytes;
    ASSERT_THAT(error->message, HasSubstr(Name("old.exp")));
    ASSERT_EQ(Content("second.exp"), Old()) << bytes;
    ASSERT_THAT(FolderContent(), ElementsAre("old.exp", "second.exp"));
  }
}

TEST_F(InPlace, KilledAtAnySystemCallLeavesOneOfTheContentsOrACopyOfTheOld) {
  const std::string shorter(200, 'n');
  int damaged = 0;
  int stops = 0;
  for (bool ended = false; !ended; ++stops) {
    Write("again", Old());
    fs::copy_file(Path("again"), Path("old.exp"), fs::copy_options::overwrite_existing);
    fs::remove(Path("again"));
    {
      SteppedProcess save([&] { ReplaceWholeFile(Path("old.exp"), shorter); });
      for (int i = 0; i < stops && !save.Ended(); ++i) save.Step();
      ended = save.Ended();
    }
    const std::string content = Content("old.exp");
    const auto kept = KeptContent();
    if (content != Old() && content != shorter) {
      ++damaged;
      ASSERT_EQ(kept, Old());
    }
    for (const std::string& name : FolderContent()) {
      if (name.ends_with(".old~")) fs::remove(Path(name));
    }
  }
  EXPECT_GT(stops, 10);
  EXPECT_GT(damaged, 0) << "between writing and cutting off the file is neither";
}

TEST_F(InPlace, WithoutRoomForACopyTheFileStays) {
  MakeClosedFolder();
  class Temporary : public EnvironmentTest {
   public:
    using EnvironmentTest::Set;
    void TestBody() override {}
  } environment;
  environment.Set("TMPDIR", Name("missing"));
  std::optional<Failure> error;
  {
    const AsNobody nobody;
    error = Thrown<std::system_error>([this] { ReplaceWholeFile(Closed("old.exp"), "new"); });
  }
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::permission_denied);
  EXPECT_THAT(error->message, HasSubstr("old.exp"));
  EXPECT_EQ(Content("closed/old.exp"), "old");
}

// ---- sizes

TEST_F(Replacement, AFileAboveTheLimitIsRefusedBeforeItIsRead) {
  Write("sparse.exp", "");
  fs::resize_file(Path("sparse.exp"), std::uintmax_t{2} << 30U);
  const auto error =
      Thrown<shorttest::FileTooLarge>([this] { shorttest::ReadWholeFile(Path("sparse.exp"), 1000); });
  ASSERT_TRUE(error);
  EXPECT_THAT(error->message,
              HasSubstr("cannot read '" + Name("sparse.exp") +
                        "': it holds 2147483648 bytes, more than the 1000 that are possible"));
}

TEST_F(Replacement, ADeviceIsReadUpToTheLimitWhereItMayBeRead) {
  const auto error = Thrown<shorttest::FileTooLarge>(
      [] { shorttest::ReadWholeFile("/dev/zero", 100000, shorttest::ReadFrom::Anything); });
  ASSERT_TRUE(error);
  EXPECT_THAT(error->message,
              HasSubstr("'/dev/zero': it holds more than the 100000 bytes that are possible"));
  EXPECT_EQ(shorttest::ReadWholeFile("/dev/null", 0, shorttest::ReadFrom::Anything), "");
}

TEST_F(Replacement, AFileOfJustTheLimitIsRead) {
  Write("full.exp", std::string(100000, 'x'));
  EXPECT_THAT(shorttest::ReadWholeFile(Path("full.exp"), 100000), SizeIs(100000));
  EXPECT_THROW(shorttest::ReadWholeFile(Path("full.exp"), 99999), shorttest::FileTooLarge);
}

}  // namespace
}  // namespace text_test
