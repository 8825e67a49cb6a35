#include "bench/drawing/DrawingLayout.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "bench/drawing/DrawingPlacement.h"
#include "bench/drawing/DrawingText.h"
#include "bench/drawing/DrawingTracks.h"

namespace kxbench::drawing {

namespace {

// Pixels, but for what is in ems.
constexpr double WideRow = 18;
constexpr double NarrowRow = 16;
constexpr std::size_t MostPinsInWideRows = 120;
constexpr double MostNameEms = 16;
constexpr double MostNoteEms = 16;
constexpr double MostTitleEms = 24;
constexpr double LeastBoxWidth = 72;
constexpr double PortToText = 9;
constexpr double BoxPadding = 7;
constexpr double TextGap = 10;
constexpr double ChannelMargin = 22;  // between a box and the first track
constexpr double LeastChannelWidth = 150;
constexpr double WideTrack = 9;
constexpr double NarrowTrack = 7.5;
constexpr std::size_t MostWideTracks = 40;
constexpr double TrackGap = 6;  // between lines on one track
// Of ports, from the middles of their rows. Lines that are 3.4 and 3 wide fit between one another, and each
// is nearer to its own pin's dot than to that of the next row.
constexpr double PortShift = 3;            // two nets' ports that face each other
constexpr double PortShiftAtExtra = 5.4;   // the same where an extra line ends
constexpr double ExtraShift = 5.6;         // of extra lines
constexpr double ExtraShiftBetween = 1.8;  // the same between two nets' ports

struct Seat {
  std::size_t box = 0;
  std::size_t row = 0;
};

class Layouter {
 public:
  Layouter(const HarnessPicture& picture, const Marks& marks)
      : picture_(picture), marks_(marks), netOf_(picture.pins.size()), seats_(picture.pins.size()) {
    const bool narrow = picture.pins.size() > MostPinsInWideRows && marks.extras.empty();
    layout_.rowHeight = narrow ? NarrowRow : WideRow;
    for (std::size_t net = 0; net < picture.nets.size(); ++net) {
      if (picture.nets[net].pins.size() < 2) continue;
      for (const std::size_t pin : picture.nets[net].pins) netOf_[pin] = net;
    }
  }

  DrawingLayout Result() {
    PlaceBoxes();
    MeasureColumn(layout_.left, true);
    MeasureColumn(layout_.right, false);
    ChoosePorts();
    const Tracks tracks = RouteLines();
    PlaceColumns(tracks);
    for (std::size_t i = 0; i < nets_.size(); ++i) DrawNetLine(nets_[i], tracks.of[i]);
    for (std::size_t i = 0; i < marks_.extras.size(); ++i) {
      DrawExtraLine(marks_.extras[i], tracks.of[nets_.size() + i]);
    }
    return std::move(layout_);
  }

 private:
  DrawnRow& RowOf(std::size_t pin) { return layout_.boxes[seats_[pin].box].rows[seats_[pin].row]; }
  bool IsLeft(std::size_t pin) const { return layout_.boxes[seats_[pin].box].left; }

  void PlaceBoxes() {
    const std::vector<DrawnBlock> blocks = BlocksOf(picture_);
    for (const DrawnBlock& block : blocks) titles_.push_back(block.title);
    const Placement placement = Placed(blocks, picture_);
    AddBoxes(blocks, placement.left, true, placement.leftShift);
    AddBoxes(blocks, placement.right, false, placement.rightShift);
  }

  void AddBoxes(const std::vector<DrawnBlock>& blocks, const std::vector<std::size_t>& column, bool left,
                std::size_t shift) {
    double y = static_cast<double>(shift) * layout_.rowHeight;
    for (const std::size_t block : column) {
      DrawnBox box{left,
                   y,
                   static_cast<double>(blocks[block].pins.size() + 1) * layout_.rowHeight,
                   "",
                   blocks[block].title,
                   marks_.connectors.contains(blocks[block].title),
                   {}};
      box.title = ShortenedApart(box.fullTitle, titles_, MostTitleEms);
      y += layout_.rowHeight;
      for (const std::size_t pin : blocks[block].pins) {
        seats_[pin] = {layout_.boxes.size(), box.rows.size()};
        box.rows.push_back(RowFor(pin, y + layout_.rowHeight / 2));
        y += layout_.rowHeight;
      }
      layout_.height = std::max(layout_.height, y);
      layout_.boxes.push_back(std::move(box));
      y += layout_.rowHeight;
    }
  }

