#include "bench/results/SummaryPlots.h"

#include <algorithm>
#include <cstdio>

#include "text/Markup.h"
#include "text/Utf8.h"

namespace kxbench::results {

namespace {

constexpr double Width = 860;

/// A length in the picture.
std::string L(double length) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", length);
  return text;
}

std::string Begin(const std::string& title, double height) {
  return "<svg viewBox=\"0 0 " + L(Width) + " " + L(height) + "\" role=\"img\" aria-label=\"" +
         shorttest::MarkupText(title) + "\">\n<title>" + shorttest::MarkupText(title) + "</title>\n";
}

std::string Line(double x1, double y1, double x2, double y2, const char* style) {
  return "<line x1=\"" + L(x1) + "\" y1=\"" + L(y1) + "\" x2=\"" + L(x2) + "\" y2=\"" + L(y2) +
         "\" class=\"" + style + "\"/>\n";
}

std::string Label(double x, double y, const char* anchor, const std::string& text) {
  return "<text x=\"" + L(x) + "\" y=\"" + L(y) + "\" text-anchor=\"" + anchor + "\">" +
         shorttest::MarkupText(text) + "</text>\n";
}

/// At most `most` characters, with an ellipsis in place of the rest.
std::string Shortened(const std::string& text, std::size_t most) {
  std::size_t characters = 0;
  std::size_t at = 0;
  while (at < text.size() && characters < most) {
    at += std::max<std::size_t>(1, shorttest::Utf8CharacterSize(std::string_view(text).substr(at)));
    ++characters;
  }
  return at >= text.size() ? text : text.substr(0, at) + "\xE2\x80\xA6";
}

std::string Bar(double x, double y, double width, double height, const std::string& tip) {
  return "<rect x=\"" + L(x) + "\" y=\"" + L(y) + "\" width=\"" + L(width) + "\" height=\"" + L(height) +
         "\" class=\"bar\"><title>" + shorttest::MarkupText(tip) + "</title></rect>\n";
}

constexpr double RowHeight = 24;
constexpr double NameWidth = 300;
constexpr double ValueWidth = 90;
constexpr std::size_t NameCharacters = 38;

std::string Bars(const std::vector<PlotBar>& bars, double greatest) {
  constexpr double Longest = Width - NameWidth - ValueWidth;
  std::string text;
  double y = 4;
  for (const PlotBar& bar : bars) {
    const double width = greatest > 0 ? std::clamp(bar.value / greatest, 0.0, 1.0) * Longest : 0;
    text += Label(NameWidth - 8, y + 16, "end", Shortened(bar.name, NameCharacters));
    text += Bar(NameWidth, y + 3, width, RowHeight - 6, bar.name + ": " + bar.shown);
    text += Label(NameWidth + width + 6, y + 16, "start", bar.shown);
    y += RowHeight;
  }
  return text;
}

struct Curve {
  std::string text;
  bool drawing = false;

  void Add(double x, double y) {
    text += (drawing ? " L" : text.empty() ? "M" : " M") + L(x) + " " + L(y);
    drawing = true;
  }
};

std::string Path(const Curve& curve, const char* style) {
  return curve.text.empty() ? "" : "<path d=\"" + curve.text + "\" class=\"" + style + "\"/>\n";
}

std::string Dot(double x, double y, const char* style, const std::string& tip) {
  return "<circle cx=\"" + L(x) + "\" cy=\"" + L(y) + "\" r=\"2.5\" class=\"" + style + "\"><title>" +
         shorttest::MarkupText(tip) + "</title></circle>\n";
}

std::string Percent(double share) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f %%", share * 100);
  return text;
}

}  // namespace

std::string BarPlot(const std::string& title, const std::vector<PlotBar>& bars, double greatest) {
  return Begin(title, 8 + RowHeight * static_cast<double>(bars.size())) + Bars(bars, greatest) + "</svg>\n";
}

std::string ParetoPlot(const std::string& title, const std::vector<PlotBar>& bars, double inAll) {
  if (bars.empty() || inAll <= 0) return "";
  constexpr double Longest = Width - NameWidth - ValueWidth;
  constexpr double AxisHeight = 24;
  const double bottom = 4 + RowHeight * static_cast<double>(bars.size());
  std::string text = Begin(title, bottom + AxisHeight) + Bars(bars, inAll);
  Curve sumSoFar;
  std::string dots;
  double sum = 0;
  double y = 4 + RowHeight;  // below the row, where the curve crosses no number
  for (const PlotBar& bar : bars) {
    sum += bar.value;
    const double x = NameWidth + std::min(sum / inAll, 1.0) * Longest;
    sumSoFar.Add(x, y);
    dots += Dot(x, y, "dot second", "together " + Percent(sum / inAll));
    y += RowHeight;
  }
  text += Path(sumSoFar, "curve second") + dots;
  for (const int percent : {0, 50, 100}) {
    const double x = NameWidth + percent / 100.0 * Longest;
    text += Line(x, 2, x, bottom, "grid") + Label(x, bottom + 16, "middle", std::to_string(percent) + " %");
  }
  return text + "</svg>\n";
}

std::string YieldPlot(const std::string& title, const std::vector<PlotPoint>& points) {
  if (points.empty()) return "";
  constexpr double Left = 56;
  constexpr double Right = Width - 40;
  constexpr double Top = 10;
  constexpr double Bottom = 210;
  constexpr std::size_t MostNames = 8;
  std::string text = Begin(title, Bottom + 30);
  for (const int percent : {0, 25, 50, 75, 100}) {
    const double y = Bottom - percent / 100.0 * (Bottom - Top);
    text += Line(Left, y, Right, y, "grid") + Label(Left - 8, y + 5, "end", std::to_string(percent) + " %");
  }
  Curve first;
  Curve second;
  std::string dots;
  const std::size_t each = (points.size() + MostNames - 1) / MostNames;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double share =
        points.size() == 1 ? 0.5 : static_cast<double>(i) / static_cast<double>(points.size() - 1);
    const double x = Left + share * (Right - Left);
    const auto add = [&](const std::optional<double>& value, Curve& curve, const char* style) {
      if (!value) {
        curve.drawing = false;
        return;
      }
      const double y = Bottom - *value * (Bottom - Top);
      curve.Add(x, y);
      dots += Dot(x, y, style, points[i].name + ": " + Percent(*value));
    };
    add(points[i].second, second, "dot second");
    add(points[i].first, first, "dot first");
    if (i % each == 0) text += Label(x, Bottom + 20, "middle", points[i].name);
  }
  return text + Path(second, "curve second") + Path(first, "curve first") + dots + "</svg>\n";
}

}  // namespace kxbench::results
