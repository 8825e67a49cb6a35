#pragma once

#include <string>
#include <utility>
#include <vector>

#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

/// A WireViz document: the texts of its files (name as the user gave it, content), those that stand in front
/// of it (--prepend) first, itself last. They are read as one text.
struct WireVizSources {
  std::vector<std::pair<std::string, std::string>> files;
};

/// Reads a harness described in WireViz's YAML, as docs/document-formats.md says. Wires, loops and arrows
/// connect pins; splices are connectors like any other. All pins of a connector that is part of the harness
/// are in the result, wired or not. Throws DocumentError with file, line and column.
WiringDocument ReadWireViz(const WireVizSources& sources);

}  // namespace kxbench::documents