  DrawnRow RowFor(std::size_t index, double y) const {
    const DrawnPin& pin = picture_.pins[index];
    const std::string channel = pin.channel > 0 ? std::to_string(pin.channel) : "";
    DrawnRow row{index, y, {0, y}, Shortened(pin.name, MostNameEms), channel, ""};
    if (row.name.empty()) std::swap(row.name, row.channel);
    if (!marks_.notes[index].empty()) {
      row.note = ShortNote(marks_.notes[index], titles_, MostNoteEms);
    } else if (pin.suspended) {
      row.note = "suspended";
    } else if (netOf_[index]) {
      row.note = Shortened(picture_.nets[*netOf_[index]].name, MostNoteEms);
    }
    return row;
  }

  void MeasureColumn(DrawnColumn& column, bool left) const {
    double name = 0;
    double note = 0;
    double channel = 0;
    double title = 0;
    for (const DrawnBox& box : layout_.boxes) {
      if (box.left != left) continue;
      title = std::max(title, BoldTextWidth(box.title) * TitleSize);
      for (const DrawnRow& row : box.rows) {
        name = std::max(name, TextWidth(row.name) * FontSize);
        note = std::max(note, BoldTextWidth(row.note) * FontSize);
        channel = std::max(channel, TextWidth(row.channel) * FontSize);
      }
    }
    if (title == 0 && name == 0) return;
    const double beforeNote = PortToText + name + (note > 0 ? TextGap : 0);
    const double beforeChannel = beforeNote + note + (channel > 0 ? TextGap : 0);
    column.width = std::max({beforeChannel + channel + BoxPadding, title + 2 * BoxPadding, LeastBoxWidth});
    // From the channel between the columns outwards.
    column.nameX = PortToText;
    column.noteX = beforeNote;
    column.channelX = column.width - BoxPadding - (left ? channel : 0);
  }

  /// Two pins that face each other, with lines of different nets, get ports one above the other.
  void ChoosePorts() {
    std::map<double, std::vector<std::size_t>> rows;
    std::set<double> rowsWithExtras;
    for (const ExtraLine& extra : marks_.extras) {
      rowsWithExtras.insert({RowOf(extra.from).y, RowOf(extra.to).y});
    }
    for (const DrawnBox& box : layout_.boxes) {
      for (const DrawnRow& row : box.rows) {
        if (netOf_[row.pin]) rows[row.y].push_back(row.pin);
      }
    }
    for (const auto& [y, pins] : rows) {
      if (pins.size() != 2 || netOf_[pins[0]] == netOf_[pins[1]]) continue;
      const double shift = rowsWithExtras.contains(y) ? PortShiftAtExtra : PortShift;
      for (const std::size_t pin : pins) RowOf(pin).port.y = y + (IsLeft(pin) ? -shift : shift);
    }
  }

  double ExtraPort(std::size_t pin) {
    const DrawnRow& row = RowOf(pin);
    const double shift = row.port.y == row.y ? ExtraShift : ExtraShiftBetween;
    return row.y + (IsLeft(pin) ? shift : -shift);
  }

  Tracks RouteLines() {
    std::vector<std::vector<Terminal>> lines;
    for (std::size_t net = 0; net < picture_.nets.size(); ++net) {
      if (picture_.nets[net].pins.size() < 2) continue;
      nets_.push_back(net);
      auto& line = lines.emplace_back();
      for (const std::size_t pin : picture_.nets[net].pins) line.push_back({IsLeft(pin), RowOf(pin).port.y});
    }
    for (const ExtraLine& extra : marks_.extras) {
      lines.push_back({{IsLeft(extra.from), ExtraPort(extra.from)}, {IsLeft(extra.to), ExtraPort(extra.to)}});
    }
    return Routed(lines, TrackGap);
  }

