#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugin/editor/ChannelNumbers.h"
#include "text/NumberText.h"

namespace shorttest {
namespace {

using ::testing::HasSubstr;
using ::testing::StrEq;
using ::testing::Throws;
using ::testing::ThrowsMessage;

TEST(ChannelIndex, CountsFromTheFirstChannel) {
  const TShortTestData data(10, 20);
  EXPECT_EQ(ChannelIndex(data, "10"), 0);
  EXPECT_EQ(ChannelIndex(data, "20"), 10);
}

TEST(ChannelIndex, ZeroIsTooSmall) {
  const TShortTestData data(1, 48);
  EXPECT_THAT([&] { ChannelIndex(data, "0"); }, ThrowsMessage<ChannelRangeError>(StrEq("0 is too small.")));
}

TEST(ChannelIndex, ChannelBehindTheLastIsTooLarge) {
  const TShortTestData data(1, 48);
  EXPECT_THAT([&] { ChannelIndex(data, "49"); }, ThrowsMessage<ChannelRangeError>(StrEq("49 is too large.")));
  EXPECT_THAT([&] { ChannelIndex(data, "250"); },
              ThrowsMessage<ChannelRangeError>(StrEq("250 is too large.")));
}

TEST(ChannelIndex, MessageRepeatsTheItemAsTyped) {
  const TShortTestData data(1, 48);
  EXPECT_THAT([&] { ChannelIndex(data, "0049"); },
              ThrowsMessage<ChannelRangeError>(StrEq("0049 is too large.")));
}

class NoInteger : public ::testing::TestWithParam<const char*> {};

TEST_P(NoInteger, FailsAndQuotesTheText) {
  EXPECT_THAT([&] { IntegerFromText(GetParam()); },
              ThrowsMessage<ConversionError>(HasSubstr("\"" + std::string(GetParam()) + "\"")));
}

INSTANTIATE_TEST_SUITE_P(Texts, NoInteger, ::testing::Values("", "x", "1.5", "1-2", "99999999999"));

TEST(FloatFromText, UsesTheSeparatorInForce) {
  SetDecimalSeparator(",");
  EXPECT_EQ(FloatFromText("2,5"), 2.5);
  EXPECT_THAT([] { FloatFromText("2.5"); }, ThrowsMessage<ConversionError>(HasSubstr("\"2.5\"")));
  SetDecimalSeparator(std::nullopt);
}

TEST(FloatFromText, EmptyTextIsNoNumber) {
  EXPECT_THAT([] { FloatFromText(""); }, Throws<ConversionError>());
}

}  // namespace
}  // namespace shorttest
