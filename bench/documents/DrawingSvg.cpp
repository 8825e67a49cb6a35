#include "bench/documents/DrawingSvg.h"

#include <algorithm>
#include <array>
#include <utility>

#include "bench/documents/DrawingLayout.h"
#include "bench/documents/DrawingLists.h"
#include "bench/documents/DrawingText.h"

namespace kxbench::documents {

namespace {

constexpr double Margin = 16;
constexpr double LeastWidth = 420;
constexpr double HeadSize = 15;
constexpr double HeadHeight = 52;  // title and summary above the drawing
constexpr double LineHeight = 16;  // of the texts below it
constexpr double PinRadius = 2.5;
constexpr double DotRadius = 2.8;
constexpr double BaselineShift = 4;  // from a text's middle to its baseline
constexpr std::size_t MostExcludedTexts = 12;

constexpr const char* Red = "#c8102e";
constexpr const char* Black = "#1a1a1a";
constexpr const char* Grey = "#5c5c5c";
constexpr const char* OtherNets = "#808080";  // beside faults

/// Dark enough for black-and-white paper, and none of them near red.
constexpr std::array<const char*, 7> NetColours = {"#1b4f9c", "#7a4a00", "#0b6b3a", "#6a2c91",
                                                   "#00666e", "#333333", "#5b6b00"};

/// How a line is drawn: colour and attributes.
struct LineStyle {
  std::string colour;
  double width;
  std::string dashes;  // empty: none
};

const LineStyle OpenStyle{Red, 2.2, "7 5"};
const LineStyle ShortedStyle{Red, 3.4, ""};
const LineStyle ConcernedStyle{Red, 2.2, ""};

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

const char* WordOf(ExtraKind kind) {
  switch (kind) {
    case ExtraKind::Short:
      return "short";
    case ExtraKind::Move:
      return "move";
    case ExtraKind::Excluded:
      break;
  }
  return "excluded";
}

std::string Attribute(const std::string& name, const std::string& value) {
  return " " + name + "=\"" + value + "\"";
}

std::string Attribute(const std::string& name, double value) { return Attribute(name, Coordinate(value)); }

std::string StyleAttributes(const LineStyle& style) {
  std::string text = Attribute("stroke", style.colour) + Attribute("stroke-width", style.width);
  if (!style.dashes.empty()) text += Attribute("stroke-dasharray", style.dashes);
  return text;
}

enum class Anchor { Start, Middle, End };

class SvgWriter {
 public:
  SvgWriter(const HarnessPicture& picture, const std::vector<FaultMark>& faults, const Marks& marks,
            const DrawingOptions& options)
      : picture_(picture),
        faults_(faults),
        marks_(marks),
        options_(options),
        layout_(LaidOut(picture, marks)) {
    width_ = std::max(layout_.width + 2 * Margin, LeastWidth);
    left_ = (width_ - layout_.width) / 2;
    netOf_.resize(picture.pins.size(), picture.nets.size());
    for (const DrawnLine& line : layout_.lines) {
      for (const std::size_t pin : picture.nets[line.net].pins) netOf_[pin] = line.net;
    }
  }

  std::string Text() {
    for (const DrawnLine& line : layout_.lines) {
      if (line.mark == NetMark::None) AddLine(line);
    }
    for (const DrawnLine& line : layout_.lines) {
      if (line.mark != NetMark::None) AddLine(line);
    }
    for (const DrawnExtra& extra : layout_.extras) AddExtra(extra);
    for (const DrawnBox& box : layout_.boxes) AddBox(box);
    double y = HeadHeight + layout_.height + 22;
    y = AddLegend(y);
    if (options_.faultList) y = AddFaultTexts(y);
    y = AddExcludedTexts(y);
    return Head(y + Margin - LineHeight / 2) + body_ + "</svg>\n";
  }

 private:
  double X(double x) const { return left_ + x; }
  static double Y(double y) { return HeadHeight + y; }

  std::string Id(const char* kind, std::size_t number) const {
    return XmlText(options_.idPrefix) + kind + std::to_string(number + 1);
  }

  void AddText(double x, double middle, Anchor anchor, const std::string& text,
               const std::string& attributes) {
    if (text.empty()) return;
    body_ += "<text" + Attribute("x", x) + Attribute("y", middle + BaselineShift);
    if (anchor != Anchor::Start) body_ += Attribute("text-anchor", anchor == Anchor::End ? "end" : "middle");
    body_ += attributes + ">" + XmlText(text) + "</text>";
  }

