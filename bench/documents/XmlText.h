#pragma once

#include <string>

namespace kxbench::documents {

/// The bytes of an XML file as UTF-8, without a byte order mark. The mark counts most; without one they are
/// UTF-8 where they are that, else Windows-1252 (and so ISO-8859-1), on every system. Throws DocumentError
/// where the XML declaration names another encoding, or says UTF-8 of bytes that are not.
std::string XmlToUtf8(const std::string& fileName, std::string bytes);

}  // namespace kxbench::documents
