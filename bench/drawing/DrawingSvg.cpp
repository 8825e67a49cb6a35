#include "bench/drawing/DrawingSvg.h"

#include <algorithm>
#include <utility>

#include "bench/drawing/DrawingLayout.h"
#include "bench/drawing/DrawingLists.h"
#include "bench/drawing/DrawingNotes.h"
#include "bench/drawing/DrawingStyle.h"
#include "bench/drawing/DrawingText.h"

namespace kxbench::drawing {

namespace {

constexpr double LeastWidth = 480;
constexpr double HeadSize = 15;
constexpr double PinRadius = 2.5;
constexpr double DotRadius = 2.8;

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

class SvgWriter {
 public:
  SvgWriter(const HarnessPicture& picture, const std::vector<FaultMark>& faults, const Marks& marks,
            const DrawingOptions& options, const std::string& id)
      : picture_(picture),
        faults_(faults),
        marks_(marks),
        options_(options),
        id_(id),
        layout_(LaidOut(picture, marks)) {
    width_ = std::max(layout_.width + 2 * DrawingMargin, LeastWidth);
    left_ = (width_ - layout_.width) / 2;
    summary_ = Wrapped(Summary(), Room() / FontSize);
    head_ = 2 * DrawingMargin + 4 + TextLineHeight * static_cast<double>(summary_.size());
    netOf_.resize(picture.pins.size(), picture.nets.size());
    for (const DrawnLine& line : layout_.lines) {
      for (const std::size_t pin : picture.nets[line.net].pins) netOf_[pin] = line.net;
    }
  }

  SvgDrawing Drawing() {
    for (const DrawnLine& line : layout_.lines) {
      if (line.mark == NetMark::None) AddLine(line);
    }
    for (const DrawnLine& line : layout_.lines) {
      if (line.mark != NetMark::None) AddLine(line);
    }
    for (const DrawnExtra& extra : layout_.extras) AddExtra(extra);
    for (const DrawnBox& box : layout_.boxes) AddBox(box);
    constexpr double gap = 22;
    const Notes notes =
        NotesBelow({picture_, faults_, layout_, width_}, head_ + layout_.height + gap, options_.faultList);
    const double height = notes.bottom + DrawingMargin - TextLineHeight / 2;
    return {Head(height) + body_ + notes.svg + "</svg>\n", width_,
            SheetsOf(layout_, {width_, height, head_, left_})};
  }

 private:
  double X(double x) const { return left_ + x; }
  double Y(double y) const { return head_ + y; }

  std::string Id(const char* kind, std::size_t number) const {
    return XmlText(options_.idPrefix) + kind + std::to_string(number + 1);
  }

  std::string Head(double height) const {
    std::string text = "<svg xmlns=\"http://www.w3.org/2000/svg\" class=\"harness\"";
    if (!id_.empty()) text += Attribute("id", id_);
    text += Attribute("width", width_) + Attribute("height", height);
    text += Attribute("viewBox", "0 0 " + Coordinate(width_) + " " + Coordinate(height));
    text +=
        " font-family=\"'Helvetica Neue', Helvetica, Arial, 'Liberation Sans', 'DejaVu Sans', sans-serif\"";
    text += Attribute("font-size", FontSize) + Attribute("fill", Black) + " role=\"img\">\n";
    text += "<title>" + XmlText(picture_.title) + "</title>\n";
    text += "<rect" + Attribute("width", width_) + Attribute("height", height) + " fill=\"#ffffff\"/>\n";
    text += TextElement(DrawingMargin, DrawingMargin + 6, Anchor::Start,
                        Shortened(picture_.title, Room() / HeadSize / BoldTextWidth("m") * TextWidth("m")),
                        Attribute("font-size", HeadSize) + " font-weight=\"bold\" class=\"head\"");
    double y = DrawingMargin + 24;
    for (const std::string& line : summary_) {
      text += TextElement(DrawingMargin, y, Anchor::Start, line, Attribute("fill", Grey) + " class=\"head\"");
      y += TextLineHeight;
    }
    return text + "\n";
  }

