#include <gtest/gtest.h>

#include <filesystem>
#include <thread>
#include <vector>

#include "tests/bench/program/TemporaryFolder.h"
#include "text/LineFile.h"

namespace shorttest {
namespace {

class LineFile : public testing::Test {
 protected:
  std::filesystem::path File() const { return folder_.Path() / "lines"; }
  std::string Text() const { return folder_.Read("lines"); }

  TemporaryFolder folder_;
};

TEST_F(LineFile, GrowsByWholeLines) {
  EXPECT_EQ(AppendLine(File(), "{one", "{"), "");
  EXPECT_EQ(AppendLine(File(), "{two", "{"), "");
  EXPECT_EQ(Text(), "{one\n{two\n");
}

TEST_F(LineFile, UnfinishedLineOfItsKindIsPutAside) {
  const std::string longLine = "{" + std::string(10000, 'x');
  folder_.Write("lines", "{one\n" + longLine);
  RequireLineFile(File(), "{");
  EXPECT_EQ(Text(), "{one\n" + longLine) << "looking changes nothing";
  EXPECT_EQ(AppendLine(File(), "{two", "{"), longLine);
  EXPECT_EQ(Text(), "{one\n{two\n");
  EXPECT_EQ(folder_.Read("lines.torn"), longLine + "\n");
}

TEST_F(LineFile, UnfinishedBeginningOfALineIsOneOfItsKind) {
  folder_.Write("lines", "{one\n{\"for");
  EXPECT_EQ(AppendLine(File(), "{two", "{\"format\""), "{\"for");
}

TEST_F(LineFile, SomebodyElsesFileStaysAsItIs) {
  folder_.Write("lines", "my notes");
  EXPECT_THROW(RequireLineFile(File(), "{"), ForeignLines);
  EXPECT_THROW(AppendLine(File(), "{one", "{"), ForeignLines);
  EXPECT_EQ(Text(), "my notes");
}

TEST_F(LineFile, FolderIsAnError) { EXPECT_THROW(AppendLine(folder_.Path(), "{", "{"), FileError); }

TEST_F(LineFile, SeveralWritersLoseAndTearNothing) {
  constexpr int Writers = 4;
  constexpr int Lines = 25;
  std::vector<std::thread> threads;
  for (int writer = 0; writer < Writers; ++writer) {
    threads.emplace_back([this, writer] {
      for (int i = 0; i < Lines; ++i)
        AppendLine(File(), "{" + std::string(3000, static_cast<char>('a' + writer)), "{");
    });
  }
  for (std::thread& thread : threads) thread.join();
  const std::string text = Text();
  ASSERT_EQ(text.size(), std::size_t{Writers * Lines} * 3002);
  for (std::size_t line = 0; line < text.size(); line += 3002) {
    EXPECT_EQ(text[line], '{');
    EXPECT_EQ(text.find_first_not_of(text[line + 1], line + 1), line + 3001);
  }
}

}  // namespace
}  // namespace shorttest
