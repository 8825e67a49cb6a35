#include <gmock/gmock.h>

#include <filesystem>

#include "bench/results/OutputFiles.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/bench/results/ResultExamples.h"
#include "text/FileError.h"
#include "text/Paths.h"

namespace kxbench::results {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class WrittenFiles : public testing::Test {
 protected:
  std::string Named(const std::string& name) const { return shorttest::Utf8FromPath(folder_.Path() / name); }

  OutputFiles To(const std::string& format, const std::string& name) const {
    return OutputFiles({*ReadOutputFile(format + ":" + Named(name))});
  }

  TemporaryFolder folder_;
};

TEST(OutputFileOption, IsAFormatAndAFile) {
  const auto output = ReadOutputFile("jsonl:C:\\results.jsonl");
  ASSERT_TRUE(output);
  EXPECT_EQ(output->format, ResultFormat::JsonLines);
  EXPECT_EQ(output->name, "C:\\results.jsonl");
  for (const char* wrong : {"json", "json:", "xml:a", ":a", ""}) EXPECT_FALSE(ReadOutputFile(wrong)) << wrong;
}

TEST_F(WrittenFiles, HoldEveryResultOfTheRun) {
  OutputFiles files = To("csv", "a.csv");
  files.Add({BrokenWire(), ""});
  files.Add({MissingTester(), ""});
  EXPECT_THAT(folder_.Read("a.csv"), testing::AllOf(HasSubstr(",fail,"), HasSubstr(",error,")));
}

TEST_F(WrittenFiles, NamesMayHoldIdAndSerialNumber) {
  Result odd = GoodDevice();
  odd.serial = "../a:b\n";
  OutputFiles files = To("json", "{serial}-{id}.json");
  files.Add({odd, ""});
  EXPECT_THAT(folder_.Read("___a_b_-" + odd.id + ".json"), HasSubstr("\"format\": \"result\""));
  EXPECT_EQ(OutputFile({ResultFormat::Json, "{serial}"}).NameFor(Result()), "_");
}

TEST_F(WrittenFiles, LinesAreAppendedToThoseOfEarlierRuns) {
  To("jsonl", "a.jsonl").Add({BrokenWire(), ""});
  To("jsonl", "a.jsonl").Add({GoodDevice(), ""});
  const std::string text = folder_.Read("a.jsonl");
  EXPECT_EQ(text, ResultJsonLine(BrokenWire()) + "\n" + ResultJsonLine(GoodDevice()) + "\n");
}

TEST_F(WrittenFiles, TornLastLineOfACrashIsToldAndPutAside) {
  const std::string whole = ResultJsonLine(BrokenWire());
  folder_.Write("a.jsonl", whole + "\n" + whole.substr(0, 40));
  EXPECT_THAT(To("jsonl", "a.jsonl").Add({GoodDevice(), ""}), ElementsAre(HasSubstr("was not whole")));
  EXPECT_EQ(folder_.Read("a.jsonl"), whole + "\n" + ResultJsonLine(GoodDevice()) + "\n");
  EXPECT_EQ(folder_.Read("a.jsonl.torn"), whole.substr(0, 40) + "\n");
}

TEST_F(WrittenFiles, FolderThatIsNotThereIsAnError) {
  EXPECT_THROW(To("html", "none/a.html").Add({GoodDevice(), ""}), shorttest::FileError);
  EXPECT_THROW(To("jsonl", "none/a.jsonl").Add({GoodDevice(), ""}), shorttest::FileError);
}

}  // namespace
}  // namespace kxbench::results
