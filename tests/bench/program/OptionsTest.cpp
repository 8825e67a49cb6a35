#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/program/Failure.h"
#include "bench/program/Options.h"
#include "tests/bench/RowName.h"

namespace kxbench {
namespace {

using Arguments = std::vector<std::string>;

Options Parse(const Arguments& arguments) { return std::get<Options>(ParseOptions(arguments)); }

std::string Help(const Arguments& arguments) { return std::get<Information>(ParseOptions(arguments)).text; }

TEST(Options, Defaults) {
  const Options options = Parse({"check", "a.dat"});
  EXPECT_EQ(options.command, BenchCommand::Check);
  EXPECT_EQ(options.file, "a.dat");
  EXPECT_EQ(options.progress, ProgressChoice::Auto);
  EXPECT_EQ(options.format, OutputFormat::Report);
  EXPECT_FALSE(options.plugin || options.device || options.project || options.nearThreshold);
}

TEST(Options, StandBeforeAndBehindTheCommand) {
  const Options before = Parse({"--format", "records", "--plugin", "x.so", "check", "a.dat"});
  const Options behind = Parse({"check", "a.dat", "--format", "records", "--plugin", "x.so"});
  EXPECT_EQ(before.format, OutputFormat::Records);
  EXPECT_EQ(behind.format, OutputFormat::Records);
  EXPECT_EQ(before.plugin, "x.so");
  EXPECT_EQ(behind.plugin, "x.so");
}

TEST(Options, TakeAFileNamedLikeACommand) { EXPECT_EQ(Parse({"check", "check"}).file, "check"); }

TEST(Options, TakeAFileNamedLikeAnOption) { EXPECT_EQ(Parse({"check", "--", "--help"}).file, "--help"); }

TEST(Options, TakeAPathFromTheRoot) { EXPECT_EQ(Parse({"check", "/x/a.dat"}).file, "/x/a.dat"); }

TEST(Options, OfLearning) {
  const Options options = Parse({"learn", "a.dat", "--channels", "3-96", "--threshold", "4,5",
                                 "--voltage-control", "1", "--near-threshold", "cancel"});
  EXPECT_EQ(options.command, BenchCommand::Learn);
  EXPECT_EQ(options.channels->first, 3);
  EXPECT_EQ(options.channels->last, 96);
  EXPECT_EQ(options.thresholdOhm, 4.5);
  EXPECT_EQ(options.voltageControl, 1);
  EXPECT_EQ(options.nearThreshold, NearThreshold::Cancel);
}

struct CommandRow {
  const char* name;
  Arguments arguments;
  BenchCommand command;
};

class CommandWord : public testing::TestWithParam<CommandRow> {};
TEST_P(CommandWord, IsUnderstood) { EXPECT_EQ(Parse(GetParam().arguments).command, GetParam().command); }

INSTANTIATE_TEST_SUITE_P(Words, CommandWord,
                         testing::Values(CommandRow{"Check", {"check", "f"}, BenchCommand::Check},
                                         CommandRow{"Run", {"run", "f"}, BenchCommand::Run},
                                         CommandRow{"Learn", {"learn", "f"}, BenchCommand::Learn},
                                         CommandRow{"Edit", {"edit", "f"}, BenchCommand::Edit},
                                         CommandRow{"EditNewFile", {"edit"}, BenchCommand::Edit},
                                         CommandRow{"Info", {"info"}, BenchCommand::Info}),
                         RowName<CommandRow>);

struct ProgressRow {
  const char* name;
  ProgressChoice choice;
};

class ProgressWord : public testing::TestWithParam<ProgressRow> {};
TEST_P(ProgressWord, IsUnderstood) {
  EXPECT_EQ(Parse({"info", "--progress", GetParam().name}).progress, GetParam().choice);
}

INSTANTIATE_TEST_SUITE_P(Words, ProgressWord,
                         testing::Values(ProgressRow{"auto", ProgressChoice::Auto},
                                         ProgressRow{"terminal", ProgressChoice::Terminal},
                                         ProgressRow{"window", ProgressChoice::Window},
                                         ProgressRow{"none", ProgressChoice::None}),
                         RowName<ProgressRow>);

struct Fault {
  const char* name;
  Arguments arguments;
  const char* message;
};

class OptionsFault : public testing::TestWithParam<Fault> {};

TEST_P(OptionsFault, IsOneClearLine) {
  try {
    ParseOptions(GetParam().arguments);
    FAIL() << "no failure";
  } catch (const Failure& failure) {
    EXPECT_EQ(std::string(failure.what()), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, OptionsFault,
    testing::Values(
        Fault{"Empty", {}, "expected a command: check, run, learn, edit or info (see kxbench --help)"},
        Fault{"UnknownOption",
              {"--colour", "check", "a"},
              "The following argument was not expected: --colour (see kxbench --help)"},
        Fault{"UnknownCommand",
              {"test", "a"},
              "expected a command: check, run, learn, edit or info (see kxbench --help)"},
        Fault{"NoFile", {"check"}, "FILE is required (see kxbench --help)"},
        Fault{"TwoFiles",
              {"check", "a", "b"},
              "The following argument was not expected: b (see kxbench --help)"},
        Fault{"NoValue",
              {"check", "a", "--format"},
              "--format: 1 required report|records missing (see kxbench --help)"},
        Fault{"Format", {"check", "a", "--format", "xml"}, "--format: expected report or records, not xml"},
        Fault{"Progress",
              {"check", "a", "--progress", "bar"},
              "--progress: expected auto, terminal, window or none, not bar"},
        Fault{"VoltageControl",
              {"learn", "a", "--voltage-control", "3"},
              "--voltage-control: expected 0, 1 or 2, not 3"},
        Fault{"NearThreshold",
              {"learn", "a", "--near-threshold", "yes"},
              "--near-threshold: expected ask, ignore or cancel, not yes"},
        Fault{"LearnOptionElsewhere",
              {"check", "a", "--threshold", "3"},
              "--channels, --threshold, --voltage-control and --near-threshold apply to learn alone"}),
    RowName<Fault>);

struct Text {
  const char* name;
  const char* text;
};

class BadChannels : public testing::TestWithParam<Text> {};
TEST_P(BadChannels, AreRefused) {
  EXPECT_THROW(Parse({"learn", "a", std::string("--channels=") + GetParam().text}), Failure);
}
INSTANTIATE_TEST_SUITE_P(Texts, BadChannels,
                         testing::Values(Text{"OneNumber", "48"}, Text{"Backwards", "5-3"},
                                         Text{"Zero", "0-3"}, Text{"Negative", "-3-4"}, Text{"Words", "a-b"},
                                         Text{"OpenEnd", "3-"}, Text{"Blanks", "1 - 3"},
                                         Text{"TooLarge", "1-99999999999"}, Text{"Three", "1-2-3"}),
                         RowName<Text>);

class BadThreshold : public testing::TestWithParam<Text> {};
TEST_P(BadThreshold, IsRefused) {
  EXPECT_THROW(Parse({"learn", "a", std::string("--threshold=") + GetParam().text}), Failure);
}
INSTANTIATE_TEST_SUITE_P(Texts, BadThreshold,
                         testing::Values(Text{"Zero", "0"}, Text{"Negative", "-1"}, Text{"Words", "ten"},
                                         Text{"Infinite", "inf"}, Text{"NotANumber", "nan"},
                                         Text{"Unit", "10k"}),
                         RowName<Text>);

TEST(Help, TellsOfCommandsOptionsAndExitStatus) {
  const std::string help = Help({"--help"});
  for (const char* part : {"check", "run", "learn", "edit", "info", "--plugin", "--device", "--project",
                           "--progress", "--format", "--channels", "--threshold", "--voltage-control",
                           "--near-threshold", "Exit status", "2 goes before 3 and 3 before 1"}) {
    EXPECT_THAT(help, testing::HasSubstr(part));
  }
}

TEST(Version, IsTold) {
  const std::string told = Help({"--version"});
  ASSERT_THAT(told, testing::StartsWith("kxbench "));
  EXPECT_EQ(told.find_first_not_of("0123456789.", 8), told.size() - 1) << told;
}

}  // namespace
}  // namespace kxbench
