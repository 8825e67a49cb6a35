#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "bench/drawing/DrawingLayout.h"
#include "tests/bench/drawing/PictureSamples.h"

namespace kxbench::drawing {
namespace {

TEST(DrawingLayout, ExtraLinesEndNearestToTheirOwnPins) {
  std::size_t ends = 0;
  const auto check = [&](const std::string& name, const HarnessPicture& picture,
                         const std::vector<FaultMark>& marks) {
    const DrawingLayout layout = LaidOut(picture, MarksIn(picture, marks));
    const auto checkEnd = [&](std::size_t pin, const Point& end) {
      ++ends;
      double own = 0;
      double other = 1e9;
      for (const DrawnBox& box : layout.boxes) {
        for (const DrawnRow& row : box.rows) {
          if (row.port.x != end.x) continue;
          const double distance = std::abs(row.port.y - end.y);
          if (row.pin == pin) own = distance;
          if (row.pin != pin) other = std::min(other, distance);
        }
      }
      EXPECT_LT(own + 1, other) << name << ", pin " << pin;
      EXPECT_GT(own, 5) << name << ", pin " << pin << ": the line is on its dot";
    };
    for (const DrawnExtra& extra : layout.extras) {
      checkEnd(extra.line.from, extra.points.front());
      checkEnd(extra.line.to, extra.points.back());
    }
  };
  for (const PictureSample& sample : PictureSamples()) check(sample.name, sample.picture, sample.marks);
  const HarnessPicture large = ExamplePicture("generated-240");
  for (std::size_t pin = 0; pin + 1 < large.pins.size(); ++pin) {
    check("generated-240", large,
          {MarkOf("swapped", {large.pins[pin].channel, large.pins[pin + 1].channel}, "")});
  }
  EXPECT_GT(ends, 500U);
}

}  // namespace
}  // namespace kxbench::drawing
