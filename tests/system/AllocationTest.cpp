// Memory that runs out at every allocation of a check and of a learning: whoever called gets the exception,
// and every relay is open. What stands round the procedures here allocates nothing itself.
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include "contracts/BrenmorHWDevice.h"
#include "framework/kxcomponents.h"
#include "plugin/check/CheckForm.h"
#include "plugin/check/ShorttestCheck.h"
#include "plugin/learn/ShorttestLearn.h"
#include "tests/plugin/data/PlainMatrix.h"
#include "tests/support/Allocations.h"
#include "tests/support/FakeClock.h"

namespace {

// Card 1: two lines of 52 relays, and a device of which each channel belongs to a net.
constexpr std::array<int, 7> NetOf = {0, 1, 1, 1, 2, 2, 3};
std::array<std::array<bool, 52>, 2> closed;
bool terminated = false;

int ClosedRelays() {
  int count = terminated ? 1 : 0;
  for (const auto& line : closed) {
    for (const bool relay : line) count += relay ? 1 : 0;
  }
  return count;
}

// Whether a net has channels on both lines.
bool LinesMeet() {
  for (std::size_t a = 1; a < NetOf.size(); ++a) {
    for (std::size_t b = 1; b < NetOf.size(); ++b) {
      if (NetOf[a] == NetOf[b] && closed[0][a - 1] && closed[1][b - 1]) return true;
    }
  }
  return false;
}

class QuietUserInterface : public UserInterface {
 public:
  class Dialog : public ProgressDialog {
   public:
    void Show() override {}
    bool Visible() const override { return true; }
    int GetModalResult() const override { return mrNone; }
    int BarMaximum() const override { return 100; }
    void SetBarPosition(int /*position*/) override {}
    WindowHandle Handle() const override { return 1; }
  };

  void ProcessMessages() override {}
  int ShowMessage(const MessageBoxRequest& /*request*/) override { return mrIgnore; }
  std::unique_ptr<ProgressDialog> CreateProgressDialog(const ProgressDialogLayout& /*layout*/) override {
    return std::make_unique<Dialog>();
  }
  TaskWindowList DisableTaskWindows(WindowHandle /*except*/) override { return {}; }
  void EnableTaskWindows(const TaskWindowList& /*windows*/) override {}
};

}  // namespace

extern "C" {

std::int32_t brenmor_bus_write(std::int32_t address, std::int32_t /*reserved*/, std::int32_t value) {
  auto& line = closed.at(static_cast<std::size_t>(address - 128));
  if (value == 64) {
    line = {};
  } else {
    line.at(static_cast<std::size_t>(value & 63)) = (value & 128) != 0;
  }
  return 0;
}

std::int32_t brenmor_relay_set(std::int32_t /*card*/, std::int32_t /*relay*/, std::int32_t state) {
  terminated = state != 0;
  return 0;
}

std::int32_t brenmor_msu_write_relay(std::int32_t relay, std::int32_t /*mode*/) { return relay == 1 ? 1 : 0; }

double brenmor_adx_read(std::int32_t function, std::int32_t /*range*/, std::int32_t /*setting*/) {
  if (function == 8) return 0.0;
  return LinesMeet() ? 9.5 : 1e9;  // close enough to the threshold for the question
}

std::int32_t brenmor_adx_hw_generation() { return 2; }
std::int32_t brenmor_bus_get_error() { return 0; }
char* brenmor_bus_get_error_msg() { return nullptr; }
void brenmor_free_mem(void* /*memory*/) {}
void brenmor_bus_delete_error() {}

}  // extern "C"

namespace shorttest::testkit {
namespace {

class OutOfMemory : public ::testing::TestWithParam<Shortage> {
 protected:
  void SetUp() override { SetApplication(&ui); }
  void TearDown() override { SetApplication(nullptr); }

  static TShortTestData Range() {
    TShortTestData data(1, 6);
    data.LastRelaisKarte = 1;
    data.LastRelais = 8;
    return data;
  }

