#pragma once

#include <string>

#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

/// Reads a harness described in KBL 2.3 or 2.4 (XML), as docs/document-formats.md says. All cavities of a
/// connector are in the result, wired or not; splices have joined their nets and vanished. `text` is the
/// file's content, parsed where it is. Throws DocumentError with file, line and column.
WiringDocument ReadKbl(const std::string& fileName, std::string text);

}  // namespace kxbench::documents
