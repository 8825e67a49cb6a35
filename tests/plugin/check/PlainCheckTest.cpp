// The check against its plain counterpart: same calls and records, for random expectations, devices, faults
// and cancels.
#include "tests/plugin/check/CheckBench.h"
#include "tests/plugin/check/PlainCheck.h"
#include "tests/support/RandomBench.h"

namespace shorttest::testkit {
namespace {

class PlainCheckTest : public CheckBench {
 protected:
  static void Script(FakeUserInterface& user, const RandomCase& random) {
    user.BarMaximum(FineBar);
    if (random.stopAt == 0) return;
    if (random.closeBox) {
      user.CloseBoxAt(random.stopAt);
    } else {
      user.PressCancelAt(random.stopAt);
    }
  }
};

TEST_F(PlainCheckTest, MakesTheSameCallsAndSendsTheSameRecords) {
  SetDecimalSeparator(".");
  int failed = 0;
  int cancelled = 0;
  std::string everything;
  for (unsigned seed = 0; seed < 4000 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    const RandomCase random(seed);

    CallLog plainLog;
    std::string plainError;
    FakeClock plainClock;
    plainClock.ticksStep = 60;
    FakeDriver plainDriver(plainLog);
    random.ConnectTo(plainDriver);
    FakeUserInterface plainUser(plainLog);
    Script(plainUser, random);
    FakeTestEnvironment plainHost(plainLog);
    try {
      PlainCheck(plainLog, plainClock, plainUser, plainHost, random.options, random.matrix).Run();
    } catch (const PlainError& error) {
      plainError = error.what();
    }

    CallLog realLog;
    FakeClock realClock(&realLog);
    realClock.ticksStep = 60;
    FakeDriver realDriver(realLog);
    random.ConnectTo(realDriver);
    FakeUserInterface realUser(realLog);
    Script(realUser, random);
    SetApplication(&realUser);
    FakeTestEnvironment realHost(realLog);
    SetTestEnvironment(&realHost);
    MessageRecorder recorder(realLog);
    SetMessageWindowHandle(recorder.Handle());
    const std::string error = HardwareErrorOf([&] { RunShortTest(random.Data()); });

    EXPECT_EQ(realLog.Text(), plainLog.Text());
    EXPECT_EQ(error, plainError);
    failed += error.empty() ? 0 : 1;
    cancelled += realHost.Cancels();
    everything += recorder.Records();
  }
  // The cases are worth something.
  EXPECT_GT(failed, 100);
  EXPECT_GT(cancelled, 100);
  for (const char* const kind :
       {"Spannung an", "fehlende Verbindung", "Verbindungstest|", "Kurzschluss zwischen (", " -  ABBRUCH|"}) {
    EXPECT_NE(everything.find(kind), std::string::npos) << kind;
  }
}

}  // namespace
}  // namespace shorttest::testkit
