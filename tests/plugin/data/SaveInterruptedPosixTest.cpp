// A save that is killed at any system call, or whose calls fail, leaves the old file or the new one, whole.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <system_error>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"
#include "tests/text/SteppedProcess.h"

namespace data_test {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::MatchesRegex;

class SaveInterrupted : public FileTest {
 protected:
  static constexpr std::string_view Old =
      "; foreign\r\n[BEREICH]\r\nSTART=1\r\nENDE=2\r\n[DATEN]\r\n88\r\n28\r\n";

  SaveInterrupted() {
    Write("saved.exp", Old);
    Save();
    new_ = Content("saved.exp");
    Write("saved.exp", Old);
  }

  void Save() const { TShortTestData(1, 12).SaveExpectationFile(Name("saved.exp")); }

  const std::string& New() const { return new_; }

  // As if whatever lies there had been left two hours ago.
  void AgeTheRemains() const {
    for (const std::string& name : FolderContent()) {
      std::filesystem::last_write_time(Path(name),
                                       std::filesystem::last_write_time(Path(name)) - std::chrono::hours(2));
    }
  }

 private:
  std::string new_;
};

TEST_F(SaveInterrupted, KilledAtAnySystemCallLeavesOneOfTheTwoFilesAndTheNextSaveSucceeds) {
  int oldFiles = 0;
  int newFiles = 0;
  for (bool ended = false; !ended;) {
    Write("saved.exp", Old);
    text_test::SteppedProcess save([this] { Save(); });
    // One stop further each time. Sanitizers make a few calls of their own, not the same ones every time.
    for (int stops = 0; stops <= oldFiles + newFiles && !save.Ended(); ++stops) save.Step();
    ended = save.Ended();
    save.Kill();
    const std::string content = Content("saved.exp");
    ASSERT_THAT(content, AnyOf(Old, New()));
    ++(content == Old ? oldFiles : newFiles);
    ASSERT_THAT(FolderContent(), Each(AnyOf("saved.exp", MatchesRegex("saved.exp.[0-9a-f]{8}.new~"))));

    AgeTheRemains();
    ASSERT_NO_THROW(Save());
    ASSERT_EQ(Content("saved.exp"), New());
    ASSERT_THAT(FolderContent(), ElementsAre("saved.exp"));
  }
  EXPECT_GT(oldFiles, 0);
  EXPECT_GT(newFiles, 1) << "the last one is the save that was not killed";
}

struct FailingCall {
  const char* name;
  std::array<long, 3> numbers;  // of the system calls that fail
};

class SaveWithFailingCall : public SaveInterrupted, public testing::WithParamInterface<FailingCall> {
 protected:
  // Lets these calls of this process fail from now on, as on a disk that breaks. There is no way back.
  static bool LetFail(const std::array<long, 3>& numbers) {
    std::array<sock_filter, 6> program{{
        {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)},
        {BPF_JMP | BPF_JEQ | BPF_K, 3, 0, static_cast<std::uint32_t>(numbers[0])},
        {BPF_JMP | BPF_JEQ | BPF_K, 2, 0, static_cast<std::uint32_t>(numbers[1])},
        {BPF_JMP | BPF_JEQ | BPF_K, 1, 0, static_cast<std::uint32_t>(numbers[2])},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
        {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | EIO},
    }};
    const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter, 0, 0) == 0;
  }

  // What the process ends with.
  enum Ending { Saved = 0, InputOutputError = 1, OtherError = 2, NotArranged = 3 };

  Ending SaveInAProcessOfItsOwn() const {
    const pid_t process = fork();
    if (process == 0) {
      if (!LetFail(GetParam().numbers)) _exit(NotArranged);
      try {
        Save();
      } catch (const std::system_error& error) {
        const bool named = std::string_view(error.what()).find("saved.exp") != std::string_view::npos;
        _exit(named && error.code() == std::errc::io_error ? InputOutputError : OtherError);
      }
      _exit(Saved);
    }
    int status = 0;
    waitpid(process, &status, 0);
    return WIFEXITED(status) ? static_cast<Ending>(WEXITSTATUS(status)) : NotArranged;
  }
};

TEST_P(SaveWithFailingCall, IsAnErrorThatNamesTheFileAndLeavesTheOldOne) {
  EXPECT_EQ(SaveInAProcessOfItsOwn(), InputOutputError);
  EXPECT_EQ(Content("saved.exp"), Old);
  EXPECT_THAT(FolderContent(), ElementsAre("saved.exp"));
}

#ifdef SYS_rename
constexpr long PlainRename = SYS_rename;
#else
constexpr long PlainRename = SYS_renameat2;
#endif

// Writes that fail are those to a full disk, see SaveFailure; sanitizers write for purposes of their own.
INSTANTIATE_TEST_SUITE_P(, SaveWithFailingCall,
                         testing::Values(FailingCall{"FlushToDisk", {SYS_fsync, SYS_fdatasync, SYS_fsync}},
                                         FailingCall{"Rename", {PlainRename, SYS_renameat, SYS_renameat2}}),
                         CaseName());

}  // namespace
}  // namespace data_test
