// The display goes away under a procedure, in a host that has nobody watching over it: the toolkit ends the
// process, and every relay must be open by then. Each test runs in a process of its own, on a display server
// of its own; what the tester was told is read from the driver's trace.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <wx/app.h>
#include <wx/button.h>
#include <wx/toplevel.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <string>
#include <tuple>

#include "contracts/UserInterfaceModule.h"
#include "plugin/data/ShorttestData.h"
#include "tests/plugin/entry/LoadedPlugin.h"

namespace shorttest::testkit {
namespace {

constexpr int EndedByTheToolkit = 1;
constexpr int Survived = 7;

// An X server that this process started, and can take away.
class DisplayServer {
 public:
  DisplayServer() {
    std::array<int, 2> numbers{};
    if (pipe(numbers.data()) != 0) std::abort();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, numbers[1], NumberPort);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const std::array<const char*, 9> command = {"Xvfb",         "-displayfd", "9",   "-screen", "0",
                                                "1280x1024x24", "-nolisten",  "tcp", nullptr};
    if (posix_spawnp(&server_, command[0], &actions, nullptr, const_cast<char**>(command.data()), environ) !=
        0) {
      std::abort();
    }
    posix_spawn_file_actions_destroy(&actions);
    close(numbers[1]);
    std::string number = ":";
    for (char digit = 0; read(numbers[0], &digit, 1) == 1 && digit != '\n';) number += digit;
    close(numbers[0]);
    setenv("DISPLAY", number.c_str(), 1);
  }
  ~DisplayServer() { Kill(); }
  DisplayServer(const DisplayServer&) = delete;
  DisplayServer& operator=(const DisplayServer&) = delete;

  void Kill() {
    if (server_ == 0) return;
    kill(server_, SIGKILL);
    waitpid(server_, nullptr, 0);
    server_ = 0;
  }

 private:
  static constexpr int NumberPort = 9;

  pid_t server_ = 0;
};

// Real windows whose display goes away at one of the procedure's progress points.
class EndingDisplay : public UserInterface {
 public:
  explicit EndingDisplay(int at) : left_(at) {
    if (windows_ == nullptr) std::abort();
  }

  void ProcessMessages() override {
    if (left_-- == 0) server_.Kill();
    windows_->ProcessMessages();
  }
  int ShowMessage(const MessageBoxRequest& request) override { return windows_->ShowMessage(request); }
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout& layout) override {
    return windows_->CreateProgressDialog(layout);
  }
  TaskWindowList DisableTaskWindows(WindowHandle except) override {
    return windows_->DisableTaskWindows(except);
  }
  void EnableTaskWindows(const TaskWindowList& windows) override { windows_->EnableTaskWindows(windows); }

 private:
  int left_;
  DisplayServer server_;
  UserInterface* windows_ = kxCreateUserInterface();
};

// Which relays the calls in a trace have closed and not opened again: card's line, and relay.
class TracedRelays {
 public:
  explicit TracedRelays(const std::string& traceFile) {
    std::ifstream trace(traceFile);
    for (std::string line; std::getline(trace, line);) Take(line);
  }

  const std::set<std::tuple<std::string, int, int>>& Closed() const { return closed_; }
  std::size_t MostClosed() const { return mostClosed_; }

 private:
  static constexpr int OpenAll = 64;
  static constexpr int CloseBit = 128;

  void Take(const std::string& line) {
    std::istringstream words(line);
    std::string call;
    int first = 0;
    int second = 0;
    int value = 0;
    if (!(words >> call >> first >> second >> value)) return;
    if (call == "relay_set") {
      Switch({call, first, second}, value != 0);
    } else if (call == "bus_write" && value == OpenAll) {
      std::erase_if(closed_, [first](const auto& relay) {
        return std::get<0>(relay) == "bus_write" && std::get<1>(relay) == first;
      });
    } else if (call == "bus_write") {
      Switch({call, first, value % OpenAll}, value >= CloseBit);
    }
    mostClosed_ = std::max(mostClosed_, closed_.size());
  }

  void Switch(const std::tuple<std::string, int, int>& relay, bool close) {
    if (close) {
      closed_.insert(relay);
    } else {
      closed_.erase(relay);
    }
  }

  std::set<std::tuple<std::string, int, int>> closed_;
  std::size_t mostClosed_ = 0;
};

// The parameter is the progress point at which the display goes.
class DisplayEnd : public PluginTest, public testing::WithParamInterface<int> {
 protected:
  DisplayEnd() {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // the driver starts a trace when it is loaded
    setenv("BRENMOR_TRACE", trace_.c_str(), 1);
  }
  ~DisplayEnd() override {
    unsetenv("BRENMOR_TRACE");
    std::filesystem::remove(trace_);
  }

  // Eight channels and a terminating resistor.
  std::string Harness() const {
    TShortTestData data(1, 8);
    data.LastRelaisKarte = 1;
    data.LastRelais = 2;
    data.Put(1, 0, CellState::Connected, NoResistance);
    for (int i = 2; i < 8; ++i) {
      for (int j = 0; j < i; ++j) data.Put(i, j, CellState::NotConnected, NoResistance);
    }
    const std::string file = InFolder("harness.dat");
    data.SaveExpectationFile(file);
    return file;
  }

  void Check() {
    EndingDisplay display(GetParam());
    SetApplication(&display);
    Run(*MakeCommand(), Harness());
    _exit(Survived);
  }

  void Learn() {
    EndingDisplay display(GetParam());
    SetApplication(&display);
    TParamList params;
    params.Set("Datafile", Harness(), nullptr);
    wxTheApp->CallAfter([] {
      for (wxWindow* const dialog : wxTopLevelWindows) PressLearn(*dialog);
    });
    static_cast<TKXRunEdit&>(*MakeCommand()).Edit(params);
    _exit(Survived);
  }

  void ExpectEverythingOpen() const {
    const TracedRelays relays(trace_);
    EXPECT_GT(relays.MostClosed(), 0U) << "the procedure had not begun";
    EXPECT_TRUE(relays.Closed().empty()) << relays.Closed().size() << " relays are closed";
  }

 private:
  static void PressLearn(wxWindow& window) {
    auto* const button = dynamic_cast<wxButton*>(&window);
    if (button != nullptr && button->GetLabel() == "&Lernen") {
      wxCommandEvent click(wxEVT_BUTTON, button->GetId());
      click.SetEventObject(button);
      button->Command(click);
      return;
    }
    for (wxWindow* const child : window.GetChildren()) PressLearn(*child);
  }

  std::string trace_ = testing::TempDir() + "display-end-trace.txt";
};

using DisplayEndDeathTest = DisplayEnd;

TEST_P(DisplayEndDeathTest, OpensTheRelaysOfACheck) {
  EXPECT_EXIT(Check(), testing::ExitedWithCode(EndedByTheToolkit), "");
  ExpectEverythingOpen();
}

TEST_P(DisplayEndDeathTest, OpensTheRelaysOfALearning) {
  EXPECT_EXIT(Learn(), testing::ExitedWithCode(EndedByTheToolkit), "");
  ExpectEverythingOpen();
}

INSTANTIATE_TEST_SUITE_P(ProgressPoints, DisplayEndDeathTest, testing::Values(1, 4, 9, 14));

}  // namespace
}  // namespace shorttest::testkit
