// TShortTestData::Put gives the cells of the plain recursion, on matrices of every kind and nets of any size,
// and needs no call stack for it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <random>
#include <string>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"
#include "tests/plugin/data/PlainMatrix.h"
#include "tests/support/StackThread.h"

namespace data_test {
namespace {

constexpr std::size_t KiB = 1024;
constexpr std::size_t SmallStack = 128 * KiB;
constexpr std::size_t LargeStack = KiB * KiB * KiB;  // reserved; only what the recursion reaches is touched

struct Finding {
  std::int32_t i;
  std::int32_t j;
  CellState state;
  double ohm;
};

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

  // The two nets as they are once the wires are known.
  void Make() {
    for (std::int32_t a = 1; a < half_; ++a) {
      for (std::int32_t b = 0; b < a; ++b) {
        for (const int net : {0, 1})
          data_.SetC(Member(net, a), Member(net, b), Connected, 1000.0 * net + a + b);
      }
    }
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
  nets.Make();
  PlainMatrix plain(nets.Data());

  const std::vector<Finding> shorted{{nets.Member(0, 0), nets.Member(1, 0), Connected, 0.5}};
  nets.Enter(shorted);
  TwoNets::EnterPlain(plain, shorted);

  EXPECT_EQ(Difference(nets.Data(), plain), std::nullopt);
  EXPECT_EQ(CountPairs(nets.Data(), Connected), 480 * 479 + 480 * 480);
}

}  // namespace
}  // namespace data_test
