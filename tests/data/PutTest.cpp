// TShortTestData::Put: hand-made cases, and the same cells as the plain recursion on matrices of every kind.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <utility>

#include "data/ShorttestData.h"
#include "tests/data/DataFixture.h"
#include "tests/data/PlainMatrix.h"
#include "tests/support/StackThread.h"

namespace data_test {
namespace {

constexpr std::size_t KiB = 1024;
constexpr std::size_t SmallStack = 128 * KiB;
constexpr std::size_t LargeStack = KiB * KiB * KiB;  // reserved; only what the recursion reaches is touched

constexpr CellState Open = CellState::NotConnected;
constexpr CellState Connected = CellState::Connected;
constexpr CellState Excluded = CellState::ExcludedPair;

// The vocabulary of a measurement on four to six channels; names are matrix indices.
class Put : public testing::Test {
 protected:
  TShortTestData data{1, 6};

  CellState State(int i, int j) const { return data.Get(i, j); }
  double Ohm(int i, int j) const { return data.GetR(i, j); }
  void ExpectPair(int i, int j, CellState state, double ohm) const {
    EXPECT_EQ(State(i, j), state) << "pair " << i << ", " << j;
    EXPECT_EQ(Ohm(i, j), ohm) << "pair " << i << ", " << j;
  }
};

TEST_F(Put, EntersAnUnknownPair) {
  data.Put(3, 1, Open, 1e6);
  EXPECT_EQ(States(data), (StateRows{{8, 8, 8, 8, 8, 8},
                                     {0, 8, 8, 8, 8, 8},
                                     {0, 0, 8, 8, 8, 8},
                                     {0, 1, 0, 8, 8, 8},
                                     {0, 0, 0, 0, 8, 8},
                                     {0, 0, 0, 0, 0, 8}}));
  ExpectPair(1, 3, Open, 1e6);
}

TEST_F(Put, TwoConnectionsMakeTheThirdWithTheResistanceOfTheFirst) {
  data.Put(0, 1, Connected, 0.5);
  data.Put(1, 2, Connected, 0.7);
  ExpectPair(0, 1, Connected, 0.5);
  ExpectPair(1, 2, Connected, 0.7);
  ExpectPair(0, 2, Connected, 0.5);
}

TEST_F(Put, OpenGoesToTheWholeNetWithItsResistance) {
  data.Put(0, 1, Connected, 0.5);
  data.Put(1, 2, Connected, 0.7);
  data.Put(0, 3, Open, 1e6);
  ExpectPair(0, 3, Open, 1e6);
  ExpectPair(1, 3, Open, 1e6);
  ExpectPair(2, 3, Open, 1e6);
  EXPECT_EQ(State(3, 4), CellState::Unknown);
}

TEST_F(Put, StateUnknownChangesNothing) {
  data.Put(0, 1, CellState::Unknown, 5.0);
  data.Put(0, 1, Connected, 0.5);
  data.Put(0, 1, CellState::Unknown, 5.0);
  ExpectPair(0, 1, Connected, 0.5);
  data.Put(2, 3, CellState::Unknown, 5.0);
  ExpectPair(2, 3, CellState::Unknown, -1.0);
}

TEST_F(Put, AnOpenPairDoesNotTurnIntoAConnectedOne) {
  data.Put(0, 1, Open, 1e6);
  data.Put(0, 1, Connected, 0.5);
  data.Put(1, 0, Connected, 0.5);
  ExpectPair(0, 1, Open, 1e6);
}

TEST_F(Put, TheFirstStateOfAPairWins) {
  for (const CellState first : {Open, Connected, Excluded, CellState::NotTestable, CellState::Reserved}) {
    TShortTestData matrix(1, 2);
    matrix.Put(0, 1, first, 3.0);
    for (const CellState second : {Open, Connected, Excluded, CellState::NotTestable}) {
      matrix.Put(0, 1, second, 4.0);
      EXPECT_EQ(matrix.Get(0, 1), first);
      EXPECT_EQ(matrix.GetR(0, 1), 3.0);
    }
  }
}

TEST_F(Put, NeverWritesADiagonalCell) {
  data.SuspendChannel(5, 1.0);
  data.Put(0, 0, Connected, 0.5);
  data.Put(5, 5, Open, 1e6);
  data.Put(0, 1, Connected, 0.5);
  EXPECT_EQ(State(0, 0), CellState::NotApplicable);
  EXPECT_EQ(State(1, 1), CellState::NotApplicable);
  EXPECT_EQ(State(5, 5), CellState::Suspended);
  EXPECT_EQ(Ohm(0, 0), -1.0);
}

TEST_F(Put, NeverWritesAboveTheDiagonal) {
  data.Put(0, 1, Connected, 0.5);
  data.Put(1, 2, Connected, 0.7);
  data.Put(0, 3, Open, 1e6);
  for (std::size_t row = 0; row < 6; ++row) {
    for (std::size_t column = row; column < 6; ++column) {
      EXPECT_EQ(data.connections[row][column].state, CellState::NotApplicable);
      EXPECT_EQ(data.connections[row][column].resistance, -1.0);
    }
  }
}

TEST_F(Put, ConnectingTakesOverTheOpenPairsOfBothSides) {
  data.Put(0, 2, Open, 20.0);
  data.Put(1, 3, Open, 31.0);
  data.Put(0, 1, Connected, 0.5);
  ExpectPair(1, 2, Open, 20.0);
  ExpectPair(0, 3, Open, 31.0);
  EXPECT_EQ(State(2, 3), CellState::Unknown);
}

TEST_F(Put, ConnectingTakesOverExcludedAndNotTestablePairs) {
  data.SetC(0, 2, Excluded, -1.0);
  data.SuspendChannel(4, 9.0);
  data.Put(0, 1, Connected, 0.5);
  ExpectPair(1, 2, Excluded, -1.0);
  ExpectPair(1, 4, CellState::NotTestable, -1.0);
  ExpectPair(0, 4, CellState::NotTestable, -1.0);
}

TEST_F(Put, JoiningTwoNetsConnectsEveryPairAcross) {
  data.Put(0, 1, Connected, 0.1);
  data.Put(2, 3, Connected, 0.2);
  data.Put(1, 2, Connected, 0.3);
  for (int i = 0; i < 4; ++i) {
    for (int j = 0; j < i; ++j) EXPECT_EQ(State(i, j), Connected) << i << ", " << j;
  }
  // At k = 0, 2 takes over what 1 knows of 0, with its resistance; inside that call, at k = 3, 0 takes over
  // what 2 knows of 3, and inside that one, at k = 1, 3 takes over what 0 knows of 1.
  ExpectPair(0, 2, Connected, 0.1);
  ExpectPair(0, 3, Connected, 0.2);
  ExpectPair(1, 3, Connected, 0.1);
}

TEST_F(Put, ExcludedGoesToTheWholeNet) {
  data.Put(0, 1, Connected, 0.1);
  data.Put(2, 3, Connected, 0.2);
  data.Put(1, 3, Excluded, -1.0);
  for (const auto& [i, j] : {std::pair{0, 2}, std::pair{0, 3}, std::pair{1, 2}, std::pair{1, 3}}) {
    ExpectPair(i, j, Excluded, -1.0);
  }
}

TEST_F(Put, AnExcludedPairStaysExcludedWhenItsNetsAreJoined) {
  data.SetC(0, 2, Excluded, -1.0);
  data.Put(0, 1, Connected, 0.1);
  data.Put(1, 2, Connected, 0.2);
  ExpectPair(0, 2, Excluded, -1.0);
  ExpectPair(1, 2, Excluded, -1.0);  // 1 took it over from 0, so it is no longer unknown
}

TEST_F(Put, KeepsAResistanceThatIsNotANumber) {
  data.Put(0, 1, Connected, std::numeric_limits<double>::quiet_NaN());
  data.Put(1, 2, Connected, std::numeric_limits<double>::infinity());
  EXPECT_TRUE(std::isnan(Ohm(0, 1)));
  EXPECT_TRUE(std::isnan(Ohm(0, 2)));
  EXPECT_EQ(Ohm(1, 2), std::numeric_limits<double>::infinity());
}

TEST_F(Put, OnOneChannelDoesNothing) {
  TShortTestData one(7, 7);
  one.Put(0, 0, Connected, 0.5);
  EXPECT_EQ(States(one), (StateRows{{8}}));
  EXPECT_EQ(one.GetR(0, 0), -1.0);
}

// ---- against the plain recursion ----

struct Finding {
  std::int32_t i;
  std::int32_t j;
  CellState state;
  double ohm;
};

// Bit for bit, so that a NaN equals itself.
bool SameResistance(double a, double b) { return std::memcmp(&a, &b, sizeof a) == 0; }

std::string Describe(const TConnectionCell& cell) {
  return std::to_string(static_cast<int>(cell.state)) + " with " + std::to_string(cell.resistance) + " Ohm";
}

// The first pair in which the two differ.
std::optional<std::string> Difference(const TShortTestData& data, const PlainMatrix& plain) {
  for (std::int32_t row = 0; row <= data.Highconnections(); ++row) {
    for (std::int32_t column = 0; column <= row; ++column) {
      const TConnectionCell actual{data.Get(row, column), data.GetR(row, column)};
      const TConnectionCell& expected = plain.At(row, column);
      if (actual.state != expected.state || !SameResistance(actual.resistance, expected.resistance)) {
        return "pair " + std::to_string(row) + ", " + std::to_string(column) + ": " + Describe(actual) +
               " instead of " + Describe(expected);
      }
    }
  }
  return std::nullopt;
}

enum class Damage { None, Pairs, PairsAndDiagonal };

// Small matrices on which findings of every kind are entered, every resistance given once, so that the cell
// it ends in tells the order of the writes.
class RandomMatrix {
 public:
  RandomMatrix(unsigned seed, Damage damage) : random_(seed), damage_(damage), data_(Make()), plain_(data_) {}

