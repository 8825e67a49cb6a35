#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/program/CommandLine.h"
#include "bench/program/Commands.h"
#include "bench/program/host/OptionValues.h"
#include "bench/program/system/Failure.h"
#include "tests/bench/RowName.h"

namespace kxbench {
namespace {

using Arguments = std::vector<std::string>;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

enum class Sort { ByName, ByTime };
constexpr ChoiceWord<Sort> SortWords[] = {{"name", Sort::ByName}, {"time", Sort::ByTime}};

/// A command with an option of every kind: list SOURCE [TARGET].
class ListCommand : public Command {
 public:
  std::string Name() const override { return "list"; }
  std::string Summary() const override { return "Lists things"; }
  std::string Notes() const override { return "Things come in an order."; }
  void Declare(OptionList& list) override {
    list.Argument("SOURCE", "Where from", Needed::Yes, source);
    list.Argument("TARGET", "Where to", Needed::No, target);
    list.Show({"--device"});
    list.Words("--sort", SortWords, "The order", sort);
    list.Flag("--all", "Hidden things, too", all);
    list.Value("-o,--output", "FILE", "Result", [this](const std::string& file) { outputs.push_back(file); })
        .repeatable = true;
  }
  ExitStatus Run(const CommonOptions&) override { return ExitStatus::NoFindings; }

  std::string source, target;
  Sort sort = Sort::ByName;
  bool all = false;
  std::vector<std::string> outputs;
};

class CountCommand : public Command {
 public:
  std::string Name() const override { return "count"; }
  std::string Summary() const override { return "Counts things"; }
  void Declare(OptionList& list) override { list.Value("--from", "NUMBER", "The first", from); }
  ExitStatus Run(const CommonOptions&) override { return ExitStatus::NoFindings; }

  std::optional<std::string> from;
};

class CommandLine : public testing::Test {
 protected:
  CommandLine() {
    auto list = std::make_unique<ListCommand>();
    list_ = list.get();
    commands_.push_back(std::move(list));
    commands_.push_back(std::make_unique<CountCommand>());
  }

  Chosen Parse(const Arguments& arguments) {
    return std::get<Chosen>(ParseCommandLine(arguments, commands_));
  }
  std::string Told(const Arguments& arguments) {
    return std::get<Information>(ParseCommandLine(arguments, commands_)).text;
  }
  std::string FailureOf(const Arguments& arguments) {
    try {
      ParseCommandLine(arguments, commands_);
    } catch (const Failure& failure) {
      return failure.what();
    }
    return "no failure";
  }

