#pragma once

#include <string>
#include <string_view>

namespace shorttest {

/// A text as it may stand in XML and HTML, between tags and in attributes with double quotes: markup
/// characters escaped; U+FFFD for what is not UTF-8 and for characters that XML 1.0 forbids (section 2.2).
/// A tab, a line feed and a carriage return become character references.
std::string MarkupText(std::string_view text);

}  // namespace shorttest
