#include <gtest/gtest.h>

#include "bench/program/host/Project.h"
#include "bench/program/system/Failure.h"
#include "bench/program/system/System.h"
#include "tests/bench/program/TemporaryFolder.h"

namespace kxbench {
namespace {

class ProjectVariables : public testing::Test {
 protected:
  void Set(const std::optional<std::string>& project, const std::string& file = "tests/Kabel 7.dat") {
    SetProjectVariables(ProjectOf(project, file), environment_);
  }

  std::string Value(const std::string& name) { return TStringValue::GetVal(environment_.FindVariable(name)); }

  TemporaryFolder folder_;
  kx::ScriptEnvironment environment_;
};

TEST_F(ProjectVariables, ComeFromTheCurrentFolderAndTheFile) {
  Set(std::nullopt);
  EXPECT_EQ(Value("PROJEKTPFAD"), Utf8FromPath(std::filesystem::current_path() / ""));
  EXPECT_EQ(Value("PROJECTNAME"), "Kabel 7");
}

TEST_F(ProjectVariables, ComeFromTheOption) {
  Set(Utf8FromPath(folder_.Path() / "Trailer"));
  EXPECT_EQ(Value("PROJEKTPFAD"), Utf8FromPath(folder_.Path() / ""));
  EXPECT_EQ(Value("PROJECTNAME"), "Trailer");
}

TEST_F(ProjectVariables, PathIsAbsoluteAndPlain) {
  std::filesystem::create_directory(folder_.Path() / "sub");
  Set(Utf8FromPath(folder_.Path() / "sub" / ".." / "." / "Trailer"));
  EXPECT_EQ(Value("PROJEKTPFAD"), Utf8FromPath(folder_.Path() / ""));
}

TEST_F(ProjectVariables, SayWhereTheProjectsIniFileIs) {
  EXPECT_EQ(ProjectOf(Utf8FromPath(folder_.Path() / "Trailer"), "x.dat").IniFile(),
            Utf8FromPath(folder_.Path() / "Trailer.ini"));
}

TEST_F(ProjectVariables, NameKeepsItsDots) {
  Set(Utf8FromPath(folder_.Path() / "Trailer.v2"));
  EXPECT_EQ(Value("PROJECTNAME"), "Trailer.v2");
}

TEST_F(ProjectVariables, NameAloneLiesInTheCurrentFolder) {
  Set("Trailer");
  EXPECT_EQ(Value("PROJEKTPFAD"), Utf8FromPath(std::filesystem::current_path() / ""));
}

TEST_F(ProjectVariables, FolderMustExist) {
  EXPECT_THROW(Set(Utf8FromPath(folder_.Path() / "missing" / "Trailer")), Failure);
}

TEST_F(ProjectVariables, NameMustBeGiven) {
  EXPECT_THROW(Set(Utf8FromPath(folder_.Path() / "")), Failure);
  EXPECT_THROW(Set(""), Failure);
  EXPECT_THROW(Set(".."), Failure);
}

}  // namespace
}  // namespace kxbench
