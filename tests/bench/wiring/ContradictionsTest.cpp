#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bench/wiring/Contradictions.h"

namespace kxbench::wiring {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Channels 11 to 15 with every pair open.
TShortTestData Open() {
  TShortTestData data(11, 15);
  for (std::int32_t i = 0; i < 5; ++i) {
    for (std::int32_t j = 0; j < i; ++j) data.SetC(i, j, CellState::NotConnected, NoResistance);
  }
  return data;
}

TEST(Expectation, ThatContradictsItselfTellsTheChannelsAndTheChain) {
  TShortTestData data = Open();
  data.SetC(1, 0, CellState::Connected, NoResistance);
  data.SetC(2, 1, CellState::Connected, NoResistance);
  const std::vector<Contradiction> contradictions = ContradictionsIn(data);
  ASSERT_EQ(contradictions.size(), 1U);
  EXPECT_EQ(contradictions[0].lower, 11);
  EXPECT_EQ(contradictions[0].higher, 13);
  EXPECT_THAT(contradictions[0].chain, ElementsAre(11, 12, 13));
}

TEST(Expectation, WithWholeNetsDoesNotContradictItself) {
  TShortTestData data = Open();
  data.SetC(1, 0, CellState::Connected, NoResistance);
  data.SetC(2, 1, CellState::Connected, NoResistance);
  data.SetC(2, 0, CellState::Connected, NoResistance);
  EXPECT_THAT(ContradictionsIn(data), IsEmpty());
}

TEST(Expectation, MayLeaveAPairOfANetOut) {
  TShortTestData data = Open();
  data.SetC(1, 0, CellState::Connected, NoResistance);
  data.SetC(2, 1, CellState::Connected, NoResistance);
  data.SetC(2, 0, CellState::ExcludedPair, NoResistance);
  EXPECT_THAT(ContradictionsIn(data), IsEmpty());
}

}  // namespace
}  // namespace kxbench::wiring
