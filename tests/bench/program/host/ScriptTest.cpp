#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/program/host/Script.h"
#include "framework/ScriptEnvironment.h"
#include "tests/bench/RowName.h"
#include "tests/bench/program/ScriptCommands.h"

namespace kxbench {
namespace {

class ScriptReading : public testing::Test {
 protected:
  ScriptReading() { parser_.GetEnvironment().SetVariable("PROJEKTPFAD", "/p/"); }

  Script Read(const std::string& text) {
    return ReadScript(
        "night.kx", text, [this](const std::string& name) { return commands_.Find(name); },
        parser_.GetEnvironment());
  }

  std::string FaultOf(const std::string& text) {
    try {
      Read(text);
    } catch (const Failure& failure) {
      return failure.what();
    }
    return "no fault";
  }

  static std::string Value(const ScriptStep& step, const std::string& name) {
    return TStringValue::GetVal(step.params->GetValue(name));
  }

  kx::ScriptParser parser_;
  ScriptCommands commands_{parser_};
};

TEST_F(ScriptReading, HasOneCallALine) {
  const Script script = Read(
      "// all harnesses\r\n"
      "ShortTest(PROJEKTPFAD + \"a.dat\") // the first\r\n"
      "\r\n"
      "  shorttest(\"b.dat\")\n"
      "Echo(\"x\", 1 + 2)");
  ASSERT_EQ(script.size(), 3U);
  EXPECT_EQ(script[0].where, "night.kx:2");
  EXPECT_EQ(script[0].call, "ShortTest(PROJEKTPFAD + \"a.dat\")");
  EXPECT_EQ(Value(script[0], "Datafile"), "/p/a.dat");
  EXPECT_EQ(script[0].params->GetExpression("Datafile"), "PROJEKTPFAD + \"a.dat\"");
  EXPECT_EQ(script[1].where, "night.kx:4");
  EXPECT_EQ(script[1].call, "shorttest(\"b.dat\")");
  EXPECT_EQ(script[1].command, script[0].command);
  EXPECT_EQ(Value(script[2], "Second"), "3");
}

TEST_F(ScriptReading, PassesOverAByteOrderMark) {
  EXPECT_EQ(Read("\xEF\xBB\xBF"
                 "ShortTest(\"a\")")
                .size(),
            1U);
}

TEST_F(ScriptReading, KeepsCommentSignsInStrings) {
  EXPECT_EQ(Value(Read("ShortTest(\"//server/a.dat\")")[0], "Datafile"), "//server/a.dat");
}

struct Fault {
  const char* name;
  const char* text;
  const char* message;
};

class ScriptFault : public ScriptReading, public testing::WithParamInterface<Fault> {};

TEST_P(ScriptFault, NamesLineAndColumn) { EXPECT_EQ(FaultOf(GetParam().text), GetParam().message); }

INSTANTIATE_TEST_SUITE_P(
    Rules, ScriptFault,
    testing::Values(
        Fault{"UnknownCommand", "ShortTest(\"a\")\n  LongTest(\"a\")",
              "night.kx:2:3: unknown command LongTest"},
        Fault{"Syntax", "\nShortTest(\"a\"",
              "night.kx:2:14: expected '+', ',' or ')', found the end of the line"},
        Fault{"UnknownVariable", "ShortTest(\"a\" + KABEL)", "night.kx:1:17: unknown variable KABEL"},
        Fault{"TooManyParameters", "ShortTest(\"a\", 1)",
              "night.kx:1:16: ShortTest takes 1 parameter, not 2"},
        Fault{"TooFewParameters", "Echo(\"a\")", "night.kx:1:9: Echo takes 2 parameters, not 1"},
        Fault{"NumberForAString", "ShortTest(12)",
              "night.kx:1:11: the parameter Datafile must be of type String"},
        Fault{"StringForANumber", "Echo(\"a\", \"1\")",
              "night.kx:1:11: the parameter Second must be of type Integer"},
        Fault{"FaultAfterGoodLines", "ShortTest(\"a\")\nShortTest(\"b\")\nx",
              "night.kx:3:1: unknown command x"},
        Fault{"NotUtf8", "ShortTest(\"a\")\nShortTest(\"\xFC\")", "night.kx:2:1: the line is not UTF-8"},
        Fault{"Empty", "", "night.kx:1:1: the script calls no command"},
        Fault{"OnlyComments", "// nothing\n\n", "night.kx:1:1: the script calls no command"}),
    RowName<Fault>);

TEST_F(ScriptReading, OfASingleCallTakesAnyFileName) {
  const auto find = [this](const std::string& name) { return commands_.Find(name); };
  const std::string name = R"(C:\new "harness" // 1.dat)";
  const Script script = SingleCall("ShortTest", name, find, parser_.GetEnvironment());
  ASSERT_EQ(script.size(), 1U);
  EXPECT_EQ(Value(script[0], "Datafile"), name);
  EXPECT_EQ(script[0].call, R"(ShortTest("C:\new ""harness"" // 1.dat"))");
  EXPECT_EQ(script[0].where, "");
}

TEST_F(ScriptReading, OfASingleCallNeedsTheCommand) {
  const auto none = [](const std::string&) -> TKXFuncRunEdit* { return nullptr; };
  EXPECT_THROW(SingleCall("ShortTest", "a.dat", none, parser_.GetEnvironment()), Failure);
}

}  // namespace
}  // namespace kxbench
