#pragma once

#include <memory>
#include <string>
#include <vector>

#include "framework/kxcomponents.h"
#include "plugin/check/CheckForm.h"
#include "plugin/check/CheckPasses.h"
#include "plugin/check/ResultRecords.h"
#include "plugin/check/ShorttestCheck.h"
#include "tests/support/Bench.h"
#include "tests/support/FakeFramework.h"
#include "tests/support/FakeTestEnvironment.h"
#include "tests/support/FakeUserInterface.h"
#include "tests/support/MatrixText.h"
#include "text/NumberText.h"

namespace shorttest::testkit {

/// A bench with an expectation `data`, a host and its windows. The bar has a range of a million, so that the
/// log shows positions in full.
class CheckBench : public Bench {
 protected:
  void SetUp() override {
    ui.BarMaximum(FineBar);
    SetApplication(&ui);
    SetTestEnvironment(&environment);
    SetMessageWindowHandle(host.Handle());
    SetDecimalSeparator(",");
  }
  void TearDown() override {
    CheckForm.reset();
    SetDecimalSeparator(std::nullopt);
    SetMessageWindowHandle(0);
    SetTestEnvironment(nullptr);
    SetApplication(nullptr);
    EXPECT_EQ(ui.Dialogs(), 0);
    Bench::TearDown();
  }

  /// What the device should look like: a range and the states of its matrix, see MatrixText.
  void Expect(int von, const std::string& matrix) {
    int rows = 1;
    for (const char character : matrix) rows += character == ' ' ? 1 : 0;
    data = TShortTestData(von, von + rows - 1);
    SetMatrix(data, matrix);
  }

  /// The records that the host got, each ended by a line feed.
  std::string Records() const { return host.Records(); }

  FakeUserInterface ui{log};
  FakeTestEnvironment environment{log};
  MessageRecorder host{log};
  TShortTestData data{1, 4};
};

/// A bench for a single pass: the dialog is shown already, `work` is empty.
class PassBench : public CheckBench {
 protected:
  void Expect(int von, const std::string& matrix) {
    CheckBench::Expect(von, matrix);
    work = TShortTestData(data.von, data.bis);
    work.Schwelle = data.Schwelle;
    work.Schwelle2 = data.Schwelle2;
    CheckForm = std::make_unique<TShortTestCheckForm>();
    CheckForm->Show();
    log.Clear();
  }

  /// The bundle that the voltage pass leaves on line 1.
  void Bundle() {
    for (int i = 0; i <= data.Highconnections(); ++i) {
      if (data.Get(i, i) != CellState::Suspended) ConnectChannel(data.von + i, 1);
    }
    log.Clear();
  }

  TShortTestData work{1, 4};
};

}  // namespace shorttest::testkit
