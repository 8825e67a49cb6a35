#pragma once

#include <wx/bitmap.h>
#include <wx/gdicmn.h>

#include <string>
#include <vector>

namespace kxbench {

/// A <text> element of a drawing. The toolkit draws everything else of SVG, but no texts.
struct SvgTextElement {
  enum class Anchor { Start, Middle, End };
  double x = 0;
  double y = 0;  ///< of the baseline
  double size = 11;
  bool bold = false;
  Anchor anchor = Anchor::Start;
  unsigned colour = 0;  ///< 0xRRGGBB
  std::string text;     ///< UTF-8
};

/// The text elements of an SVG drawing as this program writes them: attributes in double quotes, sizes
/// without units, no text inside a transformation. What else there is, is passed over.
std::vector<SvgTextElement> SvgTexts(const std::string& svg);

/// Width and height of a drawing that says so in its first element; 0 when it does not.
wxSize SvgSize(const std::string& svg);

/// The drawing as large as fits into `room`, on white; an invalid bitmap when it cannot be read.
wxBitmap SvgBitmap(const std::string& svg, const wxSize& room);

}  // namespace kxbench