  std::string Head(double height) const {
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" class=\"harness\"";
    text += Attribute("width", width_) + Attribute("height", height);
    text += Attribute("viewBox", "0 0 " + Coordinate(width_) + " " + Coordinate(height));
    text +=
        " font-family=\"'Helvetica Neue', Helvetica, Arial, 'Liberation Sans', 'DejaVu Sans', sans-serif\"";
    text += Attribute("font-size", FontSize) + Attribute("fill", Black) + " role=\"img\">\n";
    text += "<title>" + XmlText(picture_.title) + "</title>\n";
    text += "<rect" + Attribute("width", width_) + Attribute("height", height) + " fill=\"#ffffff\"/>\n";
    const double room = width_ - 2 * Margin;
    text += "<text class=\"head\"" + Attribute("x", Margin) + Attribute("y", Margin + 10) +
            Attribute("font-size", HeadSize) + " font-weight=\"bold\">" +
            XmlText(Shortened(picture_.title, room / HeadSize / 1.13)) + "</text>\n";
    text += "<text class=\"head\"" + Attribute("x", Margin) + Attribute("y", Margin + 26) +
            Attribute("fill", Grey) + ">" + XmlText(Shortened(Summary(), room / FontSize)) + "</text>\n";
    return text;
  }

  std::string Summary() const {
    const std::string faults = faults_.empty()       ? ""
                               : faults_.size() == 1 ? "1 fault marked; "
                                                     : std::to_string(faults_.size()) + " faults marked; ";
    return faults + SummaryText(picture_);
  }

  LineStyle StyleOfLine(const DrawnLine& line) const {
    if (line.mark == NetMark::Shorted) return ShortedStyle;
    if (line.mark == NetMark::Concerned) return ConcernedStyle;
    if (!faults_.empty()) return {OtherNets, 1.2, ""};
    return {options_.colours ? NetColours[line.net % NetColours.size()] : Black, 1.5, ""};
  }

  std::string PathData(const std::vector<Point>& points) const {
    std::string data = "M" + Coordinate(X(points[0].x)) + " " + Coordinate(Y(points[0].y));
    for (std::size_t i = 1; i < points.size(); ++i) {
      const bool across = points[i].y == points[i - 1].y;
      data += across ? "H" + Coordinate(X(points[i].x)) : "V" + Coordinate(Y(points[i].y));
    }
    return Attribute("d", data);
  }

  std::string PinIds(const std::vector<std::size_t>& pins) const {
    std::string ids;
    for (const std::size_t pin : pins) ids += (ids.empty() ? "" : " ") + Id("p", pin);
    return Attribute("data-pins", ids);
  }

  void AddLine(const DrawnLine& line) {
    const LineStyle style = StyleOfLine(line);
    const DrawnNet& net = picture_.nets[line.net];
    body_ += "<g class=\"net\"" + Attribute("id", Id("n", line.net)) + PinIds(net.pins) +
             " fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\"" + StyleAttributes(style) +
             ">";
    body_ += "<title>" + XmlText(NetText(picture_, net)) + "</title>";
    for (const DrawnBranch& branch : line.branches) {
      body_ += "<path class=\"branch\"" + PathData(branch.points) + PinIds(branch.pins);
      // Dashed also where the net is bold because it is shorted as well.
      if (branch.open) body_ += Attribute("stroke-dasharray", OpenStyle.dashes) + " stroke-linecap=\"butt\"";
      body_ += "/>";
    }
    if (!line.trunk.empty()) body_ += "<path class=\"trunk\"" + PathData(line.trunk) + "/>";
    for (const Point& dot : line.dots) {
      body_ += "<circle class=\"dot\"" + Attribute("cx", X(dot.x)) + Attribute("cy", Y(dot.y)) +
               Attribute("r", DotRadius) + Attribute("fill", style.colour) + " stroke=\"none\"/>";
    }
    body_ += "</g>\n";
  }

  /// An arrow's head whose point is at (x, y).
  std::string ArrowHead(double x, double y, bool toLeft) const {
    const double back = toLeft ? x + 9 : x - 9;
    return "<path class=\"arrow\" stroke=\"none\"" + Attribute("fill", Red) +
           Attribute("d", "M" + Coordinate(x) + " " + Coordinate(y) + "L" + Coordinate(back) + " " +
                              Coordinate(y - 3.5) + "V" + Coordinate(y + 3.5) + "Z") +
           "/>";
  }

