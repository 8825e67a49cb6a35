#include <gtest/gtest.h>

#include "bench/program/commands/SelfTestReport.h"

namespace kxbench {
namespace {

TesterDefect OnRelay(TesterDefectKind kind, std::optional<std::int32_t> channel, std::int32_t line,
                     bool certain) {
  return {kind, 2, channel, line, certain, 0.0};
}

SelfTestSummary Tested(std::vector<TesterDefect> defects) {
  SelfTestSummary summary;
  summary.end = SelfTestEnd::Tested;
  summary.firstChannel = 1;
  summary.lastChannel = 96;
  summary.cards = {1, 2};
  summary.defects = std::move(defects);
  return summary;
}

std::string Report(std::vector<TesterDefect> defects) {
  return SelfTestReport(Tested(std::move(defects)), wiring::ChannelNames());
}

const std::string Head = "Self-test of the channels 1 to 96, cards 1, 2\n\n";

TEST(TesterReport, WithoutDefects) {
  EXPECT_EQ(Report({}), Head + "no defects\n");
  EXPECT_EQ(StatusOf(Tested({})), ExitStatus::NoFindings);
}

TEST(TesterReport, NamesCardChannelRelayAndLine) {
  EXPECT_EQ(Report({OnRelay(TesterDefectKind::NeverCloses, 49, 0, true),
                    OnRelay(TesterDefectKind::NeverOpens, 96, 1, true)}),
            Head +
                "  card 2, channel 49, relay 1 on line 0: never closes\n"
                "  card 2, channel 96, relay 48 on line 1: never opens\n"
                "\nFAIL: 2 defects\n");
}

TEST(TesterReport, TellsOfTwoRelaysThatCannotBeToldApartInOneLine) {
  EXPECT_EQ(
      Report({OnRelay(TesterDefectKind::NeverCloses, 50, 0, false),
              OnRelay(TesterDefectKind::NeverCloses, 50, 1, false),
              OnRelay(TesterDefectKind::NeverCloses, 51, 0, false),
              OnRelay(TesterDefectKind::NeverCloses, 51, 1, false)}),
      Head +
          "  card 2, channel 50, relay 2: the one on line 0 or the one on line 1 never closes, or neither "
          "does\n"
          "  card 2, channel 51, relay 3: the one on line 0 or the one on line 1 never closes, or neither "
          "does\n"
          "\nFAIL: 2 defects\n");
}

TEST(TesterReport, TellsOfACardOfWhichTheLinesAreConnectedInOneLine) {
  EXPECT_EQ(Report({OnRelay(TesterDefectKind::NeverOpens, std::nullopt, 0, true),
                    OnRelay(TesterDefectKind::NeverOpens, std::nullopt, 1, true)}),
            Head +
                "  card 2: line 0 and line 1 are connected with every relay open: a relay on either never "
                "opens. The "
                "channels of this card were not tested\n"
                "\nFAIL: 1 defect\n");
}

TEST(TesterReport, OfAllKinds) {
  EXPECT_EQ(Report({{TesterDefectKind::NoCard, 1, std::nullopt, std::nullopt, true, 0.0},
                    {TesterDefectKind::NotEmpty, 2, 50, std::nullopt, true, 0.0},
                    {TesterDefectKind::NotEmpty, 2, 51, std::nullopt, false, 0.0}}),
            Head +
                "  card 1: does not answer\n"
                "  card 2, channel 50: not empty, connected to another channel\n"
                "  card 2, channel 51: possibly not empty\n"
                "\nFAIL: 3 defects\n");
}

TEST(TesterReport, SaysThatALiveFixtureEndedTheTest) {
  const SelfTestSummary summary =
      Tested({{TesterDefectKind::NoCard, 1, std::nullopt, std::nullopt, true, 0.0},
              {TesterDefectKind::Voltage, 2, 50, std::nullopt, true, 24.0}});
  EXPECT_EQ(SelfTestReport(summary, wiring::ChannelNames()),
            Head +
                "  card 1: does not answer\n"
                "  card 2, channel 50: carries a voltage (24 V)\n"
                "\nThe fixture is live: no relay was tested.\nFAIL: 2 defects\n");
  EXPECT_EQ(StatusOf(summary), ExitStatus::Findings);
  EXPECT_EQ(
      SelfTestJson(summary),
      "{\"format\":\"selftest\",\"version\":1,\"verdict\":\"fail\",\"channels\":[1,96],\"cards\":[1,2],"
      "\"defects\":[{\"kind\":\"no-card\",\"card\":1,\"line\":null,\"channel\":null,\"certain\":true},"
      "{\"kind\":\"voltage\",\"card\":2,\"line\":null,\"channel\":50,\"certain\":true,\"volts\":24.0}]}\n");
}

}  // namespace
}  // namespace kxbench