  CommandList commands_;
  ListCommand* list_;
};

TEST_F(CommandLine, ChoosesTheCommandAndReadsItsArguments) {
  EXPECT_EQ(Parse({"list", "here", "there"}).command, list_);
  EXPECT_EQ(list_->source, "here");
  EXPECT_EQ(list_->target, "there");
}

TEST_F(CommandLine, WithoutOptionsLeavesTheDefaults) {
  const Chosen chosen = Parse({"list", "here"});
  EXPECT_EQ(list_->target, "");
  EXPECT_EQ(list_->sort, Sort::ByName);
  EXPECT_FALSE(list_->all);
  EXPECT_EQ(chosen.common.progress, ProgressChoice::Auto);
  EXPECT_FALSE(chosen.common.plugin || chosen.common.device || chosen.common.project);
}

TEST_F(CommandLine, TakesOptionsBeforeAndAfterTheCommand) {
  const Chosen chosen = Parse({"--sort", "time", "--device", "x.device", "list", "--all", "here", "-o", "a",
                               "there", "--output=b", "--progress", "none"});
  EXPECT_EQ(list_->sort, Sort::ByTime);
  EXPECT_TRUE(list_->all);
  EXPECT_THAT(list_->outputs, ElementsAre("a", "b"));
  EXPECT_EQ(list_->target, "there");
  EXPECT_EQ(chosen.common.device, "x.device");
  EXPECT_EQ(chosen.common.progress, ProgressChoice::None);
}

struct FileNameRow {
  const char* name;
  Arguments arguments;
  const char* source;
};

class OddFileName : public CommandLine, public testing::WithParamInterface<FileNameRow> {};

TEST_P(OddFileName, IsTakenAsItStands) {
  Parse(GetParam().arguments);
  EXPECT_EQ(list_->source, GetParam().source);
}

INSTANTIATE_TEST_SUITE_P(Names, OddFileName,
                         testing::Values(FileNameRow{"LikeACommand", {"list", "list"}, "list"},
                                         FileNameRow{"LikeAnother", {"list", "count"}, "count"},
                                         FileNameRow{"LikeAnOption", {"list", "--", "--help"}, "--help"},
                                         FileNameRow{"FromTheRoot", {"list", "/x/a.dat"}, "/x/a.dat"},
                                         FileNameRow{"Brackets", {"list", "[a,b]"}, "[a,b]"},
                                         FileNameRow{"Dash", {"list", "-"}, "-"},
                                         FileNameRow{"Equals", {"list", "a=b"}, "a=b"}),
                         RowName<FileNameRow>);

struct FaultRow {
  const char* name;
  Arguments arguments;
  const char* message;
};

class CommandLineFault : public CommandLine, public testing::WithParamInterface<FaultRow> {};

TEST_P(CommandLineFault, IsNamedInOneLine) { EXPECT_EQ(FailureOf(GetParam().arguments), GetParam().message); }

INSTANTIATE_TEST_SUITE_P(
    CommandLines, CommandLineFault,
    testing::Values(
        FaultRow{"Empty", {}, "expected a command: list or count (see kxbench --help)"},
        FaultRow{"CommandMistyped",
                 {"lsit", "a"},
                 "unknown command lsit; did you mean list? (see kxbench --help)"},
        FaultRow{
            "CommandUnknown", {"sing"}, "unknown command sing; expected list or count (see kxbench --help)"},
        FaultRow{"CommandEmpty", {""}, "unknown command \"\"; expected list or count (see kxbench --help)"},
        FaultRow{"OptionMistyped",
                 {"list", "a", "--srot", "name"},
                 "unknown option --srot; did you mean --sort? (see kxbench list --help)"},
        FaultRow{"OptionMistypedWithItsValue",
                 {"list", "a", "--outptu=x"},
                 "unknown option --outptu; did you mean --output? (see kxbench list --help)"},
        FaultRow{"OptionMistypedBeforeTheCommand",
                 {"--devise", "x", "list", "a"},
                 "unknown option --devise; did you mean --device? (see kxbench --help)"},
        FaultRow{
            "OptionUnknown", {"list", "a", "--colour"}, "unknown option --colour (see kxbench list --help)"},
        FaultRow{"OptionUnknownShort",
                 {"list", "a", "-x"},
                 "unknown option -x; did you mean -o? (see kxbench list "
                 "--help)"},
        FaultRow{"OptionOfAnother",
                 {"list", "a", "--from", "1"},
                 "--from is an option of count, not of list (see kxbench list --help)"},
        FaultRow{"OptionTwice", {"list", "a", "--sort", "name", "--sort", "time"}, "--sort is given 2 times"},
        FaultRow{"NoValue", {"list", "a", "--sort"}, "--sort needs a value (see kxbench --help)"},
        FaultRow{"ValueOfAFlag", {"list", "a", "--all=1"}, "--all takes no value"},
        FaultRow{"EmptyValue", {"list", "a", "--device", ""}, "--device has an empty value"},
        FaultRow{"EmptyInlineValue", {"list", "--device=", "a"}, "--device has an empty value"},
        FaultRow{"WrongWord", {"list", "a", "--sort", "size"}, "--sort: expected name or time, not size"},
        FaultRow{"NoArgument", {"list"}, "list needs SOURCE (see kxbench list --help)"},
        FaultRow{"EmptyArgument", {"list", ""}, "SOURCE of list is empty"},
        FaultRow{
            "TooManyArguments", {"list", "a", "b", "c"}, "unexpected argument c (see kxbench list --help)"}),
    RowName<FaultRow>);

TEST_F(CommandLine, HelpOfTheProgramListsTheCommands) {
  const std::string help = Told({"--help"});
  for (const char* part : {"list ", "Lists things", "count ", "Counts things", "Exit status",
                           "2 goes before 3 and 3 before 1"}) {
    EXPECT_THAT(help, HasSubstr(part));
  }
}

TEST_F(CommandLine, HelpOfACommandListsItsOptionsAndNoOthers) {
  const std::string help = Told({"list", "--help"});
  for (const char* part : {"SOURCE", "Where from", "TARGET", "--sort name|time", "--all", "-o,--output FILE",
                           "--device FILE", "Things come in an order."}) {
    EXPECT_THAT(help, HasSubstr(part));
  }
  for (const char* part : {"--from", "--plugin", "Exit status"}) EXPECT_THAT(help, Not(HasSubstr(part)));
  EXPECT_EQ(Told({"-h", "list"}), help);
}

TEST_F(CommandLine, TellsTheVersion) {
  const std::string told = Told({"--version"});
  ASSERT_THAT(told, testing::StartsWith("kxbench "));
  EXPECT_EQ(told.find_first_not_of("0123456789.", 8), told.size() - 1) << told;
}

TEST(Commands, HaveDifferentNamesAndAHelpOfTheirOwn) {
  const CommandList commands = AllCommands();
  ASSERT_THAT(commands, Not(IsEmpty()));
  std::vector<std::string> names;
  for (const auto& command : commands) {
    const std::string help =
        std::get<Information>(ParseCommandLine({command->Name(), "--help"}, commands)).text;
    EXPECT_THAT(help, HasSubstr("kxbench " + command->Name()));
    EXPECT_THAT(names, Not(testing::Contains(command->Name())));
    names.push_back(command->Name());
  }
  EXPECT_THAT(names, ElementsAre("check", "diagnose", "run", "learn", "edit", "info", "import", "export",
                                 "compare", "draw", "prove", "selftest", "station", "results"));
}

TEST(Commands, AnOptionMayDoWithoutItsValue) {
  const auto chosen = [&](std::vector<std::string> words) {
    return std::holds_alternative<Chosen>(ParseCommandLine(std::move(words), AllCommands()));
  };
  EXPECT_TRUE(chosen({"draw", "x.dat", "--faults", "-o", "p.svg"}));
  EXPECT_TRUE(chosen({"draw", "x.dat", "-o", "p.svg", "--faults"}));
  EXPECT_TRUE(chosen({"draw", "x.dat", "-o", "p.svg", "--faults", "r.json"}));
  EXPECT_THROW(chosen({"draw", "x.dat", "--faults", "r.json", "-o"}), Failure);
  EXPECT_THROW(chosen({"draw", "--faults", "x.dat", "-o", "p.svg"}), Failure);
}

struct BadText {
  const char* name;
  const char* text;
};

class BadChannels : public testing::TestWithParam<BadText> {};
TEST_P(BadChannels, AreRefused) { EXPECT_THROW(ReadChannels(GetParam().text), Failure); }
INSTANTIATE_TEST_SUITE_P(Texts, BadChannels,
                         testing::Values(BadText{"OneNumber", "48"}, BadText{"Backwards", "5-3"},
                                         BadText{"Zero", "0-3"}, BadText{"Negative", "-3-4"},
                                         BadText{"Words", "a-b"}, BadText{"OpenEnd", "3-"},
                                         BadText{"Blanks", "1 - 3"}, BadText{"TooLarge", "1-99999999999"},
                                         BadText{"Three", "1-2-3"}),
                         RowName<BadText>);

class BadThreshold : public testing::TestWithParam<BadText> {};
TEST_P(BadThreshold, IsRefused) { EXPECT_THROW(ReadThreshold(GetParam().text), Failure); }
INSTANTIATE_TEST_SUITE_P(Texts, BadThreshold,
                         testing::Values(BadText{"Zero", "0"}, BadText{"Negative", "-1"},
                                         BadText{"Words", "ten"}, BadText{"Infinite", "inf"},
                                         BadText{"NotANumber", "nan"}, BadText{"Unit", "10k"}),
                         RowName<BadText>);

TEST(OptionValues, AreRead) {
  EXPECT_EQ(ReadChannels("3-96").first, 3);
  EXPECT_EQ(ReadChannels("3-96").last, 96);
  EXPECT_EQ(ReadThreshold("4,5"), 4.5);
}

}  // namespace
}  // namespace kxbench
