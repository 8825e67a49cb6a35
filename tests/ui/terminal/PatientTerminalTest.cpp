#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <string>

#include "tests/ui/terminal/FakeTerminal.h"
#include "ui/terminal/Interrupt.h"
#include "ui/terminal/PatientTerminal.h"

namespace kxbench {
namespace {

/// A terminal that is stopped until it is released; what it got is kept beyond its life.
class StoppedTerminal : public FakeTerminal {
 public:
  StoppedTerminal(std::shared_future<void> released, std::shared_ptr<std::string> got)
      : released_(std::move(released)), got_(std::move(got)) {}

  void Write(std::string_view text) override {
    released_.wait();
    *got_ += text;
  }

 private:
  std::shared_future<void> released_;
  std::shared_ptr<std::string> got_;
};

class StoppedTerminalTest : public testing::Test {
 protected:
  std::unique_ptr<PatientTerminal> Open() {
    return std::make_unique<PatientTerminal>(
        std::make_unique<StoppedTerminal>(release_.get_future().share(), got_));
  }

  std::promise<void> release_;
  std::shared_ptr<std::string> got_ = std::make_shared<std::string>();
};

TEST_F(StoppedTerminalTest, HoldsNobodyUp) {
  const auto terminal = Open();
  EXPECT_TRUE(terminal->Ready());
  terminal->Write("a");
  EXPECT_FALSE(terminal->Ready());
  terminal->Draw("b");
  terminal->Settle();
  EXPECT_EQ(*got_, "");
  release_.set_value();
}

TEST_F(StoppedTerminalTest, GetsEverythingInOrderOnceItIsReleased) {
  auto terminal = Open();
  terminal->Write("one ");
  terminal->Draw("two ");
  terminal->Write("three");
  release_.set_value();
  terminal.reset();
  EXPECT_EQ(*got_, "one two three");
}

TEST_F(StoppedTerminalTest, IsNotWaitedForWithProgressAlone) {
  auto terminal = Open();
  terminal->Draw("47 %");
  terminal.reset();
  EXPECT_EQ(*got_, "");
  release_.set_value();
}

TEST_F(StoppedTerminalTest, IsLeftAtTheSecondInterrupt) {
  const InterruptWatch watch;
  auto terminal = Open();
  terminal->Write("result");
  InterruptWatch::Interrupt();
  InterruptWatch::Interrupt();
  terminal.reset();
  EXPECT_EQ(*got_, "");
  release_.set_value();
}

TEST(PatientTerminal, IsReadyWhenItHasSettled) {
  PatientTerminal terminal(std::make_unique<FakeTerminal>());
  terminal.Write("a");
  while (!terminal.Ready()) terminal.Settle();
  SUCCEED();
}

}  // namespace
}  // namespace kxbench
