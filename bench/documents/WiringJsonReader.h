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
/// holds nets alone. Throws DocumentError, also where the object does not say one thing of each channel: a
/// key or a pin that is there twice, a pin of two channels, a channel that is in no list.
MappedDocument ReadWiringJson(const std::string& fileName, std::string_view utf8);

}  // namespace kxbench::documents
