#pragma once

#include <optional>
#include <string>

#include "bench/documents/WiringDocument.h"

namespace kxbench::documents {

struct WiringListOptions {
  std::optional<std::string> columns;  ///< what the columns hold, see ReadWiringTable
};

/// Reads a wiring list (CSV), `text` being the file's bytes in any of the encodings of DocumentTextToUtf8. A
/// list says for each line from where to where a wire runs, or which pins belong to a net; docs/documents.md
/// describes it. Pins without a connector are channels of the tester, by their numbers. Throws DocumentError.
WiringDocument ReadWiringList(const std::string& fileName, std::string text,
                              const WiringListOptions& options = {});

}  // namespace kxbench::documents
