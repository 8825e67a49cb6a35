#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/text/FileFixture.h"
#include "text/IniText.h"

namespace text_test {
namespace {

using namespace std::string_literals;

using shorttest::IniText;

class IniTextTest : public testing::Test {
 protected:
  IniTextTest() { shorttest::SetDecimalSeparator("."); }
  ~IniTextTest() override { shorttest::SetDecimalSeparator(std::nullopt); }

  static std::string Written(std::string_view content, std::string_view section, std::string_view key,
                             const std::string& value) {
    IniText ini(content);
    ini.WriteString(section, key, value);
    return ini.Content();
  }

  static std::string Erased(std::string_view content, std::string_view section) {
    IniText ini(content);
    ini.EraseSection(section);
    return ini.Content();
  }
};

// ---- reading ----

struct FindCase {
  const char* name;
  std::string content;
  std::optional<std::string> value;  // of section "Scanner", key "Relais 1"
};

class IniTextFind : public IniTextTest, public testing::WithParamInterface<FindCase> {};

TEST_P(IniTextFind, Finds) {
  EXPECT_EQ(IniText(GetParam().content).Find("Scanner", "Relais 1"), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Value, IniTextFind,
    testing::Values(FindCase{"Plain", "[Scanner]\r\nRelais 1=Plus\r\n", "Plus"},
                    FindCase{"WithBlanksAround", "[Scanner]\r\n \tRelais 1 = \t Plus 12 V \t\r\n",
                             "Plus 12 V"},
                    FindCase{"WithEqualsSigns", "[Scanner]\r\nRelais 1=a=b=\r\n", "a=b="},
                    FindCase{"WithSemicolon", "[Scanner]\r\nRelais 1=a ; b\r\n", "a ; b"},
                    FindCase{"Empty", "[Scanner]\r\nRelais 1=\r\n", ""},
                    FindCase{"BlanksAlone", "[Scanner]\r\nRelais 1=  \r\n", ""},
                    FindCase{"DoubleQuoted", "[Scanner]\r\nRelais 1=\" Plus \"\r\n", " Plus "},
                    FindCase{"SingleQuoted", "[Scanner]\r\nRelais 1=' Plus '\r\n", " Plus "},
                    FindCase{"QuotesAlone", "[Scanner]\r\nRelais 1=\"\"\r\n", ""},
                    FindCase{"OnePairOfQuotesIsTaken", "[Scanner]\r\nRelais 1=\"\"Plus\"\"\r\n", "\"Plus\""},
                    FindCase{"QuotesThatDoNotMatchStay", "[Scanner]\r\nRelais 1=\"Plus'\r\n", "\"Plus'"},
                    FindCase{"OneQuoteStays", "[Scanner]\r\nRelais 1=\"\r\n", "\""},
                    FindCase{"QuotesInsideStay", "[Scanner]\r\nRelais 1=a \"b\" c\r\n", "a \"b\" c"},
                    FindCase{"WithUmlaut", "[Scanner]\r\nRelais 1=Rückfahrlicht\r\n", "Rückfahrlicht"},
                    FindCase{"WithoutLastLineBreak", "[Scanner]\r\nRelais 1=Plus", "Plus"}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    Place, IniTextFind,
    testing::Values(
        FindCase{"NamesInAnotherCase", "[SCANNER]\r\nrELAIS 1=Plus\r\n", "Plus"},
        FindCase{"SectionWithBlanksAround", "  [Scanner] \t\r\nRelais 1=Plus\r\n", "Plus"},
        FindCase{"SectionWithTextBehind", "[Scanner] ; relays\r\nRelais 1=Plus\r\n", "Plus"},
        FindCase{"SectionWithACommentInBrackets", "[Scanner] ; [old]\r\nRelais 1=Plus\r\n", "Plus"},
        FindCase{"FirstOfTwoKeys", "[Scanner]\r\nRelais 1=a\r\nRelais 1=b\r\n", "a"},
        FindCase{"FirstOfTwoSections", "[Scanner]\r\n[B]\r\n[Scanner]\r\nRelais 1=b\r\n", std::nullopt},
        FindCase{"BehindOtherSections", "x=1\r\n[A]\r\nRelais 1=a\r\n[Scanner]\r\nRelais 1=b\r\n", "b"},
        FindCase{"BehindLinesThatAreNoKeys", "[Scanner]\r\n\r\nnoise\r\n; c\r\nRelais 1=b\r\n", "b"},
        FindCase{"BehindAByteOrderMark", "\xEF\xBB\xBF[Scanner]\r\nRelais 1=b\r\n", "b"},
        FindCase{"LinesEndWithLf", "[Scanner]\nRelais 1=b\n", "b"},
        FindCase{"LinesEndWithCr", "[Scanner]\rRelais 1=b\r", "b"}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    NothingWhere, IniTextFind,
    testing::Values(
        FindCase{"TheTextIsEmpty", "", std::nullopt},
        FindCase{"TheSectionIsMissing", "; c\r\nRelais 1=a\r\n[Other]\r\nRelais 1=b\r\n", std::nullopt},
        FindCase{"TheKeyIsMissing", "[Scanner]\r\nRelais 11=b\r\nRelais=c\r\n", std::nullopt},
        FindCase{"TheKeyIsInTheNextSection", "[Scanner]\r\n[B]\r\nRelais 1=b\r\n", std::nullopt},
        FindCase{"TheLineIsAComment", "[Scanner]\r\n;Relais 1=b\r\n ; Relais 1=b\r\n", std::nullopt},
        FindCase{"TheLineHasNoEqualsSign", "[Scanner]\r\nRelais 1\r\n", std::nullopt},
        FindCase{"TheHeaderIsAComment", ";[Scanner]\r\nRelais 1=b\r\n", std::nullopt},
        FindCase{"TheHeaderIsNotClosed", "[Scanner\r\nRelais 1=b\r\n", std::nullopt},
        FindCase{"TheHeaderIsNotOpened", "Scanner]\r\nRelais 1=b\r\n", std::nullopt},
        FindCase{"TheHeaderHasBlanksInside", "[ Scanner ]\r\nRelais 1=b\r\n", std::nullopt}),
    CaseName());

TEST_F(IniTextTest, LettersFromAToZHaveTwoCasesAndNothingElseHas) {
  EXPECT_EQ(IniText("[AZ]\r\nZA=1\r\n").Find("az", "za"), "1");
  EXPECT_EQ(IniText("[az]\r\nza=1\r\n").Find("AZ", "ZA"), "1");
  EXPECT_EQ(IniText("[A@]\r\nB=1\r\n").Find("A`", "B"), std::nullopt);
  EXPECT_EQ(IniText("[A]\r\nB[=1\r\n").Find("A", "B{"), std::nullopt);
}

TEST_F(IniTextTest, AHeaderIsNoKeyOfItsSection) {
  EXPECT_EQ(IniText("[A=1]\r\n").Find("A=1", "[A"), std::nullopt);
}

TEST_F(IniTextTest, ReadsTextNumberAndIntegerWithTheirFallbacks) {
  const IniText ini("[A]\r\nText=abc\r\nFloat=2.5\r\nInteger=7\r\nEmpty=\r\n");
  EXPECT_EQ(ini.ReadString("A", "Text", "none"), "abc");
  EXPECT_EQ(ini.ReadString("A", "Empty", "none"), "");
  EXPECT_EQ(ini.ReadString("A", "Missing", "none"), "none");
  EXPECT_EQ(ini.ReadFloat("A", "Float", 1.0), 2.5);
  EXPECT_EQ(ini.ReadFloat("A", "Integer", 1.0), 7.0);
  EXPECT_EQ(ini.ReadFloat("A", "Text", 1.0), 1.0);
  EXPECT_EQ(ini.ReadFloat("A", "Missing", 1.0), 1.0);
  EXPECT_EQ(ini.ReadInteger("A", "Integer", 1), 7);
  EXPECT_EQ(ini.ReadInteger("A", "Float", 1), 1);
  EXPECT_EQ(ini.ReadInteger("A", "Empty", 1), 1);
  EXPECT_EQ(ini.ReadInteger("A", "Missing", 1), 1);
}

TEST_F(IniTextTest, WhatIsWrittenIsReadAtOnce) {
  IniText ini("");
  ini.WriteString("A", "Text", "abc");
  ini.WriteFloat("A", "Float", 0.25);
  ini.WriteInteger("B", "Integer", -7);
  EXPECT_EQ(ini.ReadString("A", "Text", ""), "abc");
  EXPECT_EQ(ini.ReadFloat("A", "Float", 0.0), 0.25);
  EXPECT_EQ(ini.ReadInteger("B", "Integer", 0), -7);
  EXPECT_EQ(ini.Content(), "[A]\r\nText=abc\r\nFloat=0.25\r\n[B]\r\nInteger=-7\r\n");
}

// ---- nothing changes that is not asked for ----

struct TextCase {
  const char* name;
  std::string content;
};

class IniTextUntouched : public IniTextTest, public testing::WithParamInterface<TextCase> {};

TEST_P(IniTextUntouched, GivesBackEveryByte) {
  EXPECT_EQ(IniText(GetParam().content).Content(), GetParam().content);
}

TEST_P(IniTextUntouched, ErasingASectionThatIsMissingChangesNothing) {
  EXPECT_EQ(Erased(GetParam().content, "Missing"), GetParam().content);
}

INSTANTIATE_TEST_SUITE_P(
    , IniTextUntouched,
    testing::Values(TextCase{"Empty", ""}, TextCase{"ByteOrderMarkAlone", "\xEF\xBB\xBF"},
                    TextCase{"OneLineBreak", "\r\n"}, TextCase{"MixedLineEnds", "a\rb\nc\r\n\n\rd"},
                    TextCase{"CommentsAndBlankLines", "; c\r\n\r\n \t\r\n[A]\r\n;x=1\r\n"},
                    TextCase{"NoLastLineBreak", "[A]\r\nx=1"},
                    TextCase{"BytesThatAreNoText", "\0\xFF[A]\r\n\x1A=\x80\r\n"s}),
    CaseName());

// ---- writing ----

struct WriteCase {
  const char* name;
  std::string before;
  std::string after;  // with "B=9" written into section "S"
};

class IniTextWrite : public IniTextTest, public testing::WithParamInterface<WriteCase> {};

TEST_P(IniTextWrite, ChangesOneLine) {
  EXPECT_EQ(Written(GetParam().before, "S", "B", "9"), GetParam().after);
}

INSTANTIATE_TEST_SUITE_P(
    InPlace, IniTextWrite,
    testing::Values(
        WriteCase{"Value", "[S]\r\nA=1\r\nB=2\r\nC=3\r\n", "[S]\r\nA=1\r\nB=9\r\nC=3\r\n"},
        WriteCase{"AfterAHeaderWithACommentInBrackets", "[S] ; [old]\r\nB=2\r\n", "[S] ; [old]\r\nB=9\r\n"},
        WriteCase{"KeyKeepsItsCase", "[s]\r\nb=2\r\n", "[s]\r\nb=9\r\n"},
        WriteCase{"BlanksAroundGo", "[S]\r\n  B = 2 \r\n", "[S]\r\nB=9\r\n"},
        WriteCase{"FirstOfTwoKeys", "[S]\r\nB=1\r\nB=2\r\n", "[S]\r\nB=9\r\nB=2\r\n"},
        WriteCase{"FirstOfTwoSections", "[S]\r\nB=1\r\n[S]\r\nB=2\r\n", "[S]\r\nB=9\r\n[S]\r\nB=2\r\n"},
        WriteCase{"NotTheSameKeyElsewhere", "B=1\r\n[R]\r\nB=2\r\n[S]\r\nB=3\r\n[T]\r\nB=4\r\n",
                  "B=1\r\n[R]\r\nB=2\r\n[S]\r\nB=9\r\n[T]\r\nB=4\r\n"},
        WriteCase{"NotAComment", "[S]\r\n;B=1\r\nB=2\r\n", "[S]\r\n;B=1\r\nB=9\r\n"},
        WriteCase{"OtherLinesKeepLf", "[S]\nA=1\nB=2\nC=3\n", "[S]\nA=1\nB=9\r\nC=3\n"},
        WriteCase{"LastLineWithoutBreak", "[S]\r\nB=2", "[S]\r\nB=9\r\n"},
        WriteCase{"BehindAByteOrderMark", "\xEF\xBB\xBF[S]\r\nB=2\r\n", "\xEF\xBB\xBF[S]\r\nB=9\r\n"}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    NewKey, IniTextWrite,
    testing::Values(
        WriteCase{"AtTheEndOfItsSection", "[S]\r\nA=1\r\n[T]\r\nB=2\r\n",
                  "[S]\r\nA=1\r\nB=9\r\n[T]\r\nB=2\r\n"},
        WriteCase{"BeforeTheBlankLinesThatSetItApart", "[S]\r\nA=1\r\n\r\n \r\n[T]\r\n",
                  "[S]\r\nA=1\r\nB=9\r\n\r\n \r\n[T]\r\n"},
        WriteCase{"BehindBlankLinesInside", "[S]\r\n\r\nA=1\r\n\r\n", "[S]\r\n\r\nA=1\r\nB=9\r\n\r\n"},
        WriteCase{"InAnEmptySection", "[S]\r\n[T]\r\n", "[S]\r\nB=9\r\n[T]\r\n"},
        WriteCase{"InAnEmptySectionWithBlankLines", "[S]\r\n\r\n[T]\r\n", "[S]\r\nB=9\r\n\r\n[T]\r\n"},
        WriteCase{"BehindALastLineWithoutBreak", "[S]\r\nA=1", "[S]\r\nA=1\r\nB=9\r\n"},
        WriteCase{"BehindAHeaderWithoutBreak", "[S]", "[S]\r\nB=9\r\n"},
        WriteCase{"BehindAComment", "[S]\r\n; about B\r\n", "[S]\r\n; about B\r\nB=9\r\n"},
        WriteCase{"InTheFirstOfTwoSections", "[S]\r\n[S]\r\nB=2\r\n", "[S]\r\nB=9\r\n[S]\r\nB=2\r\n"}),
    CaseName());

INSTANTIATE_TEST_SUITE_P(
    NewSection, IniTextWrite,
    testing::Values(WriteCase{"InAnEmptyFile", "", "[S]\r\nB=9\r\n"},
                    WriteCase{"AtTheEnd", "[T]\r\nB=2\r\n", "[T]\r\nB=2\r\n[S]\r\nB=9\r\n"},
                    WriteCase{"BehindALastLineWithoutBreak", "[T]\r\nB=2", "[T]\r\nB=2\r\n[S]\r\nB=9\r\n"},
                    WriteCase{"BehindKeysWithoutSection", "B=2\r\n", "B=2\r\n[S]\r\nB=9\r\n"},
                    WriteCase{"BehindAByteOrderMark", "\xEF\xBB\xBF", "\xEF\xBB\xBF[S]\r\nB=9\r\n"}),
    CaseName());

TEST_F(IniTextTest, WritingTheSameAgainChangesNothing) {
  const std::string once = Written("[T]\r\nx=1\r\n\r\n[S]\r\ny=2\r\n\r\n", "S", "B", "9");
  EXPECT_EQ(Written(once, "S", "B", "9"), once);
}

TEST_F(IniTextTest, NumbersAreWrittenWithTheDecimalSeparatorInForce) {
  shorttest::SetDecimalSeparator(",");
  IniText ini("");
  ini.WriteFloat("S", "A", 2.5);
  EXPECT_EQ(ini.Content(), "[S]\r\nA=2,5\r\n");
  EXPECT_EQ(ini.ReadFloat("S", "A", 0.0), 2.5);
}

// ---- erasing ----

struct EraseCase {
  const char* name;
  std::string before;
  std::string after;  // without section "S"
};

class IniTextErase : public IniTextTest, public testing::WithParamInterface<EraseCase> {};

TEST_P(IniTextErase, RemovesTheSection) { EXPECT_EQ(Erased(GetParam().before, "S"), GetParam().after); }

INSTANTIATE_TEST_SUITE_P(
    , IniTextErase,
    testing::Values(
        EraseCase{"InTheMiddle", "[R]\r\na=1\r\n[S]\r\nb=2\r\n[T]\r\nc=3\r\n",
                  "[R]\r\na=1\r\n[T]\r\nc=3\r\n"},
        EraseCase{"AtTheEnd", "[R]\r\na=1\r\n[S]\r\nb=2\r\n", "[R]\r\na=1\r\n"},
        EraseCase{"AtTheStart", "[S]\r\nb=2\r\n[T]\r\nc=3\r\n", "[T]\r\nc=3\r\n"},
        EraseCase{"Alone", "[S]\r\nb=2", ""},
        EraseCase{"WithLinesThatAreNoKeys", "[S]\r\n8888\r\n\r\n; c\r\nnoise\r\n[T]\r\n", "[T]\r\n"},
        EraseCase{"WithACommentInBrackets", "[S] ; [old]\r\nb=2\r\n[T]\r\n", "[T]\r\n"},
        EraseCase{"HeaderAlone", "[R]\r\n[S]\r\n[T]\r\n", "[R]\r\n[T]\r\n"},
        EraseCase{"InAnotherCase", "[s]\r\nb=2\r\n[T]\r\n", "[T]\r\n"},
        EraseCase{"EveryOneOfThatName", "[S]\r\na=1\r\n[T]\r\nb=2\r\n[S]\r\nc=3\r\n", "[T]\r\nb=2\r\n"},
        EraseCase{"TwoInARow", "[S]\r\na=1\r\n[S]\r\nb=2\r\n", ""},
        EraseCase{"NotOneThatOnlyBeginsLikeIt", "[S2]\r\na=1\r\n[ S]\r\n", "[S2]\r\na=1\r\n[ S]\r\n"},
        EraseCase{"KeepsTheByteOrderMark", "\xEF\xBB\xBF[S]\r\na=1\r\n", "\xEF\xBB\xBF"},
        EraseCase{"LeavesKeysBeforeTheFirstSection", "a=1\r\n\r\n[S]\r\nb=2\r\n", "a=1\r\n\r\n"}),
    CaseName());

TEST_F(IniTextTest, AppendLineGoesBehindEverything) {
  IniText ini("[A]\r\nx=1");
  ini.AppendLine("[B]");
  ini.AppendLine("8888");
  EXPECT_EQ(ini.Content(), "[A]\r\nx=1\r\n[B]\r\n8888\r\n");
}

}  // namespace
}  // namespace text_test