  double Room() const { return width_ - 2 * DrawingMargin; }

  std::string Summary() const {
    return (faults_.empty() ? "" : MarkedText(picture_, faults_) + "; ") + SummaryText(picture_);
  }

  LineStyle StyleOfLine(const DrawnLine& line) const {
    if (line.mark == NetMark::Shorted) return ShortedStyle;
    if (line.mark == NetMark::Concerned) return ConcernedStyle;
    if (!faults_.empty()) return {OtherNets, 1.2, ""};
    return {options_.colours ? NetColours[line.colour % NetColours.size()] : Black, 1.5, ""};
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
             " fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\"" + Attributes(style) + ">";
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

  void AddExtra(const DrawnExtra& extra) {
    const ExtraLine& line = extra.line;
    body_ += std::string("<g class=\"extra ") + WordOf(line.kind) + "\"" + PinIds({line.from, line.to}) +
             " fill=\"none\"" + Attributes(StyleOf(line.kind)) +
             (line.kind == ExtraKind::Short ? " stroke-linecap=\"round\">" : ">");
    body_ += "<path" + PathData(extra.points) + "/>";
    if (line.kind == ExtraKind::Move) {
      const Point& to = extra.points.back();
      const Point& from = extra.points.front();
      body_ += ArrowHead(X(to.x), Y(to.y), Towards(to));
      if (line.bothWays) body_ += ArrowHead(X(from.x), Y(from.y), Towards(from));
    }
    body_ += "</g>\n";
  }

  Direction Towards(const Point& port) const {
    return port.x < layout_.right.x ? Direction::Left : Direction::Right;
  }

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
    body_ += TextElement(x + column.width / 2, top + row / 2, Anchor::Middle, box.title,
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
    const std::string note = faulty ? ": " + NoteText(marks_.notes[row.pin]) : "";
    body_ += "><title>" + XmlText(LongPinLabel(pin) + note) + "</title>";
    body_ += TextElement(X(column.nameX), y, anchor, row.name, ink);
    body_ += TextElement(X(column.noteX), y, anchor, row.note,
                         faulty ? Attribute("fill", Red) + " font-weight=\"bold\" class=\"note\""
                                : Attribute("fill", Grey) + " font-style=\"italic\" class=\"note\"");
    body_ += TextElement(X(column.channelX), y, Anchor::End, row.channel, Attribute("fill", Grey));
    const std::string colour = faulty ? Red : connected ? Black : Grey;
    body_ += "<circle" + Attribute("cx", X(row.port.x)) + Attribute("cy", Y(row.port.y)) +
             Attribute("r", PinRadius) + Attribute("fill", connected ? colour : "#ffffff") +
             Attribute("stroke", colour) + "/></g>\n";
  }

  const HarnessPicture& picture_;
  const std::vector<FaultMark>& faults_;
  const Marks& marks_;
  const DrawingOptions& options_;
  const std::string& id_;
  DrawingLayout layout_;
  std::vector<std::size_t> netOf_;  // of each pin with a line; else the number of nets
  double width_ = 0;
  double left_ = 0;
  double head_ = 0;  // height of what stands above the drawing
  std::vector<std::string> summary_;
  std::string body_;
};

}  // namespace

SvgDrawing SvgElement(const HarnessPicture& picture, const std::vector<FaultMark>& faults, const Marks& marks,
                      const DrawingOptions& options, const std::string& id) {
  return SvgWriter(picture, faults, marks, options, id).Drawing();
}

std::string SvgOf(const HarnessPicture& picture, const std::vector<FaultMark>& marks,
                  const DrawingOptions& options) {
  return SvgElement(picture, marks, MarksIn(picture, marks), options).text;
}

}  // namespace kxbench::drawing