  std::optional<std::string> EnterFindings() {
    const int findings = Below(3 * (data_.Highconnections() + 1));
    for (int n = 0; n < findings; ++n) {
      const Finding finding{AnyChannel(), AnyChannel(), FindingState(), NextOhm()};
      data_.Put(finding.i, finding.j, finding.state, finding.ohm);
      plain_.Put(finding.i, finding.j, finding.state, finding.ohm);
      if (auto difference = Difference(data_, plain_)) return difference;
    }
    return std::nullopt;
  }

 private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  std::int32_t AnyChannel() { return Below(data_.Highconnections() + 1); }
  double NextOhm() { return ohm_ += 1.0; }

  template <std::size_t Size>
  CellState OneOf(const std::array<int, Size>& states) {
    return static_cast<CellState>(states[static_cast<std::size_t>(Below(static_cast<int>(Size)))]);
  }

  CellState FindingState() {
    if (damage_ == Damage::None) return OneOf(std::array{0, 1, 1, 2, 2, 2, 2, 3, 4});
    return OneOf(std::array{0, 1, 2, 2, 2, 3, 4, 5, 6, 7, 8, 9, 221, 255});
  }

  CellState PairState() {
    if (damage_ == Damage::None) return OneOf(std::array{1, 2, 2, 3, 4});
    return OneOf(std::array{1, 2, 2, 2, 3, 4, 5, 6, 7, 8, 9, 218, 221, 240, 255});
  }

