#include <gtest/gtest.h>

#include "framework/ScriptEnvironment.h"
#include "framework/ScriptExpression.h"
#include "tests/bench/RowName.h"

namespace kx {
namespace {

class ScriptExpressionFixture {
 protected:
  ScriptExpressionFixture() {
    environment_.SetVariable("PROJEKTPFAD", "/projects/trailer/");
    environment_.SetVariable("PROJECTNAME", "trailer");
  }

  std::string Evaluate(const std::string& text) {
    return ParseScriptExpression(text, environment_)->Evaluate()->GetText();
  }

  ScriptEnvironment environment_;
};

struct Value {
  const char* name;
  const char* text;
  const char* value;
};

class ScriptExpressionValue : public ScriptExpressionFixture, public testing::TestWithParam<Value> {};

TEST_P(ScriptExpressionValue, IsComputed) { EXPECT_EQ(Evaluate(GetParam().text), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(
    Rules, ScriptExpressionValue,
    testing::Values(
        Value{"String", R"("Kabel.dat")", "Kabel.dat"}, Value{"EmptyString", R"("")", ""},
        Value{"DoubledQuoteStandsForOne", R"("a ""b"" c")", "a \"b\" c"}, Value{"OneQuote", R"("""")", "\""},
        Value{"BackslashIsACharacter", R"("C:\new\table.dat")", R"(C:\new\table.dat)"},
        Value{"BackslashBeforeTheQuote", R"("C:\")", R"(C:\)"},
        Value{"CommentSignsInAString", R"("http://x")", "http://x"},
        Value{"Umlauts", R"("Stücklänge")", "Stücklänge"}, Value{"Integer", "42", "42"},
        Value{"LeadingZeros", "007", "7"},
        Value{"LargestInteger", "9223372036854775807", "9223372036854775807"},
        Value{"Variable", "PROJECTNAME", "trailer"},
        Value{"VariableInSmallLetters", "projectname", "trailer"},
        Value{"VariableInMixedCase", "ProjektPfad", "/projects/trailer/"},
        Value{"Concatenation", R"(PROJEKTPFAD + PROJECTNAME + ".ini")", "/projects/trailer/trailer.ini"},
        Value{"WithoutBlanks", R"("a"+"b")", "ab"}, Value{"WithTabs", "\t\"a\"\t+\t\"b\"\t", "ab"},
        Value{"IntegersAdd", "1 + 2 + 3", "6"}, Value{"IntegerJoinsAString", R"("Kabel" + 12)", "Kabel12"},
        Value{"FromLeftToRight", R"(1 + 2 + "x" + 1 + 2)", "3x12"},
        Value{"Parentheses", R"("x" + (1 + 2))", "x3"}, Value{"NestedParentheses", R"((("a")))", "a"}),
    RowName<Value>);

struct ExpressionFault {
  const char* name;
  const char* text;
  std::size_t column;
  const char* message;
};

class ScriptExpressionFault : public ScriptExpressionFixture,
                              public testing::TestWithParam<ExpressionFault> {};

TEST_P(ScriptExpressionFault, NamesTheColumn) {
  try {
    Evaluate(GetParam().text);
    FAIL() << "no error";
  } catch (const TKXScriptError& error) {
    EXPECT_EQ(error.Column(), GetParam().column);
    EXPECT_STREQ(error.what(), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Rules, ScriptExpressionFault,
    testing::Values(
        ExpressionFault{"Empty", "", 1, "expected a value, found the end of the line"},
        ExpressionFault{"Blank", "   ", 4, "expected a value, found the end of the line"},
        ExpressionFault{"OpenString", R"(1 + "abc)", 5, "the string is not closed"},
        ExpressionFault{"ThreeQuotes", R"(""")", 1, "the string is not closed"},
        ExpressionFault{"PlainPath", "/home/kabel.dat", 1, "unexpected character '/'"},
        ExpressionFault{"WindowsPath", R"(C:\kabel.dat)", 2,
                        "expected '+' or the end of the expression, found ':'"},
        ExpressionFault{"PlainFileName", "kabel.dat", 6, "unexpected character '.'"},
        ExpressionFault{"ColumnCountsCharactersNotBytes", R"("äöü" + %)", 9, "unexpected character '%'"},
        ExpressionFault{"UnexpectedUmlaut", "ä", 1, "unexpected character 'ä'"},
        ExpressionFault{"MissingRightSide", R"("a" +)", 6, "expected a value, found the end of the line"},
        ExpressionFault{"MissingPlus", R"("a" "b")", 5,
                        "expected '+' or the end of the expression, found '\"b\"'"},
        ExpressionFault{"MissingParenthesis", R"(("a" + "b")", 11, "expected ')', found the end of the line"},
        ExpressionFault{"ExtraParenthesis", R"("a"))", 4,
                        "expected '+' or the end of the expression, found ')'"},
        ExpressionFault{"EmptyParentheses", "()", 2, "expected a value, found ')'"},
        ExpressionFault{"NumberWithLetters", "12ab", 3, "unexpected character 'a' in a number"},
        ExpressionFault{"NumberTooLarge", "9223372036854775808", 1, "the number is too large"},
        ExpressionFault{"SumTooLarge", "(9223372036854775807 + 1)", 2, "the number is too large"},
        ExpressionFault{"UnknownVariable", R"("a" + KABEL)", 7, "unknown variable KABEL"},
        ExpressionFault{"CommentIsNoPartOfAnExpression", R"("a" // b)", 5, "unexpected character '/'"}),
    RowName<ExpressionFault>);

TEST(ScriptExpression, RefusesNestingThatNobodyWrites) {
  const ScriptEnvironment environment;
  const std::string deep = std::string(100000, '(') + "1" + std::string(100000, ')');
  EXPECT_THROW(ParseScriptExpression(deep, environment), TKXScriptError);
}

TEST(ScriptExpression, LooksVariablesUpAtEachEvaluation) {
  ScriptEnvironment environment;
  environment.SetVariable("KABEL", "first");
  const auto expression = ParseScriptExpression("KABEL", environment);
  EXPECT_EQ(expression->Evaluate()->GetText(), "first");
  environment.SetVariable("kabel", "second");
  EXPECT_EQ(expression->Evaluate()->GetText(), "second");
}

TEST(ScriptParser, AnswersNullForWhatIsNoExpression) {
  ScriptParser parser;
  EXPECT_EQ(parser.ParseExpression("kabel.dat"), nullptr);
  EXPECT_EQ(parser.ParseExpression(""), nullptr);
  EXPECT_NE(parser.ParseExpression("\"kabel.dat\""), nullptr);
}

TEST(ScriptParser, EvaluatesWithItsOwnEnvironment) {
  ScriptParser parser;
  parser.GetEnvironment().SetVariable("KABEL", "12");
  const auto value = parser.ParseExpression("KABEL + \".dat\"")->Evaluate();
  EXPECT_EQ(TStringValue::GetVal(value.get()), "12.dat");
}

TEST(ScriptParser, ReportsAnUnknownVariableOnlyAtEvaluation) {
  ScriptParser parser;
  const auto expression = parser.ParseExpression("NIRGENDS");
  ASSERT_NE(expression, nullptr);
  EXPECT_THROW(expression->Evaluate(), std::runtime_error);
}

}  // namespace
}  // namespace kx
