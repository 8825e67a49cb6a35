#include "bench/drawing/DrawingNotes.h"

#include <algorithm>

#include "bench/drawing/DrawingLists.h"
#include "bench/drawing/DrawingStyle.h"
#include "bench/drawing/DrawingText.h"

namespace kxbench::drawing {

namespace {

constexpr std::size_t MostExcludedTexts = 12;

class NoteWriter {
 public:
  explicit NoteWriter(const NotedDrawing& parts) : parts_(parts) {}

  Notes Below(double y, bool faultList) {
    y = AddLegend(y);
    if (faultList) y = AddFaultTexts(y);
    y = AddExcludedTexts(y);
    return {std::move(text_), y};
  }

 private:
  struct LegendEntry {
    std::string sample;  // drawn for a box of 34 x 12 at (0, 0)
    std::string text;
  };

  static std::string SampleLine(const LineStyle& style, bool round = false) {
    return "<path fill=\"none\" d=\"M1 6H33\"" + Attributes(style) +
           (round ? " stroke-linecap=\"round\"/>" : "/>");
  }

  std::vector<LegendEntry> Legend() const {
    std::vector<LegendEntry> entries;
    const auto extras = [&](ExtraKind kind) {
      return std::any_of(parts_.layout.extras.begin(), parts_.layout.extras.end(),
                         [&](const DrawnExtra& extra) { return extra.line.kind == kind; });
    };
    const auto lines = [&](const auto& has) {
      return std::any_of(parts_.layout.lines.begin(), parts_.layout.lines.end(), has);
    };
    if (lines([](const DrawnLine& line) { return !line.dots.empty(); })) {
      entries.push_back({SampleLine({Black, 1.5, ""}) + "<path stroke=\"" + Black +
                             "\" stroke-width=\"1.5\" d=\"M17 0V12\"/><circle cx=\"17\" cy=\"6\" r=\"2.8\"/>",
                         "connected; lines that cross without a dot are not"});
    } else if (LinesCross(parts_.layout)) {
      entries.push_back({SampleLine({Black, 1.5, ""}) + "<path stroke=\"" + Black +
                             "\" stroke-width=\"1.5\" d=\"M17 0V12\"/>",
                         "lines that cross without a dot are not connected"});
    }
    if (AnyPinIsSingle()) {
      entries.push_back({std::string("<circle cx=\"17\" cy=\"6\" r=\"2.5\" fill=\"#ffffff\"") +
                             Attribute("stroke", Grey) + "/>",
                         "connected to nothing"});
    }
    if (lines([](const DrawnLine& line) {
          return std::any_of(line.branches.begin(), line.branches.end(),
                             [](const DrawnBranch& branch) { return branch.open; });
        })) {
      entries.push_back({SampleLine(OpenStyle), "open"});
    }
    if (lines([](const DrawnLine& line) { return line.mark == NetMark::Shorted; })) {
      entries.push_back({SampleLine(ShortedStyle), "shorted net"});
    }
    if (extras(ExtraKind::Short)) {
      entries.push_back({SampleLine(StyleOf(ExtraKind::Short), true), "short circuit, where to look first"});
    }
    if (lines([](const DrawnLine& line) {
          return line.mark == NetMark::Concerned &&
                 std::any_of(line.branches.begin(), line.branches.end(),
                             [](const DrawnBranch& branch) { return !branch.open; });
        })) {
      entries.push_back({SampleLine(ConcernedStyle), "net with a fault"});
    }
    if (extras(ExtraKind::Move)) {
      entries.push_back({SampleLine(StyleOf(ExtraKind::Move)) + ArrowHead(34, 6, Direction::Right),
                         "the contact that a wire lies on instead of its own"});
    }
    if (std::any_of(parts_.layout.boxes.begin(), parts_.layout.boxes.end(),
                    [](const DrawnBox& box) { return box.wrongPlug; })) {
      entries.push_back({"<rect x=\"3\" y=\"1\" width=\"28\" height=\"10\" rx=\"2\" fill=\"#ffffff\"" +
                             Attribute("stroke", Red) + " stroke-width=\"3\"/>",
                         "plug in the wrong place, reversed or shifted"});
    }
    if (extras(ExtraKind::Excluded)) {
      entries.push_back({SampleLine(StyleOf(ExtraKind::Excluded)), "pair left out of the check"});
    }
    return entries;
  }

  bool AnyPinIsSingle() const {
    std::vector<bool> connected;
    for (const DrawnPin& pin : parts_.picture.pins) connected.push_back(pin.suspended);  // says so itself
    for (const DrawnNet& net : parts_.picture.nets) {
      if (net.pins.size() < 2) continue;
      for (const std::size_t pin : net.pins) connected[pin] = true;
    }
    return std::find(connected.begin(), connected.end(), false) != connected.end();
  }

  double AddLegend(double y) {
    constexpr double sampleWidth = 42;
    constexpr double gap = 22;
    double x = DrawingMargin;
    const std::vector<LegendEntry> entries = Legend();
    for (const LegendEntry& entry : entries) {
      const double width = sampleWidth + TextWidth(entry.text) * FontSize;
      if (x > DrawingMargin && x + width > parts_.width - DrawingMargin) {
        x = DrawingMargin;
        y += TextLineHeight + 2;
      }
      text_ += "<g class=\"legend\" transform=\"translate(" + Coordinate(x) + " " + Coordinate(y - 6) +
               ")\">" + entry.sample + "</g>";
      text_ += TextElement(x + sampleWidth, y, Anchor::Start, entry.text);
      text_ += "\n";
      x += width + gap;
    }
    return entries.empty() ? y : y + TextLineHeight + 8;
  }

  double AddParagraph(double y, double indent, const std::string& text, const std::string& attributes) {
    for (const std::string& line : Wrapped(text, (parts_.width - 2 * DrawingMargin - indent) / FontSize)) {
      text_ += TextElement(DrawingMargin + indent, y, Anchor::Start, line, attributes);
      text_ += "\n";
      y += TextLineHeight;
    }
    return y;
  }

  double AddFaultTexts(double y) {
    constexpr double indent = 30;
    for (std::size_t i = 0; i < parts_.faults.size(); ++i) {
      text_ += TextElement(DrawingMargin, y, Anchor::Start, "F" + std::to_string(i + 1),
                           Attribute("fill", Red) + " font-weight=\"bold\"");
      y = AddParagraph(y, indent, parts_.faults[i].text, "");
      for (const std::string& other : parts_.faults[i].alternatives) {
        y = AddParagraph(y, indent, other, Attribute("fill", Grey));
      }
    }
    return parts_.faults.empty() ? y : y + 8;
  }

  double AddExcludedTexts(double y) {
    const std::vector<std::string> texts = ExcludedTexts(parts_.picture);
    if (texts.empty()) return y;
    y = AddParagraph(y, 0, "Pairs that a check leaves out:", Attribute("fill", Grey));
    for (std::size_t i = 0; i < std::min(texts.size(), MostExcludedTexts); ++i) {
      y = AddParagraph(y, 12, texts[i], Attribute("fill", Grey));
    }
    if (texts.size() > MostExcludedTexts) {
      y = AddParagraph(y, 12,
                       "and those of " + std::to_string(texts.size() - MostExcludedTexts) + " pins more",
                       Attribute("fill", Grey));
    }
    return y;
  }

  const NotedDrawing& parts_;
  std::string text_;
};

}  // namespace

Notes NotesBelow(const NotedDrawing& drawing, double y, bool faultList) {
  return NoteWriter(drawing).Below(y, faultList);
}

}  // namespace kxbench::drawing
