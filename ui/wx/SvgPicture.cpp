#include "ui/wx/SvgPicture.h"

#include <wx/bmpbndl.h>
#include <wx/dcmemory.h>
#include <wx/font.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

namespace kxbench {

namespace {

/// The value of an attribute in the text of a tag.
std::optional<std::string> AttributeOf(std::string_view tag, const std::string& name) {
  const std::string start = " " + name + "=\"";
  const std::size_t begin = tag.find(start);
  if (begin == std::string_view::npos) return std::nullopt;
  const std::size_t value = begin + start.size();
  const std::size_t end = tag.find('"', value);
  if (end == std::string_view::npos) return std::nullopt;
  return std::string(tag.substr(value, end - value));
}

double NumberIn(std::string_view tag, const std::string& name, double otherwise) {
  const auto text = AttributeOf(tag, name);
  double number = otherwise;
  if (text) std::from_chars(text->data(), text->data() + text->size(), number);
  return number;
}

unsigned ColourIn(std::string_view tag) {
  const auto text = AttributeOf(tag, "fill");
  unsigned colour = 0;
  if (text && text->size() == 7) std::from_chars(text->data() + 1, text->data() + 7, colour, 16);
  return colour;
}

std::string Unescaped(std::string_view text) {
  constexpr std::pair<std::string_view, char> Entities[] = {
      {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&#39;", '\''}, {"&apos;", '\''}};
  std::string plain;
  while (!text.empty()) {
    const auto* const entity =
        std::find_if(std::begin(Entities), std::end(Entities),
                     [text](const auto& known) { return text.starts_with(known.first); });
    plain += entity == std::end(Entities) ? text.front() : entity->second;
    text.remove_prefix(entity == std::end(Entities) ? 1 : entity->first.size());
  }
  return plain;
}

SvgTextElement TextOf(std::string_view tag, std::string_view content) {
  SvgTextElement element;
  element.x = NumberIn(tag, "x", 0);
  element.y = NumberIn(tag, "y", 0);
  element.size = NumberIn(tag, "font-size", element.size);
  element.bold = AttributeOf(tag, "font-weight") == "bold";
  const auto anchor = AttributeOf(tag, "text-anchor");
  if (anchor == "middle") element.anchor = SvgTextElement::Anchor::Middle;
  if (anchor == "end") element.anchor = SvgTextElement::Anchor::End;
  element.colour = ColourIn(tag);
  element.text = Unescaped(content);
  return element;
}

/// The drawing with another size in its first element; the same where that names none.
std::string WithSize(const std::string& svg, const wxSize& size) {
  std::string sized = svg;
  for (const auto& [name, pixels] : {std::pair<const char*, int>{"width", size.x}, {"height", size.y}}) {
    const std::string start = std::string(" ") + name + "=\"";
    const std::size_t begin = sized.find(start);
    const std::size_t end = sized.find('"', begin + start.size());
    if (begin == std::string::npos || end == std::string::npos || end > sized.find('>')) return svg;
    sized.replace(begin, end - begin, start + std::to_string(pixels));
  }
  return sized;
}

/// The toolkit's reader knows neither text nor title, and takes both for nothing. The device context finds
/// another font where the named one is missing; a graphics context writes nothing then.
void DrawTexts(wxDC& dc, const std::string& svg, double scale) {
  for (const SvgTextElement& element : SvgTexts(svg)) {
    const int height = std::max(1, static_cast<int>(std::lround(element.size * scale)));
    dc.SetFont(wxFontInfo(wxSize(0, height)).Family(wxFONTFAMILY_SWISS).FaceName("Arial").Bold(element.bold));
    dc.SetTextForeground(wxColour(static_cast<unsigned char>(element.colour >> 16U & 0xffU),
                                  static_cast<unsigned char>(element.colour >> 8U & 0xffU),
                                  static_cast<unsigned char>(element.colour & 0xffU)));
    const wxString text = wxString::FromUTF8(element.text);
    wxSize extent;
    int descent = 0;
    dc.GetTextExtent(text, &extent.x, &extent.y, &descent);
    double x = element.x * scale;
    if (element.anchor == SvgTextElement::Anchor::Middle) x -= extent.x / 2.0;
    if (element.anchor == SvgTextElement::Anchor::End) x -= extent.x;
    const double y = element.y * scale - (extent.y - descent);
    dc.DrawText(text, static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y)));
  }
}

}  // namespace

std::vector<SvgTextElement> SvgTexts(const std::string& svg) {
  std::vector<SvgTextElement> texts;
  const std::string_view all = svg;
  for (std::size_t begin = all.find("<text "); begin != std::string_view::npos;
       begin = all.find("<text ", begin + 1)) {
    const std::size_t close = all.find('>', begin);
    const std::size_t end = all.find("</text>", begin);
    if (close == std::string_view::npos || end == std::string_view::npos || end < close) break;
    texts.push_back(TextOf(all.substr(begin, close - begin), all.substr(close + 1, end - close - 1)));
  }
  return texts;
}

wxSize SvgSize(const std::string& svg) {
  const std::string_view tag = std::string_view(svg).substr(0, svg.find('>'));
  return {static_cast<int>(std::ceil(NumberIn(tag, "width", 0))),
          static_cast<int>(std::ceil(NumberIn(tag, "height", 0)))};
}

wxBitmap SvgBitmap(const std::string& svg, const wxSize& room) {
  const wxSize size = SvgSize(svg);
  if (size.x < 1 || size.y < 1 || room.x < 1 || room.y < 1) return {};
  const double scale = std::min(static_cast<double>(room.x) / size.x, static_cast<double>(room.y) / size.y);
  const wxSize scaled(std::max(1, static_cast<int>(size.x * scale)),
                      std::max(1, static_cast<int>(size.y * scale)));
  // The toolkit does not scale reliably by itself: the drawing says another size, and its view box does the
  // rest.
  const wxBitmapBundle shapes = wxBitmapBundle::FromSVG(WithSize(svg, scaled).c_str(), scaled);
  if (!shapes.IsOk()) return {};
  wxBitmap bitmap(scaled);
  wxMemoryDC dc(bitmap);
  dc.SetBackground(*wxWHITE_BRUSH);
  dc.Clear();
  dc.DrawBitmap(shapes.GetBitmap(scaled), 0, 0, true);
  DrawTexts(dc, svg, scale);
  dc.SelectObject(wxNullBitmap);
  return bitmap;
}

}  // namespace kxbench
