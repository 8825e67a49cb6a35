// The self-test on simulated testers of one to five cards: every single defect, seeded twos and threes, cards
// that do not answer, voltages, and every way out.

#include <random>
#include <set>

#include "tests/bench/proof/SelfTestBench.h"

namespace kxbench {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

// Enough of two cards to have every defect on either, and few enough to try all quickly.
constexpr int FirstOfBothCards = 37;
constexpr int LastOfBothCards = 60;

class SelfTest : public SelfTestBench {};

std::string Stuck(const char* how, int channel, int line) {
  return std::string("stuck-") + how + " " + std::to_string(channel) + " " + std::to_string(line) + "\n";
}

TEST_F(SelfTest, FindsNothingOnAGoodTester) {
  for (const char* cards : {"cards 1\n", "cards 2\n", "cards 5\n"}) EXPECT_THAT(Found(cards), IsEmpty());
  EXPECT_THAT(Found("cards 2\ncontact-resistance 0.2\ndrift 0.5 2\n"), IsEmpty());
}

TEST_F(SelfTest, TestsTheChannelsOfAllCardsThatAnswer) {
  Connect("cards 3\n");
  const SelfTestSummary summary = Run();
  EXPECT_EQ(summary.firstChannel, 1);
  EXPECT_EQ(summary.lastChannel, 144);
  EXPECT_THAT(summary.cards, ElementsAre(1, 2, 3));
}

TEST_F(SelfTest, NamesEveryRelayThatNeverOpens) {
  Channels(FirstOfBothCards, LastOfBothCards);
  for (int channel = FirstOfBothCards; channel <= LastOfBothCards; ++channel) {
    for (const int line : {0, 1}) {
      EXPECT_THAT(Found("cards 2\n" + Stuck("closed", channel, line)),
                  ElementsAre(NeverOpens(channel, line)));
    }
  }
}

// With nothing else connected to the channel, each of its relays is seen through the other alone.
TEST_F(SelfTest, NamesEveryChannelOfWhichARelayNeverCloses) {
  Channels(FirstOfBothCards, LastOfBothCards);
  for (int channel = FirstOfBothCards; channel <= LastOfBothCards; ++channel) {
    for (const int line : {0, 1}) {
      EXPECT_THAT(Found("cards 2\n" + Stuck("open", channel, line)),
                  ElementsAre(Uncertain(NeverCloses(channel, 0)), Uncertain(NeverCloses(channel, 1))));
    }
  }
}

TEST_F(SelfTest, NamesTheRelayThatNeverClosesWhereAnotherChannelShowsIt) {
  EXPECT_THAT(Found("cards 2\nwire 5 77\n" + Stuck("open", 77, 0)),
              ElementsAre(NotEmpty(5), NeverCloses(77, 0), NotEmpty(77)));
  EXPECT_THAT(Found("cards 2\nwire 5 77\n" + Stuck("open", 5, 1)),
              ElementsAre(NeverCloses(5, 1), NotEmpty(5), NotEmpty(77)));
}

TEST_F(SelfTest, NamesTheCardWhereBothRelaysOfAChannelNeverOpen) {
  const std::vector<TesterDefect> found =
      Found("cards 2\n" + Stuck("closed", 7, 0) + Stuck("closed", 7, 1) + Stuck("closed", 60, 1));
  const TesterDefect line0{TesterDefectKind::NeverOpens, 1, std::nullopt, 0, true, 0.0};
  const TesterDefect line1{TesterDefectKind::NeverOpens, 1, std::nullopt, 1, true, 0.0};
  EXPECT_THAT(found, ElementsAre(line0, line1, NeverOpens(60, 1)));
}

TEST_F(SelfTest, NamesChannelsThatAreConnected) {
  EXPECT_THAT(Found("cards 2\nwire 3 4\n"), ElementsAre(NotEmpty(3), NotEmpty(4)));
  EXPECT_THAT(Found("cards 2\nnet 3 48 49\n"), ElementsAre(NotEmpty(3), NotEmpty(48), NotEmpty(49)));
  EXPECT_THAT(Found("cards 2\nresistor 1 96 20k\n"), ElementsAre(NotEmpty(1), NotEmpty(96)));
}

TEST_F(SelfTest, NamesCardsThatDoNotAnswer) {
  EXPECT_THAT(Found("cards 3\nmissing-card 2\n" + Stuck("closed", 97, 0)),
              ElementsAre(NoCard(2), NeverOpens(97, 0)));
  EXPECT_THAT(Found("cards 3\nmissing-card 1\n"), ElementsAre(NoCard(1)));
  EXPECT_THAT(Found("cards 3\nmissing-card 1\nmissing-first-card error\n"), ElementsAre(NoCard(1)));
}

TEST_F(SelfTest, NamesCardsOfTheChannelsThatDoNotAnswer) {
  Channels(40, 240);
  EXPECT_THAT(Found("cards 3\n"), ElementsAre(NoCard(4), NoCard(5)));
  Channels(193, 200);
  EXPECT_THAT(Found("cards 3\n"), ElementsAre(NoCard(5)));
}

TEST_F(SelfTest, LooksAtItsChannelsAlone) {
  Channels(10, 20);
  EXPECT_THAT(Found("cards 1\nwire 21 22\n" + Stuck("open", 9, 0) + Stuck("closed", 10, 0)),
              ElementsAre(NeverOpens(10, 0)));
}

TEST_F(SelfTest, EndsOnALiveFixture) {
  EXPECT_THAT(Found("cards 2\ncharge 50 24 tau never\nwire 1 2\n" + Stuck("closed", 9, 0)),
              ElementsAre(Live(50)));
  EXPECT_THAT(Found("cards 2\ncharge 1 -0.6 tau never\ncharge 96 12 tau never\n"),
              ElementsAre(Live(1), Live(96)));
  EXPECT_THAT(Found("cards 2\ncharge 96 12 tau never\n" + Stuck("open", 96, 0)), ElementsAre(Live(96)));
  EXPECT_THAT(Found("cards 2\ncharge 96 12 tau never\n" + Stuck("closed", 96, 1)), ElementsAre(Live(96)));
}

TEST_F(SelfTest, NamesBothPolesOfASource) {
  EXPECT_THAT(Found("cards 2\ncapacitor 5 70 12 tau never\n"), ElementsAre(Live(5), Live(70)));
  EXPECT_THAT(Found("cards 2\ncapacitor 70 5 12 tau 60\n"), ElementsAre(Live(5), Live(70)));
  EXPECT_THAT(Found("cards 2\ncapacitor 5 70 12 tau never\n" + Stuck("open", 70, 0)),
              ElementsAre(Live(5), Live(70)));
}

TEST_F(SelfTest, SaysWhatVoltageItRead) {
  Connect("cards 1\ncharge 8 24 tau never\n");
  const SelfTestSummary summary = Run();
  ASSERT_EQ(summary.defects.size(), 1U);
  EXPECT_NEAR(summary.defects.front().volts, 24.0, 0.01);
}

// --- twos and threes, on channels of their own ---

struct Fault {
  std::string description;
  std::vector<TesterDefect> names;
};

class RandomFaults {
 public:
  RandomFaults(unsigned seed, int cards) : random_(seed), channels_(48 * cards) {}

