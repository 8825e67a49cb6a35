#include <gtest/gtest.h>

#include <stdexcept>

#include "bench/wiring/ChannelNames.h"
#include "bench/wiring/NamesFile.h"
#include "tests/bench/program/TemporaryFolder.h"

namespace kxbench::wiring {
namespace {

std::string NameIn(const std::string& content, std::int32_t channel) {
  const TemporaryFolder folder;
  return ChannelNames(folder.Write("p.ini", content)).Name(channel);
}

TEST(NamesInAnIniFile, AreAddedToAnEmptyOne) {
  EXPECT_EQ(WithChannelNames("", {{1, "X1.1"}, {12, "X2.3"}}),
            "[Scanner]\r\nRelais1=X1.1\r\nRelais12=X2.3\r\n");
}

TEST(NamesInAnIniFile, LeaveEverythingElseByteForByte) {
  const std::string old =
      "; mine\n[Other]\r\nRelais1=no\n\n[scanner]\rRelais1 = old \nRelais9=stays\n\n[Last]\nx=1";
  EXPECT_EQ(WithChannelNames(old, {{1, "X1.1"}, {2, "X1.2"}}),
            "; "
            "mine\n[Other]\r\nRelais1=no\n\n[scanner]\rRelais1=X1.1\r\nRelais9=stays\nRelais2=X1.2\r\n\n["
            "Last]\nx=1");
}

TEST(NamesInAnIniFile, ThatAreThereAlreadyAreNotTouched) {
  const std::string old = "[Scanner]\nRelais1 = \"X1.1\"\n";
  EXPECT_EQ(WithChannelNames(old, {{1, "X1.1"}}), old);
}

TEST(NamesInAnIniFile, AreReadBackAsTheyAre) {
  for (const char* name : {"\"X\".\"1\"", "'a'", "Tür.1", "a;b.1", "a=b.2", "[x].1"}) {
    EXPECT_EQ(NameIn(WithChannelNames("", {{7, name}}), 7), name);
  }
}

TEST(NamesInAnIniFile, StayInTheEncodingOfTheFile) {
  const std::string old = "[Scanner]\nRelais1=T\xFCr\n";
  EXPECT_EQ(WithChannelNames(old, {{2, "Öffner.1"}}), old +
                                                          "Relais2=\xD6"
                                                          "ffner.1\r\n");
  EXPECT_THROW(WithChannelNames(old, {{2, "日本.1"}}), std::invalid_argument);
  EXPECT_EQ(NameIn(WithChannelNames("[Scanner]\nRelais1=a\n", {{2, "日本.1"}}), 2), "日本.1");
  EXPECT_THROW(WithChannelNames("\xFF\xFE[", {{2, "a"}}), std::invalid_argument);
}

}  // namespace
}  // namespace kxbench::wiring
