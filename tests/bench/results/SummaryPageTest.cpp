#include <gmock/gmock.h>

#include <nlohmann/json.hpp>

#include "bench/results/Database.h"
#include "bench/results/ResultDatabase.h"
#include "bench/results/ResultStore.h"
#include "bench/results/SummaryPage.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/bench/results/SampleResults.h"
#include "tests/support/Browser.h"

namespace kxbench::results {
namespace {

using PageNumbers = nlohmann::json;

/// A page of some results, in a real browser, and the database that it came from.
class SummaryPageTest : public testing::Test {
 protected:
  SummaryPageTest() {
    StoreSettings options;
    options.spool = folder_.Path() / "spool.db";
    options.timeout = std::chrono::seconds(60);  // a busy machine's; what is tested is the page
    const auto store = OpenResultStore(url_, options);
    for (int i = 0; i < 24; ++i) {
      Result result =
          i % 4 == 0 ? FailedCheck("SN " + std::to_string(i), i) : PassedCheck("SN " + std::to_string(i), i);
      result.started += std::chrono::days(i % 3);
      result.part = i % 2 == 0 ? "<script>alert(1)</script>" : "B";
      result.station = i < 6 ? "bench 1" : "bench \"2\" & 3";
      result.seconds = 1.5 + i % 5;
      store->Store(result);
    }
    Result retest = PassedCheck("SN 0", 59);
    retest.part = "<script>alert(1)</script>";
    store->Store(retest);
    const ResultSummary summary = ResultDatabase(url_, false).Summarise({});
    page_ = folder_.Write("page.html", SummaryPage(summary, {"Part: <b>all</b>"}));
  }

  /// What a script answers about the page.
  std::string Ask(const std::string& script) const { return shorttest::testkit::AskPage(page_, script); }

  double Number(const std::string& query) const {
    Database database(ReadStoreUrl(url_), std::nullopt, Database::Missing::Refuse);
    double number = -1;
    database.Session() << query, soci::into(number);
    return number;
  }

  TemporaryFolder folder_;
  std::string url_ = "sqlite:" + (folder_.Path() / "results.db").string();
  std::string page_;
};

TEST_F(SummaryPageTest, ItsNumbersAreThoseOfQueries) {
  const PageNumbers page = PageNumbers::parse(Ask(R"(
const value = cell => Number(cell.dataset.value);
const rows = id => [...document.querySelectorAll('#' + id + ' tr')].slice(1).map(
  row => [row.cells[0].textContent, ...[...row.cells].slice(1).filter(cell => cell.dataset.value).map(value)]);
return {devices: value(document.getElementById('devices')), checks: value(document.getElementById('checks')),
  first: value(document.getElementById('first-pass-yield')), last: value(document.getElementById('final-yield')),
  seconds: value(document.getElementById('seconds-per-check')), parts: rows('parts'), stations: rows('stations'),
  days: rows('days'), faults: rows('faults'), plots: document.querySelectorAll('svg').length,
  bars: document.querySelectorAll('svg rect').length, scripts: document.querySelectorAll('script').length,
  wide: document.documentElement.scrollWidth > window.innerWidth};)"));
  EXPECT_EQ(page["checks"], Number("select count(*) from results"));
  EXPECT_EQ(page["devices"], Number("select count(distinct part || serial) from results"));
  EXPECT_EQ(page["first"], 18.0 / 24);
  EXPECT_EQ(page["last"], 19.0 / 24);
  EXPECT_EQ(page["seconds"], Number("select avg(seconds) from results"));
  ASSERT_EQ(page["parts"].size(), 2U);
  EXPECT_EQ(page["parts"][0][0], "<script>alert(1)</script>");
  EXPECT_EQ(page["parts"][0][4], Number("select count(*) from results where part <> 'B'"));
  ASSERT_EQ(page["stations"].size(), 2U);
  EXPECT_EQ(page["stations"][0][0], "bench \"2\" & 3");
  EXPECT_EQ(page["stations"][0][7], Number("select avg(seconds) from results where station <> 'bench 1'"));
  ASSERT_EQ(page["days"].size(), 3U);
  for (std::size_t day = 0; day < 3; ++day) {
    const std::string name = page["days"][day][0];
    EXPECT_EQ(page["days"][day][4], Number("select count(*) from results where started like '" + name + "%'"))
        << name;
  }
  ASSERT_EQ(page["faults"].size(), 1U);
  EXPECT_EQ(page["faults"][0][1], Number("select count(*) from faults"));
  EXPECT_EQ(page["plots"], 5);
  EXPECT_EQ(page["bars"], 1 + 2 + 2 + 2);
  EXPECT_EQ(page["scripts"], 0);
  EXPECT_EQ(page["wide"], false);
}

}  // namespace
}  // namespace kxbench::results