  void PlaceColumns(const Tracks& tracks) {
    DrawnColumn& left = layout_.left;
    DrawnColumn& right = layout_.right;
    trackPitch_ = tracks.count > MostWideTracks ? NarrowTrack : WideTrack;
    const double lines = tracks.count == 0 ? 0 : static_cast<double>(tracks.count - 1) * trackPitch_;
    const double channel = std::max(LeastChannelWidth, lines + 2 * ChannelMargin);
    firstTrack_ = left.width + (right.width > 0 ? (channel - lines) / 2 : ChannelMargin);
    right.x = left.width + channel;
    layout_.width = right.x + right.width;
    left.nameX = left.width - left.nameX;
    left.noteX = left.width - left.noteX;
    left.channelX = left.width - left.channelX;
    right.nameX += right.x;
    right.noteX += right.x;
    right.channelX += right.x;
    for (DrawnBox& box : layout_.boxes) {
      for (DrawnRow& row : box.rows) row.port.x = EdgeX(box.left);
    }
  }

  double EdgeX(bool left) const { return left ? layout_.left.width : layout_.right.x; }
  double TrackX(std::size_t track) const { return firstTrack_ + static_cast<double>(track) * trackPitch_; }

  void DrawNetLine(std::size_t net, std::optional<std::size_t> track) {
    const std::vector<std::size_t>& pins = picture_.nets[net].pins;
    DrawnLine line{net, marks_.nets[net], ColourOf(pins[0], track), {}, {}, {}};
    if (pins.size() == 2) {
      line.branches.push_back({pins, Wire(RowOf(pins[0]).port, RowOf(pins[1]).port, track),
                               marks_.cameOff[pins[0]] || marks_.cameOff[pins[1]]});
    } else {
      DrawTree(pins, TrackX(track.value_or(0)), line);
    }
    layout_.lines.push_back(std::move(line));
  }

  /// Of a straight line by its row, else by its track, and other than that of the track's line before.
  std::size_t ColourOf(std::size_t pin, std::optional<std::size_t> track) {
    constexpr std::size_t nextOnTrack = 3;
    if (track) return *track + nextOnTrack * linesOnTrack_[*track]++;
    return static_cast<std::size_t>(RowOf(pin).y / layout_.rowHeight);
  }

  std::vector<Point> Wire(const Point& from, const Point& to, std::optional<std::size_t> track) const {
    if (!track) return {from, to};
    const double x = TrackX(*track);
    return {from, {x, from.y}, {x, to.y}, to};
  }

  void DrawTree(const std::vector<std::size_t>& pins, double x, DrawnLine& line) {
    std::map<double, int> joints;  // by y: branches that reach the trunk there
    for (const std::size_t pin : pins) {
      const Point port = RowOf(pin).port;
      line.branches.push_back({{pin}, {port, {x, port.y}}, marks_.cameOff[pin]});
      ++joints[port.y];
    }
    line.trunk = {{x, joints.begin()->first}, {x, joints.rbegin()->first}};
    for (const auto& [y, branches] : joints) {
      const bool end = y == joints.begin()->first || y == joints.rbegin()->first;
      if (branches + (end ? 1 : 2) >= 3) line.dots.push_back({x, y});
    }
  }

  void DrawExtraLine(const ExtraLine& extra, std::optional<std::size_t> track) {
    const Point from{EdgeX(IsLeft(extra.from)), ExtraPort(extra.from)};
    const Point to{EdgeX(IsLeft(extra.to)), ExtraPort(extra.to)};
    layout_.extras.push_back({extra, Wire(from, to, track)});
  }

  const HarnessPicture& picture_;
  const Marks& marks_;
  std::vector<std::optional<std::size_t>> netOf_;
  std::vector<Seat> seats_;
  std::vector<std::string> titles_;
  std::vector<std::size_t> nets_;  // those with lines
  std::map<std::size_t, std::size_t> linesOnTrack_;
  double trackPitch_ = 0;
  double firstTrack_ = 0;
  DrawingLayout layout_;
};

}  // namespace

DrawingLayout LaidOut(const HarnessPicture& picture, const Marks& marks) {
  return Layouter(picture, marks).Result();
}

}  // namespace kxbench::drawing
