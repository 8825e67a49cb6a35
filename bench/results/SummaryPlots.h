#pragma once

#include <optional>
#include <string>
#include <vector>

namespace kxbench::results {

/// A bar of a plot.
struct PlotBar {
  std::string name;
  std::string shown;  ///< the value as text
  double value = 0;   ///< from 0
};

/// A point of a line over the days; none where there is no value.
struct PlotPoint {
  std::string name;
  std::optional<double> first;   ///< 0 to 1
  std::optional<double> second;  ///< 0 to 1
};

/// Plots as <svg> elements, with a title for those who do not see them. Names are escaped.

/// Horizontal bars, one for each name, as long as `greatest` at most.
std::string BarPlot(const std::string& title, const std::vector<PlotBar>& bars, double greatest);

/// Bars, the greatest first, and a line for their sum so far out of `inAll`.
std::string ParetoPlot(const std::string& title, const std::vector<PlotBar>& bars, double inAll);

/// Two lines between 0 and 100 %.
std::string YieldPlot(const std::string& title, const std::vector<PlotPoint>& points);

}  // namespace kxbench::results
