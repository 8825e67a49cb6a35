#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kxbench::drawing {

/// Width of a text in ems, for a sans-serif font whose figures are not narrower than most: DejaVu Sans, the
/// widest of those that are common. A viewer's font takes this much or less.
double TextWidth(std::string_view utf8);

/// The same for bold letters.
double BoldTextWidth(std::string_view utf8);

/// The text, or its beginning and "…" where it is wider than `ems`. Cuts between letters and never before a
/// mark that belongs to the letter in front of it.
std::string Shortened(const std::string& utf8, double ems);

/// The text, or its beginning and its end with "…" between them where it is wider than `ems`.
std::string ShortenedInside(const std::string& utf8, double ems);

/// One of `names`, shortened so that no other of them can be meant: its beginning, else its beginning and its
/// end, else wider than `ems`.
std::string ShortenedApart(const std::string& name, const std::vector<std::string>& names, double ems);

/// Lines of at most `ems`, broken at blanks; a word that is wider stands on a line of its own, shortened.
std::vector<std::string> Wrapped(const std::string& utf8, double ems);

/// The text as XML and HTML have it between tags and in attributes. Well-formed UTF-8 without control
/// characters, whatever comes in.
std::string XmlText(std::string_view text);

/// A number of the drawing: at most two decimals, no zeros at the end, the same on every system.
std::string Coordinate(double value);

}  // namespace kxbench::drawing
