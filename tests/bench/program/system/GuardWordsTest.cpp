#include <gtest/gtest.h>

#include "bench/program/system/GuardWords.h"

namespace kxbench {
namespace {

TEST(GuardWords, NewsOfTheWorkingProcess) {
  const GuardNews news = ReadNews(DriverMessage("/opt/a b/libBrenmorHWDevice.so") + DoneMessage());
  EXPECT_EQ(news.driver, "/opt/a b/libBrenmorHWDevice.so");
  EXPECT_TRUE(news.done);
}

TEST(GuardWords, ExpectationsAreKeptInTheirOrder) {
  const GuardNews news = ReadNews(ExpectationMessage("b.dat") + ExpectationMessage("a b.dat"));
  EXPECT_EQ(news.expectations, (std::vector<std::string>{"b.dat", "a b.dat"}));
}

TEST(GuardWords, LastDriverCounts) {
  EXPECT_EQ(ReadNews(DriverMessage("first") + DriverMessage("second")).driver, "second");
}

TEST(GuardWords, SilenceIsNotTheEndOfTheWork) {
  EXPECT_FALSE(ReadNews("").done);
  EXPECT_FALSE(ReadNews(DriverMessage("done")).done);
}

TEST(GuardWords, MessageThatWasCutOffDoesNotCount) {
  EXPECT_FALSE(ReadNews("done").done);
  EXPECT_EQ(ReadNews("driver /opt/libBren").driver, "");
}

TEST(GuardWords, LineSaysWhatBecameOfTheRelays) {
  EXPECT_EQ(GuardLine("it ended", "driver.so", ""), "it ended: every relay was opened");
  EXPECT_EQ(GuardLine("it ended", "driver.so", "no answer"), "it ended: RELAYS MAY BE CLOSED: no answer");
  EXPECT_EQ(GuardLine("it ended", "", ""), "it ended: no driver had been loaded, no relay was switched");
}

TEST(GuardWords, DriverThatCannotBeLoadedIsToldOf) {
  GuardNews news;
  news.driver = "/none/libBrenmorHWDevice.so";
  EXPECT_NE(OpenEveryRelay(news).find("cannot load the driver"), std::string::npos);
}

}  // namespace
}  // namespace kxbench