  CellState DiagonalState() {
    if (damage_ == Damage::PairsAndDiagonal) return OneOf(std::array{0, 1, 2, 3, 4, 8, 8, 9, 221});
    return OneOf(std::array{8, 8, 8, 8, 9});
  }

  TShortTestData Make() {
    const int channels = 1 + Below(10);
    const int knownPercent = Below(80);
    TShortTestData data(1, channels);
    for (std::int32_t row = 0; row < channels; ++row) {
      for (std::int32_t column = 0; column < row; ++column) {
        if (Below(100) < knownPercent) data.SetC(row, column, PairState(), NextOhm());
      }
      data.SetC(row, row, DiagonalState(), NextOhm());
    }
    return data;
  }

  std::mt19937 random_;
  Damage damage_;
  double ohm_ = 0.0;
  TShortTestData data_;
  PlainMatrix plain_;
};

struct RandomCase {
  const char* name;
  Damage damage;
};

class PutOnRandomMatrices : public testing::TestWithParam<RandomCase> {};

TEST_P(PutOnRandomMatrices, GivesTheCellsOfThePlainRecursion) {
  constexpr unsigned Matrices = 4000;
  for (unsigned seed = 0; seed < Matrices; ++seed) {
    const auto difference = RandomMatrix(seed, GetParam().damage).EnterFindings();
    ASSERT_FALSE(difference) << "seed " << seed << ": " << *difference;
  }
}

INSTANTIATE_TEST_SUITE_P(, PutOnRandomMatrices,
                         testing::Values(RandomCase{"WithDefinedStates", Damage::None},
                                         RandomCase{"WithUndefinedPairStates", Damage::Pairs},
                                         RandomCase{"WithUndefinedDiagonalStates", Damage::PairsAndDiagonal}),
                         CaseName());

// Two nets, each half of the channels, as large as they come. How the channels are shared out decides in
// which order k meets them.
enum class Layout { Halves, Alternating };

class TwoNets {
 public:
  TwoNets(std::int32_t channels, Layout layout) : half_(channels / 2), layout_(layout), data_(1, channels) {}

