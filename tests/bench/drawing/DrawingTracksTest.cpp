#include <gmock/gmock.h>

#include "bench/drawing/DrawingTracks.h"

namespace kxbench::drawing {
namespace {

constexpr double Gap = 6;

Terminal Left(double y) { return {true, y}; }
Terminal Right(double y) { return {false, y}; }

TEST(DrawingTracks, ALineStraightAcrossNeedsNone) {
  const Tracks tracks = Routed({{Left(10), Right(10)}}, Gap);
  EXPECT_EQ(tracks.of[0], std::nullopt);
  EXPECT_EQ(tracks.count, 0U);
}

TEST(DrawingTracks, LinesThatDoNotMeetShareOne) {
  const Tracks tracks = Routed({{Left(0), Right(20)}, {Left(40), Right(60)}}, Gap);
  EXPECT_EQ(tracks.of[0], tracks.of[1]);
  EXPECT_EQ(tracks.count, 1U);
}

TEST(DrawingTracks, LinesThatNearlyMeetDoNot) {
  const Tracks tracks = Routed({{Left(0), Right(20)}, {Left(24), Right(60)}}, Gap);
  EXPECT_NE(tracks.of[0], tracks.of[1]);
}

TEST(DrawingTracks, WiresThatAllGoDownwardsDoNotCross) {
  std::vector<std::vector<Terminal>> lines;
  for (int i = 0; i < 12; ++i) lines.push_back({Left(18.0 * i), Right(18.0 * i + 57)});
  const Tracks tracks = Routed(lines, Gap);
  // Of two that meet the upper one turns further right.
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) EXPECT_GT(*tracks.of[i], *tracks.of[i + 1]) << i;
  EXPECT_EQ(tracks.count, lines.size());
}

TEST(DrawingTracks, ALineWithinAnotherOfItsSideTurnsFirst) {
  const Tracks tracks = Routed({{Left(0), Left(100)}, {Left(40), Left(60)}}, Gap);
  EXPECT_LT(*tracks.of[1], *tracks.of[0]);
}

}  // namespace
}  // namespace kxbench::drawing
