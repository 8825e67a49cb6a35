#include "plugin/editor/DesignScale.h"

#include <cmath>

namespace shorttest {
namespace {

constexpr int FontPoints = 9;
const char* const FontName = "Segoe UI";

#ifdef __WXGTK__

// Here a pixel of the toolkit is a pixel of the layout whatever the resolution, and text alone is enlarged:
// compares a font in points with one of the same size in pixels.
double ScreenScale(const wxWindow& window) {
  const auto width = [&window](const char* description) {
    wxFont font;
    font.SetNativeFontInfo(description);
    int w = 0;
    int h = 0;
    window.GetTextExtent("A line of some length", &w, &h, nullptr, nullptr, &font);
    return static_cast<double>(w);
  };
  return width("Sans 90") / width("Sans 120px");
}

#else

double ScreenScale(const wxWindow& window) { return window.FromDIP(1000) / 1000.0; }

#endif

}  // namespace

wxFont DialogFont() { return wxFont(wxFontInfo(FontPoints).FaceName(FontName)); }

int Scaled(const wxWindow& window, int pixels) {
  static const double scale = ScreenScale(window);
  return static_cast<int>(std::lround(pixels * scale));
}

int LineHeight(const wxWindow& window) { return window.GetCharHeight() + Scaled(window, 10); }

}  // namespace shorttest
