#pragma once

#include <string>
#include <string_view>

#include "bench/documents/ChannelMap.h"
#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

struct MappedDocument {
  WiringDocument document;
  ChannelMap map;
};

/// Reads what WiringJson writes. Excluded pairs and suspended channels are told as a warning: a document
/// holds nets alone. Throws DocumentError.
MappedDocument ReadWiringJson(const std::string& fileName, std::string_view utf8);

}  // namespace kxbench::documents
