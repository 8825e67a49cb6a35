#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "bench/results/ResultStore.h"
#include "tests/bench/program/Process.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/bench/results/SampleResults.h"

namespace kxbench::results {
namespace {

using testing::HasSubstr;

/// On Windows every line of standard output ends with CR and LF, and is read as a text's.
#ifdef _WIN32
constexpr char CsvEnd[] = "\n";
#else
constexpr char CsvEnd[] = "\r\n";
#endif

/// The program with the module, and a database of two results.
class ResultsProcessTest : public testing::Test {
 protected:
  ResultsProcessTest() {
    StoreSettings options;
    options.spool = folder_.Path() / "spool.db";
    const auto store = OpenResultStore(url_, options);
    store->Store(failed_);
    store->Store(passed_);
  }

  ProcessResult Kxbench(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "results");
    arguments.insert(arguments.end(), {"--results", url_});
    Process process;
    process.program = KXBENCH_PROGRAM;
    process.arguments = arguments;
    process.folder = folder_.Path().string();
    return process.Run();
  }

  nlohmann::json Json(const std::vector<std::string>& arguments) const {
    const ProcessResult result = Kxbench(arguments);
    EXPECT_EQ(result.status, 0) << result.errors;
    return nlohmann::json::parse(result.output);
  }

  TemporaryFolder folder_;
  std::string url_ = "sqlite:" + (folder_.Path() / "results.db").string();
  Result failed_ = FailedCheck("=SN 1", 1);
  Result passed_ = PassedCheck("=SN 1", 2);
};

TEST_F(ResultsProcessTest, ListsTheNewestFirst) {
  const nlohmann::json list = Json({"list", "--format", "json"});
  EXPECT_EQ(list["format"], "list");
  ASSERT_EQ(list["results"].size(), 2U);
  EXPECT_EQ(list["results"][0]["id"], passed_.id);
  EXPECT_EQ(list["results"][0]["verdict"], "pass");
  EXPECT_EQ(list["results"][1]["operator"], "Jäger");
  EXPECT_EQ(Json({"list", "--format", "json", "--verdict", "fail"})["results"].size(), 1U);
  EXPECT_EQ(Json({"list", "--format", "json", "--limit", "1"})["results"].size(), 1U);
  EXPECT_EQ(Json({"list", "--format", "json", "--to", "2026-03-14T08:01:30.000Z"})["results"].size(), 1U);
  const ProcessResult text = Kxbench({"list"});
  EXPECT_THAT(text.output, HasSubstr(failed_.id.substr(0, 8)));
  EXPECT_THAT(text.output, HasSubstr("2026-03-14 08:01:00"));
}

TEST_F(ResultsProcessTest, ShowsOneByTheBeginningOfItsId) {
  const nlohmann::json result = Json({"show", failed_.id.substr(0, 13), "--format", "json"});
  EXPECT_EQ(result["format"], "result");
  EXPECT_EQ(result["version"], 1);
  EXPECT_EQ(result["id"], failed_.id);
  EXPECT_EQ(result["records"][1]["text"], "Verbindung 1-14");
  const ProcessResult text = Kxbench({"show", failed_.id});
  EXPECT_THAT(text.output, testing::StartsWith("FAIL\n"));
  EXPECT_THAT(text.output, HasSubstr(failed_.faults[0].text));
  const ProcessResult none = Kxbench({"show", "ffffffff-no"});
  EXPECT_EQ(none.status, 2);
  EXPECT_THAT(none.errors, HasSubstr("there is no result ffffffff-no"));
}

TEST_F(ResultsProcessTest, SumsUp) {
  const nlohmann::json summary = Json({"summary", "--format", "json"});
  EXPECT_EQ(summary["format"], "summary");
  EXPECT_EQ(summary["all"]["checks"], 2);
  EXPECT_EQ(summary["all"]["devices"], 1);
  EXPECT_EQ(summary["all"]["first_pass_yield"], 0.0);
  EXPECT_EQ(summary["all"]["final_yield"], 1.0);
  EXPECT_EQ(summary["faults"][0]["channels"], "1,14");
  const ProcessResult text = Kxbench({"summary"});
  EXPECT_THAT(text.output, HasSubstr("100.0 %"));
  EXPECT_EQ(Kxbench({"summary", "--serial", "x"}).status, 2);
}

TEST_F(ResultsProcessTest, ExportsWithoutFormulas) {
  const ProcessResult csv = Kxbench({"export", "--format", "csv"});
  EXPECT_THAT(csv.output,
              testing::StartsWith(std::string("id,started,seconds,verdict,serial,part,operator,station,"
                                              "expectation,sha256,diagnosis") +
                                  CsvEnd));
  EXPECT_THAT(csv.output, HasSubstr(",'=SN 1,"));
  EXPECT_THAT(csv.output, HasSubstr(",2.5,"));
  const ProcessResult lines = Kxbench({"export", "--format", "jsonl", "-o", "all.jsonl"});
  EXPECT_EQ(lines.status, 0);
  EXPECT_EQ(lines.output, "");
  const std::string file = folder_.Read("all.jsonl");
  EXPECT_EQ(std::count(file.begin(), file.end(), '\n'), 2);
  EXPECT_EQ(nlohmann::json::parse(file.substr(0, file.find('\n')))["id"], failed_.id);
}

TEST_F(ResultsProcessTest, ForwardsWhatWaits) {
  StoreSettings options;
  options.spool = folder_.Path() / "spool.db";
  const Result waiting = PassedCheck("SN 3", 3);
  const std::string nowhere = "postgresql://kx@127.0.0.1:1/db";
  EXPECT_FALSE(OpenResultStore(nowhere, options)->Store(waiting).inDatabase);
  const std::vector<std::string> spool = {"--spool", options.spool.string()};
  const ProcessResult others = Kxbench({"forward", spool[0], spool[1]});
  EXPECT_EQ(others.output, "0 delivered\n1 for " + nowhere + " still wait\n");
  EXPECT_EQ(Kxbench({"forward", "--all", spool[0], spool[1]}).output, "1 delivered\n");
  EXPECT_EQ(Json({"show", waiting.id, "--format", "json"})["serial"], "SN 3");
}

TEST_F(ResultsProcessTest, WritesAPage) {
  EXPECT_EQ(Kxbench({"report"}).status, 2);
  const ProcessResult report = Kxbench({"report", "-o", "page.html", "--part", "<W-100>"});
  EXPECT_EQ(report.status, 0) << report.errors;
  EXPECT_THAT(folder_.Read("page.html"), HasSubstr("Part: &lt;W-100&gt;"));
}

TEST_F(ResultsProcessTest, WrongWordsAreNamed) {
  const std::pair<std::vector<std::string>, const char*> rows[] = {
      {{"lists"}, "expected list, show, summary, report, forward or export"},
      {{"list", "some-id"}, "unexpected argument some-id"},
      {{"show"}, "needs ID"},
      {{"list", "--from", "14.3.2026"}, "--from: expected a day"},
      {{"list", "--to", "2026-02-30"}, "--to: expected a day"},
      {{"list", "--limit", "0"}, "--limit"},
      {{"list", "--format", "csv"}, "--format is not for results list"},
      {{"list", "--all"}, "--all is not for results list"},
      {{"export", "--limit", "1"}, "--limit is not for results export"},
      {{"summary", "--serial", "=SN 1"}, "--serial is not for results summary"},
      {{"report", "-o", "page.html", "--verdict", "pass"}, "--verdict is not for results report"},
      {{"forward", "--part", "W-100"}, "--part is not for results forward"},
      {{"show", "0", "--station", "bench 1"}, "--station is not for results show"},
      {{"summary", "--from", "2026-03-14T08:01:30.000Z"},
       "--from with a time of the day is not for results summary"},
      {{"report", "-o", "page.html", "--to", "2026-03-14T08:01:30.000Z"},
       "--to with a time of the day is not for results report"},
  };
  for (const auto& [arguments, text] : rows) {
    const ProcessResult result = Kxbench(arguments);
    EXPECT_EQ(result.status, 2) << text;
    EXPECT_THAT(result.errors, HasSubstr(text));
  }
}

TEST(ResultsProcess, ADatabaseThatIsNotThereIsNotMade) {
  const TemporaryFolder folder;
  Process process;
  process.program = KXBENCH_PROGRAM;
  process.arguments = {"results", "list", "--results", "sqlite:none.db"};
  process.folder = folder.Path().string();
  const ProcessResult result = process.Run();
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors, HasSubstr("none.db: unable to open database file"));
  EXPECT_FALSE(std::filesystem::exists(folder.Path() / "none.db"));
}

}  // namespace
}  // namespace kxbench::results
