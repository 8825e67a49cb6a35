#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "bench/program/host/RecordReceiver.h"

namespace kxbench {
namespace {

class RecordReceiverFixture : public testing::Test {
 protected:
  LRESULT Send(const char16_t* text, UINT message = 1133) {
    return SendMessageW(reinterpret_cast<HWND>(receiver_.Handle()), message, 0,
                        reinterpret_cast<LPARAM>(text));
  }

  std::vector<std::string> received_;
  RecordReceiver receiver_{[this](const std::string& line) { received_.push_back(line); }};
};

TEST_F(RecordReceiverFixture, TakesTextsDuringTheCallAsUtf8) {
  std::u16string text = u"Kanäle \U0001F50C|1|";
  Send(text.c_str());
  text.assign(text.size(), u'?');
  EXPECT_THAT(received_, testing::ElementsAre("Kanäle \U0001F50C|1|"));
}

TEST_F(RecordReceiverFixture, PassesOverOtherMessages) {
  EXPECT_EQ(Send(u"x", 1134), 0);
  EXPECT_EQ(Send(nullptr), 0);
  EXPECT_THAT(received_, testing::IsEmpty());
}

TEST_F(RecordReceiverFixture, HandleFitsInto32Bits) { EXPECT_EQ(receiver_.Handle() >> 31 >> 1, 0U); }

TEST(RecordReceiver, HandsBackWhatTheTakingThrew) {
  RecordReceiver receiver([](const std::string&) { throw std::runtime_error("disk full"); });
  SendMessageW(reinterpret_cast<HWND>(receiver.Handle()), 1133, 0, reinterpret_cast<LPARAM>(u"x"));
  EXPECT_THROW(receiver.RethrowKept(), std::runtime_error);
}

}  // namespace
}  // namespace kxbench
