#include <gtest/gtest.h>

#include "framework/ScriptEnvironment.h"
#include "tests/bench/RowName.h"

namespace kx {
namespace {

constexpr PathRules Linux{false, false};
constexpr PathRules Windows{true, true};

TEST(ScriptEnvironment, FindsVariablesWhateverTheCase) {
  ScriptEnvironment environment;
  environment.SetVariable("PROJEKTPFAD", "/p/");
  ASSERT_NE(environment.FindVariable("projektPFAD"), nullptr);
  EXPECT_EQ(environment.FindVariable("projektPFAD")->GetText(), "/p/");
  EXPECT_EQ(environment.FindVariable("PROJEKT"), nullptr);
}

struct Row {
  const char* name;
  PathRules rules;
  const char* projectPath;
  const char* quotedPath;
  const char* expression;
};

class ReplaceProjectPath : public testing::TestWithParam<Row> {};

TEST_P(ReplaceProjectPath, Gives) {
  ScriptEnvironment environment(GetParam().rules);
  environment.SetVariable("PROJEKTPFAD", GetParam().projectPath);
  EXPECT_EQ(environment.ReplaceProjectPath(GetParam().quotedPath), GetParam().expression);
}

INSTANTIATE_TEST_SUITE_P(
    OnLinux, ReplaceProjectPath,
    testing::Values(Row{"InTheFolder", Linux, "/p/", R"("/p/a.dat")", R"(PROJEKTPFAD + "a.dat")"},
                    Row{"Deeper", Linux, "/p/", R"("/p/x/a.dat")", R"(PROJEKTPFAD + "x/a.dat")"},
                    Row{"Elsewhere", Linux, "/p/", R"("/q/a.dat")", R"("/q/a.dat")"},
                    Row{"FolderWithTheSameStart", Linux, "/p/", R"("/pq/a.dat")", R"("/pq/a.dat")"},
                    Row{"TheFolderItself", Linux, "/p/", R"("/p/")", R"("/p/")"},
                    Row{"OtherCase", Linux, "/p/", R"("/P/a.dat")", R"("/P/a.dat")"},
                    Row{"BackslashIsNoSeparator", Linux, "/p/", R"("/p\a.dat")", R"("/p\a.dat")"},
                    Row{"ClimbsOut", Linux, "/p/", R"("/p/../q/a.dat")", R"("/p/../q/a.dat")"},
                    Row{"DotsInAName", Linux, "/p/", R"("/p/..a.dat")", R"(PROJEKTPFAD + "..a.dat")"},
                    Row{"QuoteInTheName", Linux, "/p/", R"("/p/a""b.dat")", R"(PROJEKTPFAD + "a""b.dat")"},
                    Row{"QuoteInTheFolder", Linux, "/p\"/", R"("/p""/b.dat")", R"(PROJEKTPFAD + "b.dat")"},
                    Row{"RootIsTheProject", Linux, "/", R"("/a.dat")", R"(PROJEKTPFAD + "a.dat")"},
                    Row{"ProjectPathWithoutSeparator", Linux, "/p", R"("/p/a.dat")", R"("/p/a.dat")"},
                    Row{"NoProjectPath", Linux, "", R"("/p/a.dat")", R"("/p/a.dat")"},
                    Row{"NoQuotes", Linux, "/p/", "/p/a.dat", "/p/a.dat"},
                    Row{"AnExpression", Linux, "/p/", R"("/p/" + "a.dat")", R"("/p/" + "a.dat")"},
                    Row{"Empty", Linux, "/p/", "", ""}),
    RowName<Row>);

INSTANTIATE_TEST_SUITE_P(
    OnWindows, ReplaceProjectPath,
    testing::Values(
        Row{"InTheFolder", Windows, R"(C:\p\)", R"("C:\p\a.dat")", R"(PROJEKTPFAD + "a.dat")"},
        Row{"OtherCase", Windows, R"(C:\Projekt\)", R"("c:\PROJEKT\Kabel.DAT")",
            R"(PROJEKTPFAD + "Kabel.DAT")"},
        Row{"OtherSeparators", Windows, R"(C:\p\x\)", R"("C:/p/x/a.dat")", R"(PROJEKTPFAD + "a.dat")"},
        Row{"Umlauts", Windows, R"(C:\Prüflinge\)", R"("C:\PRÜFLINGE\ä.dat")", R"(PROJEKTPFAD + "ä.dat")"},
        Row{"MultiplicationAndDivisionSign", Windows, R"(C:\×\)", R"("C:\÷\a.dat")", R"("C:\÷\a.dat")"},
        Row{"ClimbsOut", Windows, R"(C:\p\)", R"("C:\p\x\..\..\a.dat")", R"("C:\p\x\..\..\a.dat")"},
        Row{"OtherDrive", Windows, R"(C:\p\)", R"("D:\p\a.dat")", R"("D:\p\a.dat")"}),
    RowName<Row>);

TEST(ReplaceProjectPathWithoutProject, LeavesThePath) {
  const ScriptEnvironment environment;
  EXPECT_EQ(environment.ReplaceProjectPath("\"/p/a.dat\""), "\"/p/a.dat\"");
}

TEST(ReplaceProjectPathResult, EvaluatesToThePath) {
  ScriptParser parser;
  parser.GetEnvironment().SetVariable("PROJEKTPFAD", "/p/q/");
  const std::string stored = parser.GetEnvironment().ReplaceProjectPath("\"/p/q/r/a \"\"1\"\".dat\"");
  EXPECT_EQ(parser.ParseExpression(stored)->Evaluate()->GetText(), "/p/q/r/a \"1\".dat");
}

}  // namespace
}  // namespace kx
