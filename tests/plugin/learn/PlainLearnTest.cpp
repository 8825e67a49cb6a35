// Learning against its plain counterpart: same calls, same cells, for random devices, faults and stops.
#include "tests/plugin/learn/LearnBench.h"
#include "tests/support/PlainTester.h"
#include "tests/support/RandomBench.h"

namespace shorttest::testkit {
namespace {

/// Learning, written down step by step.
class PlainLearn {
 public:
  PlainLearn(CallLog& log, FakeClock& clock, const RandomCase& random)
      : matrix(random.matrix),
        options_(random.options),
        random_(random),
        log_(log),
        tester_(log, clock),
        allSuspendedBefore_(matrix.AllSuspended()) {}

  void Run() {
    try {
      Passes();
    } catch (...) {
      CleanUp();
      throw;
    }
    CleanUp();
  }

  PlainMatrix matrix;

 private:
  bool Progress(double position) {
    log_.Add("progress " + ExactText(position));
    ++calls_;
    if (random_.stopAt == 0) return false;
    return random_.onlyOneStop ? calls_ == random_.stopAt : calls_ >= random_.stopAt;
  }

  void CleanUp() {
    PlainTester::ReleaseAll(options_.cards);
    PlainTester::ReleaseBehind(options_, matrix.count, allSuspendedBefore_);
    PlainTester::Termination(options_, false);
    Progress(1.0);
  }

  void Passes() {
    for (int i = 0; i < matrix.count; ++i) {
      for (int j = 0; j < matrix.count; ++j) {
        if (matrix.Get(i, j) <= 2) matrix.Set(i, j, 0, -1.0);
      }
    }
    PlainTester::Termination(options_, true);
    if (Progress(0.01)) return;
    VoltagePass();
    PairPass(IsolationPass());
  }

  void VoltagePass() {
    PlainTester::Prepare(options_.cards, true);
    const int high = matrix.count - 1;
    int i = 0;
    while (i <= high && matrix.Get(i, i) == 9) ++i;
    PlainTester::Connect(options_.von + i, 1);
    while (i < high) {
      ++i;
      if (Progress(i / (4.0 * high))) return;
      if (matrix.Get(i, i) == 9) continue;
      PlainTester::Connect(options_.von + i, 0);
      const double volts = tester_.Discharge(options_, 0.5, i / (4.0 * high), (i + 1) / (4.0 * high),
                                             [this](double position) { return Progress(position); });
      if (volts < 0.5 && volts > -0.5) {
        PlainTester::Connect(options_.von + i, 1);
      } else {
        if (i == 1) matrix.Suspend(0, volts);
        matrix.Suspend(i, volts);
      }
      tester_.Release(options_.von + i, 0);
    }
  }

  std::vector<int> IsolationPass() {
    std::vector<int> candidates;
    PlainTester::Prepare(options_.cards, false);
    const int high = matrix.count - 1;
    for (int i = 0; i <= high; ++i) {
      if (Progress(high == 0 ? 0.25 : i / (4.0 * high) + 0.25)) return candidates;
      if (matrix.Get(i, i) == 9) continue;
      tester_.Release(options_.von + i, 1);
      PlainTester::Connect(options_.von + i, 0);
      const double ohm = PlainTester::Resistance(options_.schwelle);
      if (ohm < options_.schwelle) {
        candidates.push_back(i);
      } else {
        for (int j = 0; j <= high; ++j) matrix.Put(i, j, 1, ohm);
      }
      tester_.Release(options_.von + i, 0);
      PlainTester::Connect(options_.von + i, 1);
    }
    return candidates;
  }

  void PairPass(const std::vector<int>& candidates) {
    PlainTester::Prepare(options_.cards, true);
    const auto count = static_cast<int>(candidates.size());
    for (int a = 0; a < count; ++a) {
      const int onLine1 = candidates[static_cast<std::size_t>(a)];
      if (Progress(count == 1 ? 0.5 : a / (2.0 * (count - 1)) + 0.5)) return;
      PlainTester::Connect(options_.von + onLine1, 1);
      for (int b = a; b < count; ++b) {
        const int onLine0 = candidates[static_cast<std::size_t>(b)];
        if (a == b || matrix.Get(onLine0, onLine1) != 0) continue;
        PlainTester::Connect(options_.von + onLine0, 0);
        const double ohm = PlainTester::Resistance(options_.schwelle);
        // The user ignores the first question about a near threshold and cancels at the second.
        if (ohm > 0.9 * options_.schwelle && ohm < 1.1 * options_.schwelle && ++questions_ == 2) return;
        matrix.Put(onLine0, onLine1, ohm < options_.schwelle ? 2 : 1, ohm);
        tester_.Release(options_.von + onLine0, 0);
      }
      tester_.Release(options_.von + onLine1, 1);
    }
  }

  const PlainOptions options_;
  const RandomCase& random_;
  CallLog& log_;
  PlainTester tester_;
  bool allSuspendedBefore_;
  int calls_ = 0;
  int questions_ = 0;
};

class PlainLearnTest : public LearnBench {};

TEST_F(PlainLearnTest, MakesTheSameCallsAndFindsTheSameCells) {
  int failed = 0;
  int stopped = 0;
  for (unsigned seed = 0; seed < 3000 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const RandomCase random(seed);

    CallLog plainLog;
    std::string plainError;
    FakeClock plainClock;
    plainClock.ticksStep = 60;
    FakeDriver plainDriver(plainLog);
    random.ConnectTo(plainDriver);
    PlainLearn plain(plainLog, plainClock, random);
    try {
      plain.Run();
    } catch (const PlainError& error) {
      plainError = error.what();
    }

    CallLog realLog;
    FakeClock realClock(&realLog);
    realClock.ticksStep = 60;
    FakeDriver realDriver(realLog);
    random.ConnectTo(realDriver);
    StartScript(realLog);
    if (random.stopAt != 0 && random.onlyOneStop) StopAt(random.stopAt);
    if (random.stopAt != 0 && !random.onlyOneStop) StopFrom(random.stopAt);
    ui.Answer({mrIgnore, mrCancel});
    data = random.Data();
    const std::string error = HardwareErrorOf([this] { Learn(); });

    EXPECT_EQ(realLog.Text(), plainLog.Text());
    EXPECT_EQ(error, plainError);
    for (int i = 0; i < random.channels; ++i) {
      EXPECT_EQ(data.GetVoltage(i), plain.matrix.Volts(i));
      for (int j = 0; j <= i; ++j) {
        EXPECT_EQ(static_cast<int>(data.Get(i, j)), plain.matrix.Get(i, j)) << i << ", " << j;
        EXPECT_EQ(data.GetR(i, j), plain.matrix.GetR(i, j)) << i << ", " << j;
      }
    }
    EXPECT_TRUE(error.empty() || random.failAt != 0);
    failed += error.empty() ? 0 : 1;
    stopped += random.stopAt != 0 && ProgressCalls() >= random.stopAt ? 1 : 0;
  }
  // The cases are worth something.
  EXPECT_GT(failed, 100);
  EXPECT_GT(stopped, 100);
}

}  // namespace
}  // namespace shorttest::testkit