  void AddExtra(const DrawnExtra& extra) {
    const ExtraLine& line = extra.line;
    body_ += std::string("<g class=\"extra ") + WordOf(line.kind) + "\"" + PinIds({line.from, line.to}) +
             " fill=\"none\"" + StyleAttributes(StyleOf(line.kind)) +
             (line.kind == ExtraKind::Short ? " stroke-linecap=\"round\">" : ">");
    body_ += "<path" + PathData(extra.points) + "/>";
    if (line.kind == ExtraKind::Move) {
      const Point& to = extra.points.back();
      const Point& from = extra.points.front();
      body_ += ArrowHead(X(to.x), Y(to.y), IsLeft(to));
      if (line.bothWays) body_ += ArrowHead(X(from.x), Y(from.y), IsLeft(from));
    }
    body_ += "</g>\n";
  }

  bool IsLeft(const Point& port) const { return port.x < layout_.right.x; }

  void AddBox(const DrawnBox& box) {
    const DrawnColumn& column = box.left ? layout_.left : layout_.right;
    const double x = X(column.x);
    const double top = Y(box.top);
    const double row = layout_.rowHeight;
    body_ += "<g class=\"box\"><title>" + XmlText(box.fullTitle) + "</title>";
    body_ += "<rect class=\"border\"" + Attribute("x", x) + Attribute("y", top) +
             Attribute("width", column.width) + Attribute("height", box.height) +
             " rx=\"2\" fill=\"#ffffff\"" + Attribute("stroke", box.wrongPlug ? Red : Black) +
             Attribute("stroke-width", box.wrongPlug ? 3.0 : 1.2) + "/>";
    body_ += "<rect class=\"band\"" + Attribute("x", x + 1) + Attribute("y", top + 1) +
             Attribute("width", column.width - 2) + Attribute("height", row - 1) + " fill=\"#dfe3e8\"/>";
    AddText(x + column.width / 2, top + row / 2, Anchor::Middle, box.title,
            Attribute("font-size", TitleSize) + " font-weight=\"bold\"");
    for (std::size_t i = 1; i < box.rows.size(); i += 2) {
      body_ += "<rect class=\"band\"" + Attribute("x", x + 1) + Attribute("y", Y(box.rows[i].y) - row / 2) +
               Attribute("width", column.width - 2) +
               Attribute("height", i + 1 == box.rows.size() ? row - 1 : row) + " fill=\"#f3f4f6\"/>";
    }
    body_ += "</g>\n";
    for (const DrawnRow& each : box.rows) AddRow(each, column, box.left);
  }

  void AddRow(const DrawnRow& row, const DrawnColumn& column, bool left) {
    const DrawnPin& pin = picture_.pins[row.pin];
    const bool connected = netOf_[row.pin] < picture_.nets.size();
    const bool faulty = !marks_.notes[row.pin].empty();
    const std::string ink = connected || faulty ? "" : Attribute("fill", Grey);
    const Anchor anchor = left ? Anchor::End : Anchor::Start;
    const double y = Y(row.y);
    body_ += "<g class=\"pin\"" + Attribute("id", Id("p", row.pin));
    if (connected) body_ += Attribute("data-net", Id("n", netOf_[row.pin]));
    body_ += "><title>" + XmlText(LongPinLabel(pin)) + "</title>";
    AddText(X(column.nameX), y, anchor, row.name, ink);
    AddText(X(column.noteX), y, anchor, row.note,
            faulty ? Attribute("fill", Red) + " font-weight=\"bold\" class=\"note\""
                   : Attribute("fill", Grey) + " font-style=\"italic\" class=\"note\"");
    AddText(X(column.channelX), y, Anchor::End, row.channel, Attribute("fill", Grey));
    const std::string colour = faulty ? Red : connected ? Black : Grey;
    body_ += "<circle" + Attribute("cx", X(row.port.x)) + Attribute("cy", Y(row.port.y)) +
             Attribute("r", PinRadius) + Attribute("fill", connected ? colour : "#ffffff") +
             Attribute("stroke", colour) + "/></g>\n";
  }

  // Below the drawing

  struct LegendEntry {
    std::string sample;  // drawn for a box of 34 x 12 at (0, 0)
    std::string text;
  };