  Fault Next() {
    const int channel = NewChannel();
    const int line = Below(2);
    switch (Below(3)) {
      case 0:
        return {Stuck("closed", channel, line), {NeverOpens(channel, line)}};
      case 1:
        return {Stuck("open", channel, line),
                {Uncertain(NeverCloses(channel, 0)), Uncertain(NeverCloses(channel, 1))}};
      default:
        break;
    }
    const int other = NewChannel();
    return {"wire " + std::to_string(channel) + " " + std::to_string(other) + "\n",
            {NotEmpty(channel), NotEmpty(other)}};
  }

 private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  int NewChannel() {
    for (;;) {
      const int channel = 1 + Below(channels_);
      if (used_.insert(channel).second) return channel;
    }
  }

  std::mt19937 random_;
  int channels_;
  std::set<int> used_;
};

class SelfTestOfSeveral : public SelfTestBench, public testing::WithParamInterface<int> {};

TEST_P(SelfTestOfSeveral, DefectsNamesEach) {
  constexpr unsigned Testers = 36;
  for (unsigned seed = 0; seed < Testers; ++seed) {
    const int cards = 1 + static_cast<int>(seed % 3);
    RandomFaults faults(seed, cards);
    std::string description = "cards " + std::to_string(cards) + "\n";
    std::vector<TesterDefect> names;
    for (int n = 0; n < GetParam(); ++n) {
      const Fault fault = faults.Next();
      description += fault.description;
      names.insert(names.end(), fault.names.begin(), fault.names.end());
    }
    ASSERT_THAT(Found(description), UnorderedElementsAreArray(names)) << description;
  }
}

INSTANTIATE_TEST_SUITE_P(, SelfTestOfSeveral, testing::Values(2, 3, 12),
                         [](const auto& row) { return std::to_string(row.param); });

// --- ways out ---

// What takes every kind of reading.
constexpr char AllReadings[] = "cards 2\nwire 47 49\nstuck-open 47 0\nstuck-open 49 0\nwire 46 51\n";

TEST_F(SelfTest, SaysThatNoCardAnswers) {
  Connect("cards 0\n");
  const SelfTestSummary summary = Run();
  EXPECT_EQ(summary.end, SelfTestEnd::Failed);
  EXPECT_EQ(summary.failure, "no relay card answers");
}

TEST_F(SelfTest, PassesOnWhatTheDriverSaysOfTheFirstCard) {
  Connect("cards 0\nmissing-first-card error\n");
  EXPECT_THAT(Run().failure, HasSubstr("relay card 1 does not answer"));
}

TEST_F(SelfTest, EndsWithEveryErrorOfTheDriverAndNoRelayClosed) {
  Channels(46, 51);
  Connect(AllReadings);
  Run();
  const std::int64_t calls = brenmor_sim_call_count();
  ASSERT_GT(calls, 100);
  for (std::int64_t call = 6; call <= calls; ++call) {  // the first five look for cards
    Connect(AllReadings);
    brenmor_sim_fail_call(call, "Karte 1: Überlast");
    const SelfTestSummary summary = Run();
    // What fails in the clean-up at the end is not told of.
    if (call <= calls - 4) {
      ASSERT_EQ(summary.end, SelfTestEnd::Failed) << "call " << call;
      ASSERT_EQ(summary.failure, "Karte 1: Überlast");
      ExpectSafe();
    }
  }
  brenmor_bus_delete_error();
  Connect("cards 1\n");
}

TEST_F(SelfTest, StopsWhereverTheUserWantsWithNoRelayClosed) {
  Channels(46, 51);
  int steps = 0;
  request.progress = [&steps](double) { return ++steps == 0; };
  Connect(AllReadings);
  Run();
  const int all = steps;
  EXPECT_GT(all, 10);
  for (int stop = 1; stop <= all; ++stop) {
    request.progress = [&steps, stop](double) { return steps++ == stop - 1; };
    steps = 0;
    Connect(AllReadings);
    EXPECT_EQ(Run().end, SelfTestEnd::Cancelled) << "step " << stop;
    ExpectSafe();
  }
}

TEST_F(SelfTest, EndsWithWhatTheProgressThrows) {
  request.progress = [](double position) -> bool {
    if (position > 0.7) throw std::runtime_error("the display is gone");
    return false;
  };
  Connect("cards 1\n");
  EXPECT_EQ(Run().failure, "the display is gone");
}

TEST_F(SelfTest, ProgressGoesFromZeroToOneAndNeverBack) {
  double last = 0.0;
  request.progress = [&last](double position) {
    EXPECT_GE(position, last);
    EXPECT_LE(position, 1.0);
    last = position;
    return false;
  };
  Connect("cards 2\nwire 1 2\nstuck-open 2 0\n");
  Run();
  EXPECT_GT(last, 0.9);
}

}  // namespace
}  // namespace kxbench
