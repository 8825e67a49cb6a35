#include <algorithm>
#include <cstddef>
#include <vector>

#include "bench/drawing/DrawingLayout.h"

namespace kxbench::drawing {

namespace {

struct Stretch {
  std::size_t line;
  double at;  // its y, or its x where it is vertical
  double from;
  double to;
};

struct Stretches {
  std::vector<Stretch> across;
  std::vector<Stretch> upright;

  void Add(std::size_t line, const std::vector<Point>& points) {
    for (std::size_t i = 1; i < points.size(); ++i) {
      const Point& a = points[i - 1];
      const Point& b = points[i];
      if (a.y == b.y) {
        across.push_back({line, a.y, std::min(a.x, b.x), std::max(a.x, b.x)});
      } else {
        upright.push_back({line, a.x, std::min(a.y, b.y), std::max(a.y, b.y)});
      }
    }
  }
};

}  // namespace

bool LinesCross(const DrawingLayout& layout) {
  Stretches stretches;
  std::size_t number = 0;
  for (const DrawnLine& line : layout.lines) {
    for (const DrawnBranch& branch : line.branches) stretches.Add(number, branch.points);
    stretches.Add(number++, line.trunk);
  }
  for (const DrawnExtra& extra : layout.extras) stretches.Add(number++, extra.points);
  return std::any_of(stretches.upright.begin(), stretches.upright.end(), [&](const Stretch& v) {
    return std::any_of(stretches.across.begin(), stretches.across.end(), [&](const Stretch& h) {
      return h.line != v.line && h.from < v.at && v.at < h.to && v.from < h.at && h.at < v.to;
    });
  });
}

}  // namespace kxbench::drawing
