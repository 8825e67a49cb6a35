#include <gtest/gtest.h>

#include <optional>

#include "plugin/data/PairBits.h"
#include "tests/plugin/data/DataFixture.h"

namespace data_test {
namespace {

using shorttest::PairBits;

// Notes on 150 channels, three words each, all pairs unknown until they are noted.
class PairNotes : public testing::Test {
 protected:
  PairNotes() {
    for (std::size_t channel = 0; channel < 150; ++channel) bits.SetNoted(channel);
  }

  std::optional<std::size_t> KnownToOne(std::size_t from) const {
    return bits.NextKnownToOne(10, 70, false, from);
  }
  std::optional<std::size_t> ConnectedToOne(std::size_t from) const {
    return bits.NextKnownToOne(10, 70, true, from);
  }

  PairBits bits{150};
};

TEST_F(PairNotes, NothingKnownMeansNothingToTakeOver) {
  EXPECT_EQ(KnownToOne(0), std::nullopt);
  EXPECT_EQ(ConnectedToOne(0), std::nullopt);
}

TEST_F(PairNotes, FindsWhatOneOfTheTwoKnowsInAscendingOrder) {
  for (const std::size_t k : {0U, 63U, 128U}) bits.Note(10, k, Open);
  for (const std::size_t k : {1U, 64U, 149U}) bits.Note(k, 70, Open);
  std::vector<std::size_t> found;
  for (auto k = KnownToOne(0); k; k = KnownToOne(*k + 1)) found.push_back(*k);
  EXPECT_EQ(found, (std::vector<std::size_t>{0, 1, 63, 64, 128, 149}));
}

TEST_F(PairNotes, PassesOverWhatBothKnow) {
  bits.Note(10, 100, Open);
  bits.Note(70, 100, Connected);
  EXPECT_EQ(KnownToOne(0), std::nullopt);
  EXPECT_EQ(ConnectedToOne(0), std::nullopt);
}

TEST_F(PairNotes, ConnectedOnlyPassesOverWhatIsOtherwiseKnown) {
  bits.Note(10, 20, Excluded);
  bits.Note(70, 65, Connected);
  bits.Note(10, 66, Connected);
  EXPECT_EQ(KnownToOne(0), 20U);
  EXPECT_EQ(ConnectedToOne(0), 65U);
  EXPECT_EQ(ConnectedToOne(66), 66U);
}

TEST_F(PairNotes, APairThatIsUnknownAgainIsForgotten) {
  bits.Note(10, 20, Connected);
  bits.Note(10, 20, CellState::Unknown);
  EXPECT_EQ(KnownToOne(0), std::nullopt);
  EXPECT_EQ(ConnectedToOne(0), std::nullopt);
}

TEST_F(PairNotes, APairThatIsNoLongerConnectedIsStillKnown) {
  bits.Note(10, 20, Connected);
  bits.Note(10, 20, Open);
  EXPECT_EQ(KnownToOne(0), 20U);
  EXPECT_EQ(ConnectedToOne(0), std::nullopt);
}

TEST_F(PairNotes, StartsAfterTheLastChannelOfAWord) {
  bits.Note(10, 63, Open);
  EXPECT_EQ(KnownToOne(63), 63U);
  EXPECT_EQ(KnownToOne(64), std::nullopt);
}

TEST_F(PairNotes, LooksNoFurtherThanTheLastChannel) {
  const PairBits whole(64);
  EXPECT_EQ(whole.NextKnownToOne(0, 1, false, 64), std::nullopt);
}

TEST_F(PairNotes, DoesNotNoteChannelsThatItHasNoneFor) {
  bits.Note(10, 150, Open);
  bits.Note(150, 10, Open);
  EXPECT_EQ(KnownToOne(0), std::nullopt);
}

TEST_F(PairNotes, ForgettingLeavesTheChannelsWithoutBeingNoted) {
  bits.Forget();
  EXPECT_EQ(bits.Channels(), 150U);
  EXPECT_FALSE(bits.IsNoted(10));
  bits.SetNoted(10);
  EXPECT_TRUE(bits.IsNoted(10));
  EXPECT_FALSE(bits.IsNoted(11));
}

}  // namespace
}  // namespace data_test
