// Several programs that save the same file at the same time, in an order that is drawn call by call.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <random>
#include <set>

#include "tests/text/FileFixture.h"
#include "tests/text/SteppedProcess.h"
#include "text/FileAccess.h"

namespace text_test {
namespace {

namespace fs = std::filesystem;

struct Race {
  const char* name;
  int savers;
  bool inPlace;
};

class SaveRace : public FileTest, public testing::WithParamInterface<Race> {
 protected:
  // SAVE_RACES=2000 in the environment runs as many.
  static int Races() {
    const char* const wanted = std::getenv("SAVE_RACES");
    return wanted != nullptr ? std::atoi(wanted) : 10;
  }

  // Of different lengths, so that a mixture shows, and a rest of the longer one.
  static std::string ContentOf(int saver) {
    return std::string(static_cast<std::size_t>(3000 + 1000 * saver), static_cast<char>('a' + saver));
  }

  // What a saver ends with: it reads what is there, as saving an expectation does, and replaces it.
  enum Ending { Saved = 0, NeedlessError = 1, MixtureRead = 2 };

  static bool IsComplete(const std::string& content) {
    for (int saver = 0; saver < GetParam().savers; ++saver) {
      if (content == ContentOf(saver)) return true;
    }
    return content == "old";
  }

  int Save(int saver) const {
    try {
      if (!IsComplete(shorttest::ReadWholeFile(Path("raced.exp")))) return MixtureRead;
      shorttest::ReplaceWholeFile(Path("raced.exp"), ContentOf(saver));
    } catch (const std::exception&) {
      return NeedlessError;
    }
    return Saved;
  }

  void Run(std::mt19937& random) const {
    std::vector<std::unique_ptr<SteppedProcess>> savers;
    for (int i = 0; i < GetParam().savers; ++i) {
      savers.push_back(std::make_unique<SteppedProcess>([this, i] { return Save(i); }));
    }
    // Now this one, now that one, for one call or for many.
    for (std::set<int> ended; ended.size() < savers.size();) {
      const auto index = static_cast<int>(random() % savers.size());
      SteppedProcess& saver = *savers[static_cast<std::size_t>(index)];
      for (unsigned steps = 1U << random() % 7U; steps > 0 && !saver.Ended(); --steps) saver.Step();
      if (saver.Ended()) ended.insert(index);
    }
    for (const auto& saver : savers) EXPECT_EQ(saver->ExitStatus(), Saved);
  }
};

TEST_P(SaveRace, LeavesOneOfTheContentsWholeAndNoError) {
  std::mt19937 random(7);
  std::set<std::string> winners;
  for (int race = 0; race < Races(); ++race) {
    Write("raced.exp", "old");
    fs::remove(Path("second.exp"));
    if (GetParam().inPlace) fs::create_hard_link(Path("raced.exp"), Path("second.exp"));
    ASSERT_NO_FATAL_FAILURE(Run(random)) << race;
    const std::string content = Content("raced.exp");
    ASSERT_TRUE(IsComplete(content) && content != "old") << race;
    ASSERT_THAT(FolderContent(), testing::SizeIs(GetParam().inPlace ? 2 : 1)) << race;
    winners.insert(content);
  }
  EXPECT_GT(winners.size(), 1U) << "always the same one: no race";
}

INSTANTIATE_TEST_SUITE_P(, SaveRace,
                         testing::Values(Race{"OfTwo", 2, false}, Race{"OfFour", 4, false},
                                         Race{"OfTwoInPlace", 2, true}, Race{"OfFourInPlace", 4, true}),
                         CaseName());

}  // namespace
}  // namespace text_test