  static std::string SampleLine(const LineStyle& style, bool round = false) {
    return "<path fill=\"none\" d=\"M1 6H33\"" + StyleAttributes(style) +
           (round ? " stroke-linecap=\"round\"/>" : "/>");
  }

  std::vector<LegendEntry> Legend() const {
    std::vector<LegendEntry> entries;
    const auto extras = [&](ExtraKind kind) {
      return std::any_of(layout_.extras.begin(), layout_.extras.end(),
                         [&](const DrawnExtra& extra) { return extra.line.kind == kind; });
    };
    const auto lines = [&](const auto& has) {
      return std::any_of(layout_.lines.begin(), layout_.lines.end(), has);
    };
    if (lines([](const DrawnLine& line) { return !line.dots.empty(); })) {
      entries.push_back({SampleLine({Black, 1.5, ""}) + "<path stroke=\"" + Black +
                             "\" stroke-width=\"1.5\" d=\"M17 0V12\"/><circle cx=\"17\" cy=\"6\" r=\"2.8\"/>",
                         "connected; lines that cross without a dot are not"});
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
    if (lines([](const DrawnLine& line) { return line.mark == NetMark::Concerned; })) {
      entries.push_back({SampleLine(ConcernedStyle), "net with a fault"});
    }
    if (extras(ExtraKind::Move)) {
      entries.push_back({SampleLine(StyleOf(ExtraKind::Move)) + ArrowHead(34, 6, false),
                         "the contact that a wire lies on instead of its own"});
    }
    if (extras(ExtraKind::Excluded)) {
      entries.push_back({SampleLine(StyleOf(ExtraKind::Excluded)), "pair left out of the check"});
    }
    return entries;
  }

  double AddLegend(double y) {
    constexpr double sampleWidth = 42;
    constexpr double gap = 22;
    double x = Margin;
    const std::vector<LegendEntry> entries = Legend();
    for (const LegendEntry& entry : entries) {
      const double width = sampleWidth + TextWidth(entry.text) * FontSize;
      if (x > Margin && x + width > width_ - Margin) {
        x = Margin;
        y += LineHeight + 2;
      }
      body_ += "<g class=\"legend\" transform=\"translate(" + Coordinate(x) + " " + Coordinate(y - 6) +
               ")\">" + entry.sample + "</g>";
      AddText(x + sampleWidth, y, Anchor::Start, entry.text, "");
      body_ += "\n";
      x += width + gap;
    }
    return entries.empty() ? y : y + LineHeight + 8;
  }

  double AddParagraph(double y, double indent, const std::string& text, const std::string& attributes) {
    for (const std::string& line : Wrapped(text, (width_ - 2 * Margin - indent) / FontSize)) {
      AddText(Margin + indent, y, Anchor::Start, line, attributes);
      body_ += "\n";
      y += LineHeight;
    }
    return y;
  }

  double AddFaultTexts(double y) {
    constexpr double indent = 30;
    for (std::size_t i = 0; i < faults_.size(); ++i) {
      AddText(Margin, y, Anchor::Start, "F" + std::to_string(i + 1),
              Attribute("fill", Red) + " font-weight=\"bold\"");
      y = AddParagraph(y, indent, faults_[i].text, "");
      for (const std::string& other : faults_[i].alternatives) {
        y = AddParagraph(y, indent, other, Attribute("fill", Grey));
      }
    }
    return faults_.empty() ? y : y + 8;
  }

  double AddExcludedTexts(double y) {
    const std::vector<std::string> texts = ExcludedTexts(picture_);
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

  const HarnessPicture& picture_;
  const std::vector<FaultMark>& faults_;
  const Marks& marks_;
  const DrawingOptions& options_;
  DrawingLayout layout_;
  std::vector<std::size_t> netOf_;  // of each pin with a line; else the number of nets
  double width_ = 0;
  double left_ = 0;
  std::string body_;
};

}  // namespace

std::string SvgElement(const HarnessPicture& picture, const std::vector<FaultMark>& faults,
                       const Marks& marks, const DrawingOptions& options) {
  return SvgWriter(picture, faults, marks, options).Text();
}

std::string SvgOf(const HarnessPicture& picture, const std::vector<FaultMark>& marks,
                  const DrawingOptions& options) {
  return SvgElement(picture, marks, MarksIn(picture, marks), options);
}

}  // namespace kxbench::documents