  std::int32_t Member(int net, std::int32_t n) const {
    return layout_ == Layout::Halves ? net * half_ + n : 2 * n + net;
  }

  // The findings that make the two nets, without one between them.
  std::vector<Finding> Wires() const {
    std::vector<Finding> findings;
    for (std::int32_t n = 1; n < half_; ++n) {
      for (const int net : {0, 1}) {
        findings.push_back({Member(net, n - 1), Member(net, n), Connected, 1000.0 * net + n});
      }
    }
    return findings;
  }

  // Production Put on a small stack, whatever the size of the nets.
  void Enter(const std::vector<Finding>& findings) {
    test_support::RunWithStack(SmallStack, [&] {
      for (const Finding& f : findings) data_.Put(f.i, f.j, f.state, f.ohm);
    });
  }

  static void EnterPlain(PlainMatrix& plain, const std::vector<Finding>& findings) {
    test_support::RunWithStack(LargeStack, [&] {
      for (const Finding& f : findings) plain.Put(f.i, f.j, f.state, f.ohm);
    });
  }

  const TShortTestData& Data() const { return data_; }

 private:
  std::int32_t half_;
  Layout layout_;
  TShortTestData data_;
};

int CountPairs(const TShortTestData& data, CellState state) {
  int count = 0;
  for (std::int32_t row = 0; row <= data.Highconnections(); ++row) {
    for (std::int32_t column = 0; column < row; ++column) count += data.Get(row, column) == state ? 1 : 0;
  }
  return count;
}

struct TwoNetsCase {
  const char* name;
  Layout layout;
  CellState between;
  std::int32_t first;   // member of the first net that is measured
  std::int32_t second;  // and of the second
};

class PutBetweenTwoNetsOf120 : public testing::TestWithParam<TwoNetsCase> {};

TEST_P(PutBetweenTwoNetsOf120, GivesTheCellsOfThePlainRecursionOnASmallStack) {
  const TwoNetsCase& c = GetParam();
  TwoNets nets(240, c.layout);
  PlainMatrix plain(nets.Data());
  std::vector<Finding> findings = nets.Wires();
  findings.push_back({nets.Member(0, c.first), nets.Member(1, c.second), c.between, 0.5});

  nets.Enter(findings);
  TwoNets::EnterPlain(plain, findings);

  EXPECT_EQ(Difference(nets.Data(), plain), std::nullopt);
  const int across = 120 * 120;
  const int within = 120 * 119;
  EXPECT_EQ(CountPairs(nets.Data(), c.between), c.between == Connected ? across + within : across);
}

INSTANTIATE_TEST_SUITE_P(
    , PutBetweenTwoNetsOf120,
    testing::Values(TwoNetsCase{"ShortedAtTheirFirst", Layout::Halves, Connected, 0, 0},
                    TwoNetsCase{"ShortedAtTheirLast", Layout::Halves, Connected, 119, 119},
                    TwoNetsCase{"ShortedInTheMiddle", Layout::Halves, Connected, 60, 17},
                    TwoNetsCase{"AlternatingShorted", Layout::Alternating, Connected, 0, 0},
                    TwoNetsCase{"Open", Layout::Halves, Open, 0, 0},
                    TwoNetsCase{"AlternatingOpen", Layout::Alternating, Open, 60, 17},
                    TwoNetsCase{"Excluded", Layout::Halves, Excluded, 119, 0}),
    CaseName());

TEST(PutBetweenTwoNetsOf480, GivesTheCellsOfThePlainRecursionOnASmallStack) {
  TwoNets nets(960, Layout::Halves);
  nets.Enter(nets.Wires());
  ASSERT_EQ(CountPairs(nets.Data(), Connected), 480 * 479);
  PlainMatrix plain(nets.Data());

  const std::vector<Finding> shorted{{nets.Member(0, 0), nets.Member(1, 0), Connected, 0.5}};
  nets.Enter(shorted);
  TwoNets::EnterPlain(plain, shorted);

  EXPECT_EQ(Difference(nets.Data(), plain), std::nullopt);
  EXPECT_EQ(CountPairs(nets.Data(), Connected), 480 * 479 + 480 * 480);
}

}  // namespace
}  // namespace data_test
