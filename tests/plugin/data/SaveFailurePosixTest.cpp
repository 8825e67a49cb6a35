// A save that fails or is killed at any byte leaves the old file or the new one, whole.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <system_error>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"
#include "tests/text/Restrictions.h"

namespace data_test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using text_test::AsNobody;
using text_test::FileSizeLimit;

class SaveFailure : public FileTest {
 protected:
  static constexpr std::string_view Old =
      "; foreign\r\n[BEREICH]\r\nSTART=1\r\nENDE=2\r\n[DATEN]\r\n88\r\n28\r\n";

  SaveFailure() {
    Write("saved.exp", Old);
    fs::permissions(Path("saved.exp"), fs::perms::all);
    fs::permissions(Folder(), fs::perms::all);
  }

  static TShortTestData NewData() { return TShortTestData(1, 12); }

  // What a save that succeeds makes of the old file.
  std::string NewContent() const {
    Write("copy.exp", Old);
    NewData().SaveExpectationFile(Name("copy.exp"));
    std::string content = Content("copy.exp");
    fs::remove(Path("copy.exp"));
    return content;
  }

  std::optional<Failure> SaveFails() const {
    return Thrown<std::system_error>([this] { NewData().SaveExpectationFile(Name("saved.exp")); });
  }

  void ExpectOldFileAlone() const {
    EXPECT_EQ(Content("saved.exp"), Old);
    EXPECT_THAT(FolderContent(), ElementsAre("saved.exp"));
  }
};

TEST_F(SaveFailure, WithTheDiskFullAtAnyByteTheOldFileStaysAndNothingElse) {
  const std::size_t size = NewContent().size();
  for (std::size_t bytes = 0; bytes < size; ++bytes) {
    std::optional<Failure> error;
    {
      const FileSizeLimit full(bytes);
      error = SaveFails();
    }
    ASSERT_TRUE(error) << bytes;
    ASSERT_EQ(error->code, std::errc::file_too_large) << bytes;
    ASSERT_THAT(error->message, HasSubstr("saved.exp"));
    ASSERT_NO_FATAL_FAILURE(ExpectOldFileAlone());
  }
  const FileSizeLimit enough(size);
  NewData().SaveExpectationFile(Name("saved.exp"));
  EXPECT_EQ(TShortTestData(Name("saved.exp")).bis, 12);
}

TEST_F(SaveFailure, WithTheDiskFullANewFileIsNotLeftHalf) {
  {
    const FileSizeLimit full(100);
    EXPECT_THROW(NewData().SaveExpectationFile(Name("new.exp")), std::system_error);
  }
  ExpectOldFileAlone();
}

// The write at which the limit is met kills the process on the spot, as a power cut would.
TEST_F(SaveFailure, KilledAtAnyByteLeavesTheOldFileAndTheNextSaveSucceeds) {
  const std::string saved = NewContent();
  for (std::size_t bytes = 0; bytes < saved.size(); ++bytes) {
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const rlimit noCore{0, 0};
      setrlimit(RLIMIT_CORE, &noCore);
      std::signal(SIGXFSZ, SIG_DFL);
      const rlimit limit{bytes, bytes};
      setrlimit(RLIMIT_FSIZE, &limit);
      NewData().SaveExpectationFile(Name("saved.exp"));
      _exit(0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ) << "not killed at byte " << bytes;
    ASSERT_EQ(Content("saved.exp"), Old) << bytes;
  }
  NewData().SaveExpectationFile(Name("saved.exp"));
  EXPECT_EQ(Content("saved.exp"), saved);
}

TEST_F(SaveFailure, OverAReadOnlyFileLeavesIt) {
  fs::permissions(Path("saved.exp"), static_cast<fs::perms>(0444));
  std::optional<Failure> error;
  {
    const AsNobody nobody;
    error = SaveFails();
  }
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::permission_denied);
  EXPECT_THAT(error->message, HasSubstr(Name("saved.exp")));
  ExpectOldFileAlone();
}

TEST_F(SaveFailure, InAReadOnlyFolderTheFileItselfIsWritten) {
  const std::string expected = NewContent();
  fs::permissions(Folder(), static_cast<fs::perms>(0555));
  {
    const AsNobody nobody;
    NewData().SaveExpectationFile(Name("saved.exp"));
  }
  fs::permissions(Folder(), fs::perms::all);
  EXPECT_EQ(Content("saved.exp"), expected);
  EXPECT_THAT(FolderContent(), ElementsAre("saved.exp"));
}

TEST_F(SaveFailure, InAReadOnlyFolderANewFileFailsAndIsNamed) {
  fs::permissions(Folder(), static_cast<fs::perms>(0555));
  std::optional<Failure> error;
  {
    const AsNobody nobody;
    error = Thrown<std::system_error>([this] { NewData().SaveExpectationFile(Name("new.exp")); });
  }
  fs::permissions(Folder(), fs::perms::all);
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::permission_denied);
  EXPECT_THAT(error->message, HasSubstr(Name("new.exp")));
  ExpectOldFileAlone();
}

TEST_F(SaveFailure, OverAFileThatMayNotBeReadLeavesIt) {
  fs::permissions(Path("saved.exp"), static_cast<fs::perms>(0222));
  std::optional<Failure> error;
  {
    const AsNobody nobody;
    error = SaveFails();
  }
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, std::errc::permission_denied);
  ExpectOldFileAlone();
}

TEST_F(SaveFailure, InAFolderThatMayNotBeEnteredNamesTheFile) {
  fs::permissions(Folder(), fs::perms::none);
  std::optional<Failure> saving;
  std::optional<Failure> reading;
  {
    const AsNobody nobody;
    saving = SaveFails();
    reading = Thrown<std::system_error>([this] { TShortTestData data(Name("saved.exp")); });
  }
  fs::permissions(Folder(), fs::perms::all);
  for (const auto& error : {saving, reading}) {
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, std::errc::permission_denied);
    EXPECT_THAT(error->message, HasSubstr(Name("saved.exp")));
  }
  ExpectOldFileAlone();
}

TEST_F(SaveFailure, ALaterSaveSucceeds) {
  {
    const FileSizeLimit full(100);
    EXPECT_TRUE(SaveFails());
  }
  const std::string expected = NewContent();
  NewData().SaveExpectationFile(Name("saved.exp"));
  EXPECT_EQ(Content("saved.exp"), expected);
}

}  // namespace
}  // namespace data_test
