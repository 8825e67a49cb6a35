#include "bench/drawing/DrawingStyle.h"

#include "bench/drawing/DrawingText.h"

namespace kxbench::drawing {

LineStyle StyleOf(ExtraKind kind) {
  switch (kind) {
    case ExtraKind::Short:
      return {Red, 3, "0.5 5"};
    case ExtraKind::Move:
      return {Red, 1.6, "10 3 2 3"};
    case ExtraKind::Excluded:
      break;
  }
  return {Grey, 1.2, "1.5 3"};
}

std::string Attribute(const std::string& name, const std::string& value) {
  return " " + name + "=\"" + value + "\"";
}

std::string Attribute(const std::string& name, double value) { return Attribute(name, Coordinate(value)); }

std::string Attributes(const LineStyle& style) {
  std::string text = Attribute("stroke", style.colour) + Attribute("stroke-width", style.width);
  if (*style.dashes != 0) text += Attribute("stroke-dasharray", style.dashes);
  return text;
}

std::string TextElement(double x, double middle, Anchor anchor, const std::string& text,
                        const std::string& attributes) {
  constexpr double toBaseline = 4;
  if (text.empty()) return "";
  std::string element = "<text" + Attribute("x", x) + Attribute("y", middle + toBaseline);
  if (anchor != Anchor::Start) element += Attribute("text-anchor", anchor == Anchor::End ? "end" : "middle");
  return element + attributes + ">" + XmlText(text) + "</text>";
}

std::string ArrowHead(double x, double y, Direction direction) {
  constexpr double length = 9;
  constexpr double half = 3.5;
  const double back = direction == Direction::Left ? x + length : x - length;
  return "<path class=\"arrow\" stroke=\"none\"" + Attribute("fill", Red) +
         Attribute("d", "M" + Coordinate(x) + " " + Coordinate(y) + "L" + Coordinate(back) + " " +
                            Coordinate(y - half) + "V" + Coordinate(y + half) + "Z") +
         "/>";
}

}  // namespace kxbench::drawing
