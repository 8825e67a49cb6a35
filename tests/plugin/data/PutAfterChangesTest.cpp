// TShortTestData::Put gives the cells of the plain recursion whatever happened to the matrix between two
// findings: cells overwritten, channels suspended, the matrix copied, moved or given another range, and cells
// changed from outside through `connections`, also by whoever took a reference long before.

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "plugin/data/ShorttestData.h"
#include "tests/plugin/data/DataFixture.h"
#include "tests/plugin/data/PlainMatrix.h"
#include "tests/support/StackThread.h"

namespace data_test {
namespace {

constexpr std::size_t StackOfTheRecursion = std::size_t{256} << 20;  // only what it reaches is touched

enum class Changes { ThroughOperations, FromOutside };

struct Story {
  const char* name;
  Changes changes;
  unsigned stories;
  int fewestChannels;
  int mostChannels;
};

// One matrix, to which random things happen; `plain_` is told of each cell that is not written by Put.
class ChangingMatrix {
 public:
  ChangingMatrix(unsigned seed, const Story& story)
      : random_(seed),
        changes_(story.changes),
        data_(1, story.fewestChannels + Below(story.mostChannels - story.fewestChannels + 1)) {}

  // The first difference from the plain recursion.
  std::optional<std::string> Tell() {
    Restart();
    const int events = 20 + Below(6 * Channels());
    for (int event = 0; event < events; ++event) {
      if (Below(4) > 0) {
        Find();
      } else {
        Change();
      }
      if (auto difference = Difference(data_, *plain_))
        return "event " + std::to_string(event) + ": " + *difference;
    }
    return std::nullopt;
  }

 private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  std::int32_t Channels() const { return data_.Highconnections() + 1; }
  std::int32_t AnyChannel() { return Below(Channels()); }

  template <typename T, std::size_t Size>
  T OneOf(const std::array<T, Size>& values) {
    return values.at(static_cast<std::size_t>(Below(static_cast<int>(Size))));
  }

  CellState AnyState() {
    return static_cast<CellState>(OneOf(std::array{0, 0, 0, 0, 1, 1, 2, 2, 2, 2, 3, 4, 5, 8, 9, 221}));
  }

  // Mostly one that is given once, so that the cell it ends in tells the order of the writes.
  double AnyOhm() {
    using Double = std::numeric_limits<double>;
    if (Below(10) == 0)
      return OneOf(std::array{Double::quiet_NaN(), Double::infinity(), -Double::infinity(), -0.0});
    return ohm_ += 1.0;
  }

  TConnectionCell AnyCell() { return {AnyState(), AnyOhm()}; }

  void Find() {
    const std::int32_t i = AnyChannel();
    const std::int32_t j = AnyChannel();
    const TConnectionCell found = AnyCell();
    data_.Put(i, j, found.state, found.resistance);
    plain_->Put(i, j, found.state, found.resistance);
  }

  void Change() {
    if (changes_ == Changes::FromOutside && Below(2) == 0) {
      ChangeFromOutside();
      return;
    }
    switch (Below(8)) {
      case 0:
        Suspend();
        break;
      case 1:
        Copy();
        break;
      case 2:
        Move();
        break;
      case 3:
        ChangeRange();
        break;
      case 4:
        ReplaceConnections();
        break;
      default:
        Overwrite();
        break;
    }
  }

  void Overwrite() {
    const std::int32_t i = AnyChannel();
    const std::int32_t j = AnyChannel();
    const TConnectionCell cell = AnyCell();
    data_.SetC(i, j, cell.state, cell.resistance);
    plain_->Set(i, j, cell);
  }

  void Suspend() {
    data_.SuspendChannel(AnyChannel(), 12.0);
    plain_->Read(data_);
  }

  // References to the former cells end here.
  void Copy() {
    const TShortTestData copy(data_);
    data_ = copy;
    Restart();
  }

  // References to the cells stay valid.
  void Move() {
    TShortTestData other(1, Channels());
    std::swap(other, data_);
    TConnections connections(std::move(other.connections));
    data_.connections = std::move(connections);
  }

  void ChangeRange() {
    const int shift = Below(3) - 1;
    data_.SetVonBis(data_.von + shift, data_.bis + shift);
    Restart();
  }

  // The new owner of the rows keeps a reference to one of their cells.
  void ReplaceConnections() {
    TConnections::Rows rows = data_.connections;
    TConnectionCell& kept = rows[0][0];
    data_.connections = std::move(rows);
    kept = AnyCell();
    Restart();
  }

  void Restart() {
    rows_.clear();
    cells_.clear();
    plain_.emplace(data_);
  }

