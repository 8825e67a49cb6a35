#include <gmock/gmock.h>

#include "bench/drawing/DrawingPlacement.h"
#include "tests/bench/drawing/PictureSamples.h"

namespace kxbench::drawing {
namespace {

using testing::ElementsAre;

/// Connectors of four pins each; each pair is connected pin by pin.
HarnessPicture Connected(const std::vector<std::pair<std::size_t, std::size_t>>& pairs,
                         std::size_t connectors) {
  constexpr std::size_t pins = 4;
  HarnessPicture picture;
  for (std::size_t i = 0; i < connectors * pins; ++i) {
    picture.pins.push_back({static_cast<std::int32_t>(i + 1), "X" + std::to_string(i / pins + 1),
                            std::to_string(i % pins + 1), "", false});
  }
  for (const auto& [a, b] : pairs) {
    for (std::size_t i = 0; i < pins; ++i) picture.nets.push_back({"", {a * pins + i, b * pins + i}});
  }
  return picture;
}

TEST(DrawingPlacement, ConnectorsFaceThoseTheyAreConnectedWith) {
  const HarnessPicture picture = Connected({{0, 3}, {1, 2}, {4, 5}}, 6);
  const Placement placement = Placed(BlocksOf(picture), picture);
  ASSERT_EQ(placement.left.size(), 3U);
  ASSERT_EQ(placement.right.size(), 3U);
  for (std::size_t i = 0; i < 3; ++i) {
    const std::pair<std::size_t, std::size_t> pair = std::minmax(placement.left[i], placement.right[i]);
    EXPECT_THAT(pair, testing::AnyOf(testing::Pair(0U, 3U), testing::Pair(1U, 2U), testing::Pair(4U, 5U)));
  }
}

TEST(DrawingPlacement, TheFirstConnectorIsOnTheLeft) {
  for (std::uint32_t seed = 1; seed <= 20; ++seed) {
    const HarnessPicture picture = RandomPicture(seed, 60);
    const Placement placement = Placed(BlocksOf(picture), picture);
    EXPECT_THAT(placement.left, testing::Contains(0U)) << seed;
  }
}

TEST(DrawingPlacement, EveryBlockStandsInOneColumn) {
  for (const PictureSample& sample : PictureSamples()) {
    const std::vector<DrawnBlock> blocks = BlocksOf(sample.picture);
    Placement placement = Placed(blocks, sample.picture);
    std::vector<std::size_t> all = placement.left;
    all.insert(all.end(), placement.right.begin(), placement.right.end());
    std::sort(all.begin(), all.end());
    ASSERT_EQ(all.size(), blocks.size()) << sample.name;
    for (std::size_t i = 0; i < all.size(); ++i) EXPECT_EQ(all[i], i) << sample.name;
  }
}

TEST(DrawingPlacement, BlocksByChannelStayInTheirOrder) {
  HarnessPicture picture;
  for (std::int32_t channel = 1; channel <= 96; ++channel)
    picture.pins.push_back({channel, "", "", "", false});
  for (std::size_t i = 0; i < 24; ++i) picture.nets.push_back({"", {i, i + 24}});
  const Placement placement = Placed(BlocksOf(picture), picture);
  EXPECT_THAT(placement.left, ElementsAre(0U, 1U));
  EXPECT_THAT(placement.right, ElementsAre(2U, 3U));
}

TEST(DrawingPlacement, AShortColumnBeginsWhereItsLinesAreShortest) {
  HarnessPicture picture;
  for (std::int32_t i = 1; i <= 10; ++i) picture.pins.push_back({i, "A", std::to_string(i), "", false});
  for (std::int32_t i = 1; i <= 2; ++i) picture.pins.push_back({10 + i, "B", std::to_string(i), "", false});
  picture.nets = {{"", {6, 10}}, {"", {7, 11}}};
  EXPECT_EQ(Placed(BlocksOf(picture), picture).rightShift, 6U);
}

}  // namespace
}  // namespace kxbench::drawing
