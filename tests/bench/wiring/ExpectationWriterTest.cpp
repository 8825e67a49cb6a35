#include <gtest/gtest.h>

#include <system_error>

#include "bench/wiring/ExpectationWriter.h"
#include "plugin/data/ShorttestData.h"
#include "tests/bench/program/TemporaryFolder.h"

namespace kxbench::wiring {
namespace {

class WrittenExpectation : public testing::Test {
 protected:
  std::string File() const { return (folder_.Path() / "cable.dat").string(); }

  TemporaryFolder folder_;
};

TEST_F(WrittenExpectation, ConnectsThePairsOfEachNetAndNoOthers) {
  WriteExpectation(File(), {5, 9, {{5, 7, 9}}}, OptionsFrom::File);
  const TShortTestData data(File());
  EXPECT_EQ(data.von, 5);
  EXPECT_EQ(data.bis, 9);
  for (std::int32_t i = 0; i < 5; ++i) {
    for (std::int32_t j = 0; j < i; ++j) {
      const bool connected = i % 2 == 0 && j % 2 == 0;
      EXPECT_EQ(data.Get(i, j), connected ? CellState::Connected : CellState::NotConnected) << i << ", " << j;
    }
    EXPECT_EQ(data.Get(i, i), CellState::NotApplicable);
  }
  EXPECT_EQ(data.Schwelle, TShortTestData(1, 2).Schwelle);
}

TEST_F(WrittenExpectation, KeepsThresholdsAndOptionsAndWhatIsNotTheirs) {
  TShortTestData old(1, 4);
  old.Schwelle = 3;
  old.Schwelle2 = 4;
  old.U_Control = 1;
  old.LastRelaisKarte = 2;
  old.LastRelais = 7;
  old.Timeout = 1234;
  old.MaxError = 99;
  old.SuspendChannel(1, 0);
  folder_.Write("cable.dat", "; ours\n[Other]\nx=1\n");
  old.SaveExpectationFile(File());
  WriteExpectation(File(), {2, 3, {{2, 3}}}, OptionsFrom::File);
  const TShortTestData data(File());
  EXPECT_EQ(data.von, 2);
  EXPECT_EQ(data.Schwelle, 3);
  EXPECT_EQ(data.Schwelle2, 4);
  EXPECT_EQ(data.U_Control, 1);
  EXPECT_EQ(data.LastRelaisKarte, 2);
  EXPECT_EQ(data.LastRelais, 7);
  EXPECT_EQ(data.Timeout, 1234);
  EXPECT_EQ(data.MaxError, 99);
  EXPECT_EQ(data.Get(0, 0), CellState::NotApplicable) << "nothing is suspended";
  EXPECT_EQ(folder_.Read("cable.dat").substr(0, 19), "; ours\n[Other]\nx=1\n");
  WriteExpectation(File(), {2, 3, {{2, 3}}}, OptionsFrom::Defaults);
  EXPECT_EQ(TShortTestData(File()).Timeout, TShortTestData(1, 2).Timeout);
}

TEST_F(WrittenExpectation, IsNoneWhereTheFolderIsMissing) {
  EXPECT_THROW(WriteExpectation((folder_.Path() / "none/cable.dat").string(), {1, 2, {}}, OptionsFrom::File),
               std::system_error);
}

}  // namespace
}  // namespace kxbench::wiring
