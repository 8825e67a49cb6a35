#include <gtest/gtest.h>

#include <cstddef>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "tests/bench/program/Process.h"
#include "tests/bench/program/TemporaryFolder.h"
#include "tests/support/Browser.h"

/// The page of a proof in a browser, against the JSON of the same proof.

namespace {

using nlohmann::json;

constexpr const char* LookAtPage = R"(
  const rows = id => [...document.querySelectorAll('#' + id + ' tr')].slice(1);
  const numbers = row => [...row.querySelectorAll('td.n')].map(cell => Number(cell.textContent));
  const classes = {};
  for (const row of rows('classes')) {
    const bar = row.querySelector('.bar'), filled = bar.querySelector('i');
    classes[row.id] = {numbers: numbers(row),
        filled: filled.getBoundingClientRect().width / bar.getBoundingClientRect().width};
  }
  return {classes, escapes: rows('escapes').length,
      squares: document.querySelectorAll('svg#matrix g:last-of-type > *').length,
      wider: document.documentElement.scrollWidth > window.innerWidth};
)";

TEST(ProofPage, TellsTheNumbersOfTheProof) {
  const TemporaryFolder folder;
  // (1, 3) and (2, 4), of which no pair is looked at for a short circuit.
  folder.Write("trap.dat",
               "[BEREICH]\nSTART=1\nENDE=5\nWIDERSTAND=10\nWIDERSTAND2=10\n[OPTION]\nU_KONTROLLE=2\n"
               "LASTRELAISKARTE=0\nLASTRELAIS=0\nTIMEOUT=100\nMAX ERROR=10\n"
               "[DATEN]\n88888\n38888\n23888\n32388\n11118\n");
  Process process;
  process.program = KXBENCH_PROGRAM;
  process.arguments = {"prove",    "trap.dat",       "--progress", "none",
                       "--output", "html:page.html", "--format",   "json"};
  process.folder = folder.Path().string();
  process.environment["LC_ALL"] = "C";
  const ProcessResult result = process.Run();
  ASSERT_EQ(result.status, 1) << result.errors;
  const json proof = json::parse(result.output);

  const json page = json::parse(shorttest::testkit::AskPage(folder.Path() / "page.html", LookAtPage));

  std::set<std::pair<int, int>> escapedShorts;
  for (const json& escape : proof["escapes"]) {
    if (escape["class"] != "short" && escape["class"] != "resistive-short") continue;
    escapedShorts.emplace(escape["channels"].front(), escape["channels"].back());
  }
  EXPECT_FALSE(escapedShorts.empty());
  EXPECT_EQ(page["squares"], escapedShorts.size());
  EXPECT_EQ(page["escapes"], proof["escapes"].size());
  EXPECT_EQ(page["wider"], false);
  ASSERT_EQ(page["classes"].size(), proof["classes"].size());
  for (const json& one : proof["classes"]) {
    const json& row = page["classes"]["class-" + one["class"].get<std::string>()];
    EXPECT_EQ(row["numbers"], json({one["total"], one["simulated"], one["found"], one["escaped"]})) << row;
    if (one["simulated"] == 0) continue;
    EXPECT_NEAR(row["filled"].get<double>(), one["found"].get<double>() / one["simulated"].get<double>(),
                0.02)
        << row;
  }
}

}  // namespace
