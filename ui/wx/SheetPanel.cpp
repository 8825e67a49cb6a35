#include "ui/wx/SheetPanel.h"

#include <wx/dcbuffer.h>
#include <wx/settings.h>

#include <algorithm>
#include <vector>

#include "ui/wx/SvgPicture.h"

namespace kxbench {

namespace {

struct SheetColours {
  wxColour ink;
  wxColour ground;
};

SheetColours ColoursOf(StationSheet::Colour colour) {
  switch (colour) {
    case StationSheet::Colour::Good:
      return {*wxWHITE, wxColour(10, 110, 40)};
    case StationSheet::Colour::Bad:
      return {*wxWHITE, wxColour(170, 20, 20)};
    case StationSheet::Colour::Doubtful:
      return {*wxBLACK, wxColour(250, 200, 60)};
    case StationSheet::Colour::None:
      break;
  }
  return {wxColour(60, 60, 60), wxColour(230, 230, 230)};
}

/// Breaks a text at blanks into lines that fit.
std::vector<wxString> BrokenLines(wxDC& dc, const wxString& text, int width) {
  std::vector<wxString> lines;
  wxString line;
  wxString rest = text;
  while (!rest.empty()) {
    const wxString word = rest.BeforeFirst(' ');
    rest = rest.AfterFirst(' ');
    const wxString longer = line.empty() ? word : line + " " + word;
    if (!line.empty() && dc.GetTextExtent(longer).x > width) {
      lines.push_back(line);
      line = word;
    } else {
      line = longer;
    }
  }
  lines.push_back(line);
  return lines;
}

}  // namespace

SheetPanel::SheetPanel(wxWindow* parent) : wxPanel(parent) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { Paint(); });
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    Refresh();
    event.Skip();
  });
}

void SheetPanel::ShowSheet(const StationSheet& sheet) {
  sheet_ = sheet;
  drawnFor_ = wxSize();
  Refresh();
}

void SheetPanel::Paint() {
  wxAutoBufferedPaintDC dc(this);
  dc.SetBackground(*wxWHITE_BRUSH);
  dc.Clear();
  const wxRect all(GetClientSize());
  const bool hasMore = !sheet_.lines.empty() || !sheet_.drawing.empty();
  wxRect top = all;
  if (hasMore) top.height = all.height * 2 / 5;
  PaintWord(dc, top);
  if (!hasMore) return;
  wxRect rest(all.x, top.GetBottom() + 1, all.width, all.height - top.height);
  rest.Deflate(FromDIP(10));
  if (sheet_.drawing.empty()) return PaintLines(dc, rest);
  const bool sideBySide = rest.width > rest.height;
  wxRect text = rest;
  wxRect picture = rest;
  if (sheet_.lines.empty()) {
    text.width = 0;
  } else if (sideBySide) {
    text.width = rest.width * 2 / 5;
    picture.x += text.width + FromDIP(10);
    picture.width -= text.width + FromDIP(10);
  } else {
    text.height = rest.height * 2 / 5;
    picture.y += text.height;
    picture.height -= text.height;
  }
  if (!sheet_.lines.empty()) PaintLines(dc, text);
  PaintDrawing(dc, picture);
}

/// The word, as large as fits, and the line below it.
wxRect SheetPanel::PaintWord(wxDC& dc, const wxRect& room) const {
  const SheetColours colours = ColoursOf(sheet_.colour);
  dc.SetBrush(wxBrush(colours.ground));
  dc.SetPen(*wxTRANSPARENT_PEN);
  dc.DrawRectangle(room);
  dc.SetTextForeground(colours.ink);
  dc.SetFont(wxFont(wxFontInfo(16).Bold()));
  const wxString head = wxString::FromUTF8(sheet_.head);
  const wxSize headSize = dc.GetTextExtent(head);
  const int headY = room.GetBottom() - headSize.y - FromDIP(6);
  dc.DrawText(head, room.x + std::max(FromDIP(10), (room.width - headSize.x) / 2), headY);
  const wxString word = wxString::FromUTF8(sheet_.word);
  if (word.empty()) return room;
  const wxSize free(room.width - FromDIP(20), headY - room.y);
  constexpr int TrialPoints = 100;
  dc.SetFont(wxFont(wxFontInfo(TrialPoints).Bold()));
  const wxSize trial = dc.GetTextExtent(word);
  const int points = std::max(
      8, std::min(TrialPoints * free.x / std::max(1, trial.x), TrialPoints * free.y / std::max(1, trial.y)));
  dc.SetFont(wxFont(wxFontInfo(points).Bold()));
  const wxSize size = dc.GetTextExtent(word);
  dc.DrawText(word, room.x + (room.width - size.x) / 2, room.y + (free.y - size.y) / 2);
  return room;
}

void SheetPanel::PaintLines(wxDC& dc, const wxRect& room) const {
  dc.SetTextForeground(*wxBLACK);
  dc.SetFont(wxFont(wxFontInfo(13)));
  const int height = dc.GetCharHeight();
  std::vector<wxString> lines;
  for (const std::string& line : sheet_.lines) {
    for (const wxString& part : BrokenLines(dc, wxString::FromUTF8(line), room.width)) lines.push_back(part);
    lines.emplace_back();
  }
  const auto fitting = static_cast<std::size_t>(std::max(1, room.height / std::max(1, height)));
  if (lines.size() > fitting + 1) {
    const std::size_t left = lines.size() - fitting + 1;
    lines.resize(fitting - 1);
    lines.push_back(wxString::Format("... and %zu lines more", left));
  }
  int y = room.y;
  for (const wxString& line : lines) {
    dc.DrawText(line, room.x, y);
    y += height;
  }
}

void SheetPanel::PaintDrawing(wxDC& dc, const wxRect& room) {
  if (drawnFor_ != room.GetSize()) {
    drawing_ = SvgBitmap(sheet_.drawing, room.GetSize());
    drawnFor_ = room.GetSize();
  }
  if (!drawing_.IsOk()) return;
  dc.DrawBitmap(drawing_, room.x + (room.width - drawing_.GetWidth()) / 2, room.y);
}

}  // namespace kxbench
