#include <gtest/gtest.h>

#include "framework/ScriptCall.h"
#include "framework/ScriptEnvironment.h"
#include "tests/bench/RowName.h"

namespace kx {
namespace {

struct Call {
  const char* name;
  const char* line;
  const char* command;
  std::vector<std::string> arguments;
};

class ScriptCallRow : public testing::TestWithParam<Call> {};

TEST_P(ScriptCallRow, IsRead) {
  const ScriptEnvironment environment;
  const ScriptCall call = ParseScriptCall(GetParam().line, environment);
  EXPECT_EQ(call.name, GetParam().command);
  std::vector<std::string> texts;
  for (const ScriptArgument& argument : call.arguments) texts.push_back(argument.text);
  EXPECT_EQ(texts, GetParam().arguments);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, ScriptCallRow,
    testing::Values(
        Call{"OneArgument", R"(ShortTest("a.dat"))", "ShortTest", {R"("a.dat")"}},
        Call{"BlanksEverywhere", " \tShortTest ( \"a\" + \"b\"  ) ", "ShortTest", {R"("a" + "b")"}},
        Call{"TwoArguments", R"(Do(1, "x,y"))", "Do", {"1", R"("x,y")"}},
        Call{"ParenthesesInAnArgument", R"(Do((1 + 2), 3))", "Do", {"(1 + 2)", "3"}},
        Call{"NoArguments", "Do()", "Do", {}}, Call{"NoList", "Do", "Do", {}},
        Call{"Comment", R"(ShortTest("a") // the first)", "ShortTest", {R"("a")"}},
        Call{"CommentAfterTheName", "Do // all", "Do", {}},
        Call{"CommentSignsInAString", R"(ShortTest("//server/a"))", "ShortTest", {R"("//server/a")"}}),
    RowName<Call>);

struct Fault {
  const char* name;
  const char* line;
  std::size_t column;
  const char* message;
};

class ScriptCallFault : public testing::TestWithParam<Fault> {};

TEST_P(ScriptCallFault, NamesTheColumn) {
  const ScriptEnvironment environment;
  try {
    ParseScriptCall(GetParam().line, environment);
    FAIL() << "no error";
  } catch (const TKXScriptError& error) {
    EXPECT_EQ(error.Column(), GetParam().column);
    EXPECT_STREQ(error.what(), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Rules, ScriptCallFault,
    testing::Values(
        Fault{"NoName", R"("a")", 1, R"(expected a command, found '"a"')"},
        Fault{"OpenList", R"(Do("a")", 7, "expected '+', ',' or ')', found the end of the line"},
        Fault{"OpenListBeforeComment", "Do( // \"a\")", 5, "expected a value, found the end of the line"},
        Fault{"CommentInTheMiddle", "Do(1, // 2)", 7, "expected a value, found the end of the line"},
        Fault{"CommaTwice", "Do(1,,2)", 6, "expected a value, found ','"},
        Fault{"CommaAtTheEnd", "Do(1,)", 6, "expected a value, found ')'"},
        Fault{"CommaAlone", "Do(,)", 4, "expected a value, found ','"},
        Fault{"TwoCalls", "Do(1) Do(2)", 7, "expected the end of the line, found 'Do'"},
        Fault{"Semicolon", "Do(1);", 6, "expected the end of the line, found ';'"},
        Fault{"WithoutParentheses", "Do \"a\"", 4, R"(expected '(', found '"a"')"},
        Fault{"TabCountsAsOneColumn", "\tDo(1 2)", 7, "expected '+', ',' or ')', found '2'"}),
    RowName<Fault>);

TEST(ScriptCall, KnowsWhereItsPartsStand) {
  const ScriptEnvironment environment;
  const ScriptCall call = ParseScriptCall(R"(  Do("ü",  22 ))", environment);
  EXPECT_EQ(call.nameColumn, 3U);
  ASSERT_EQ(call.arguments.size(), 2U);
  EXPECT_EQ(call.arguments[0].column, 6U);
  EXPECT_EQ(call.arguments[1].column, 12U);
  EXPECT_EQ(call.endColumn, 15U);
}

TEST(ScriptLine, IsEmptyWithBlanksOrAComment) {
  EXPECT_TRUE(IsEmptyScriptLine(""));
  EXPECT_TRUE(IsEmptyScriptLine(" \t "));
  EXPECT_TRUE(IsEmptyScriptLine("// ShortTest(\"a\")"));
  EXPECT_TRUE(IsEmptyScriptLine("  //"));
  EXPECT_FALSE(IsEmptyScriptLine("/ShortTest"));
  EXPECT_FALSE(IsEmptyScriptLine("ShortTest(\"a\") //"));
}

}  // namespace
}  // namespace kx
