#pragma once

#include <string>
#include <vector>

#include "tests/support/FakeTestEnvironment.h"
#include "tests/support/FakeUserInterface.h"
#include "tests/support/PlainTester.h"

namespace shorttest::testkit {

/// A check, written down step by step; see PlainTester.h. `data` is the expectation. Records go to the log as
/// "send TEXT", with a point as the decimal separator.
class PlainCheck {
 public:
  PlainCheck(CallLog& log, FakeClock& clock, FakeUserInterface& ui, FakeTestEnvironment& environment,
             const PlainOptions& options, const PlainMatrix& data)
      : log_(log),
        ui_(ui),
        environment_(environment),
        tester_(log, clock),
        options_(options),
        data_(data),
        work_(data.count),
        high_(data.count - 1) {
    if (options_.schwelle2 < options_.schwelle) options_.schwelle2 = options_.schwelle;
  }

  void Run();

 private:
  bool Update(double position);
  void Passes();
  void CleanUp();

  int ConnectionPass();
  int VoltagePass();
  std::vector<int> IsolationPass();
  int PairPass(const std::vector<int>& candidates);

  void Report();
  void ReportVoltages();
  void ReportConnections();
  void ReportShorts();
  void SendError(const std::string& finding, const std::string& fields);

  std::string Name(int index) const { return std::to_string(options_.von + index); }
  std::string List(const std::vector<int>& indices) const;

  CallLog& log_;
  FakeUserInterface& ui_;
  FakeTestEnvironment& environment_;
  PlainTester tester_;
  PlainOptions options_;
  const PlainMatrix& data_;
  PlainMatrix work_;
  int high_;
  std::unique_ptr<ProgressDialog> dialog_;
  TaskWindowList windows_;
  int sent_ = 0;
};

}  // namespace shorttest::testkit