  // Fails the first allocation of `action`, then the second, and so on until it needs no more. Returns how
  // many there were.
  template <typename Action>
  static int FailEach(Shortage shortage, Action action) {
    for (int n = 1;; ++n) {
      SCOPED_TRACE("allocation " + std::to_string(n));
      const std::ptrdiff_t before = LiveAllocations();
      bool reported = false;
      {
        const FailingAllocation failing(n, shortage);
        try {
          action();
        } catch (const std::bad_alloc&) {
          reported = true;
        }
      }
      const bool happened = FailingAllocation::Happened();
      EXPECT_EQ(reported, happened) << "the caller learns of it";
      EXPECT_EQ(ClosedRelays(), 0);
      EXPECT_EQ(CheckForm, nullptr);
      EXPECT_LE(LiveAllocations() - before, 2) << "nothing is left but the last record and this message";
      if (!happened || HasFailure()) return n - 1;
    }
  }

  QuietUserInterface ui;
  FakeClock clock;  // no wait takes time
};

TEST_P(OutOfMemory, WithinPutLeavesThatToTheCaller) {
  EXPECT_GT(FailEach(GetParam(), [] { Range().Put(1, 0, CellState::Connected, 0.5); }), 0);
}

// Two nets that turn out shorted: one finding, many that follow, and a stack that grows several times.
TEST_P(OutOfMemory, WithinPutLeavesAMatrixThatGoesOnAsThePlainRecursion) {
  constexpr int Half = 12;
  for (int n = 1;; ++n) {
    SCOPED_TRACE("allocation " + std::to_string(n));
    TShortTestData data(1, 2 * Half);
    for (int i = 1; i < Half; ++i) {
      data.Put(i, i - 1, CellState::Connected, i);
      data.Put(Half + i, Half + i - 1, CellState::Connected, 100.0 + i);
    }
    data = TShortTestData(data);  // so that the notes on its pairs are made within the next Put too
    bool reported = false;
    {
      const FailingAllocation failing(n, GetParam());
      try {
        data.Put(3, Half + 5, CellState::Connected, 0.5);
      } catch (const std::bad_alloc&) {
        reported = true;
      }
    }
    EXPECT_EQ(reported, FailingAllocation::Happened()) << "the caller learns of it";
    data_test::PlainMatrix plain(data);
    for (int i = 0; i < 2 * Half; ++i) {
      for (int j = 0; j < i; ++j) {
        const CellState state = (i + j) % 3 == 0 ? CellState::NotConnected : CellState::Connected;
        data.Put(i, j, state, 1000.0 + i);
        plain.Put(i, j, state, 1000.0 + i);
        ASSERT_EQ(data_test::Difference(data, plain), std::nullopt) << "after the finding " << i << ", " << j;
      }
    }
    if (!reported) {
      EXPECT_GT(n, 5) << "the notes and the stack";
      return;
    }
  }
}

TEST_P(OutOfMemory, WithinACheckOpensEveryRelayAndReachesTheHost) {
  // Expects 1-2-3 as it is, 4-5 open although it is connected, 5-6 connected although it is open.
  TShortTestData data = Range();
  data.Put(1, 0, CellState::Connected, NoResistance);
  data.Put(2, 1, CellState::Connected, NoResistance);
  data.Put(5, 4, CellState::Connected, NoResistance);
  for (int i = 0; i < 6; ++i) {
    for (int j = 0; j < i; ++j) data.Put(i, j, CellState::NotConnected, NoResistance);
  }
  RunShortTest(data);
  // The result's matrix, the stack of Put, candidates, records.
  EXPECT_GT(FailEach(GetParam(), [&data] { RunShortTest(data); }), 20);
}

TEST_P(OutOfMemory, WithinLearningOpensEveryRelayAndReachesTheCaller) {
  const int allocations = FailEach(GetParam(), [] {
    TShortTestData data = Range();
    LearnConnections(data, [](double /*position*/) { return false; });
  });
  EXPECT_GT(allocations, 10);
}

INSTANTIATE_TEST_SUITE_P(Shortages, OutOfMemory, ::testing::Values(Shortage::Passing, Shortage::Lasting),
                         [](const auto& row) {
                           return row.param == Shortage::Passing ? "Passing" : "Lasting";
                         });

}  // namespace
}  // namespace shorttest::testkit