  void ChangeFromOutside() {
    const auto row = static_cast<std::size_t>(AnyChannel());
    const auto column = static_cast<std::size_t>(AnyChannel());
    const TConnectionCell cell = AnyCell();
    switch (Below(6)) {
      case 0:
        data_.connections[row][column] = cell;
        break;
      case 1:
        data_.connections.at(row).at(column) = cell;
        break;
      case 2:
        (data_.connections.begin() + static_cast<std::ptrdiff_t>(row))->at(column).state = cell.state;
        break;
      case 3:
        TakeReference(row, column);
        break;
      default:
        UseReferences(column, cell);
        break;
    }
    plain_->Read(data_);
  }

  void TakeReference(std::size_t row, std::size_t column) {
    switch (Below(4)) {
      case 0:
        cells_.push_back(&data_.connections[row][column]);
        break;
      case 1:
        rows_.push_back(&*(data_.connections.end() - 1));
        break;
      case 2:
        rows_.push_back(&data_.connections.front());
        break;
      default:
        rows_.push_back(&data_.connections.back());
        break;
    }
  }

  void UseReferences(std::size_t column, const TConnectionCell& cell) {
    for (TConnectionCell* const kept : cells_) *kept = cell;
    for (TConnections::Row* const kept : rows_) kept->at(column) = cell;
  }

  std::mt19937 random_;
  Changes changes_;
  double ohm_ = 0.0;
  TShortTestData data_;
  std::optional<PlainMatrix> plain_;
  std::vector<TConnections::Row*> rows_;
  std::vector<TConnectionCell*> cells_;
};

class PutAfterChanges : public testing::TestWithParam<Story> {};

TEST_P(PutAfterChanges, GivesTheCellsOfThePlainRecursion) {
  for (unsigned seed = 0; seed < GetParam().stories; ++seed) {
    std::optional<std::string> difference;
    test_support::RunWithStack(StackOfTheRecursion,
                               [&] { difference = ChangingMatrix(seed, GetParam()).Tell(); });
    ASSERT_FALSE(difference) << "seed " << seed << ", " << *difference;
  }
}

// The channels' bits fill no word, one, and more than two.
INSTANTIATE_TEST_SUITE_P(
    , PutAfterChanges,
    testing::Values(Story{"ThroughOperations", Changes::ThroughOperations, 3000, 1, 9},
                    Story{"FromOutside", Changes::FromOutside, 3000, 1, 9},
                    Story{"ThroughOperationsOnAWordOfChannels", Changes::ThroughOperations, 30, 62, 66},
                    Story{"FromOutsideOnAWordOfChannels", Changes::FromOutside, 30, 62, 66},
                    Story{"ThroughOperationsOnTwoWordsOfChannels", Changes::ThroughOperations, 7, 127, 130},
                    Story{"FromOutsideOnTwoWordsOfChannels", Changes::FromOutside, 7, 127, 130}),
    CaseName());

// Every way to a cell that can be written through, one at a time, with the writing done after the first Put
// has looked at the matrix.
struct Access {
  const char* name;
  TConnectionCell& (*cell)(TConnections& connections);  // of the pair (3, 1)
};

class PutAfterAccess : public testing::TestWithParam<Access> {};

TEST_P(PutAfterAccess, SeesWhatIsWrittenThroughAReferenceThatWasKept) {
  TShortTestData data(1, 4);
  TConnectionCell& kept = GetParam().cell(data.connections);
  data.Put(0, 2, Open, 1.0);
  data.Put(1, 2, Open, 1.0);
  kept = {Connected, 5.0};
  data.Put(0, 1, Connected, 0.5);
  EXPECT_EQ(data.Get(0, 3), Connected);
  EXPECT_EQ(data.GetR(0, 3), 5.0);
  EXPECT_EQ(data.Get(2, 3), Open);
}

INSTANTIATE_TEST_SUITE_P(
    , PutAfterAccess,
    testing::Values(Access{"Index", [](TConnections& c) -> TConnectionCell& { return c[3][1]; }},
                    Access{"At", [](TConnections& c) -> TConnectionCell& { return c.at(3).at(1); }},
                    Access{"Back", [](TConnections& c) -> TConnectionCell& { return c.back()[1]; }},
                    Access{"Begin", [](TConnections& c) -> TConnectionCell& { return c.begin()[3][1]; }},
                    Access{"End", [](TConnections& c) -> TConnectionCell& { return c.end()[-1][1]; }},
                    Access{"Front", [](TConnections& c) -> TConnectionCell& { return (&c.front())[3][1]; }}),
    CaseName());

}  // namespace
}  // namespace data_test
